#include "cli/command_line.h"

#include <fmt/format.h>

#include <cstdlib>

#include "cli/source_files.h"

namespace velc {

namespace {

// All commands but `help` have these options, and so has velc itself, before the command.
void addGeneralOptions(CLI::App& app, CommonOptions& common) {
  static const std::map<std::string, ColourChoice> choices = {{"auto", ColourChoice::Auto},
                                                              {"always", ColourChoice::Always},
                                                              {"never", ColourChoice::Never}};
  app.add_option_function<std::string>(
         "--color", [&common](const std::string& choice) { common.colour = choices.at(choice); },
         "Colours in texts for readers (default: auto, on terminals)")
      ->check(CLI::IsMember(&choices));
  app.add_option_function<std::vector<std::string>>(
         "--plugin",
         [&common](const std::vector<std::string>& paths) {
           common.plugins.insert(common.plugins.end(), paths.begin(), paths.end());
         },
         "The operator plugin, libvelops.so; after it, libraries with further operators "
         "(repeatable)")
      ->type_name("PATH")
      ->allow_extra_args(false);
}

// All commands that load programs have these options, and so has velc itself, before the command.
void addCommonOptions(CLI::App& app, CommonOptions& common) {
  addGeneralOptions(app, common);
  app.add_option("--localio", common.localIo, "Local I/O ranges (the option \"localio.addr\")")
      ->type_name("TEXT");
  app.add_option_function<std::string>(
         "--notation",
         [&common](const std::string& text) {
           common.notation =
               text == "letters" ? refhost::Notation::Letters : refhost::Notation::Iec;
         },
         "Notation of device addresses: iec (%IX0.3) or letters (X3)")
      ->check(CLI::IsMember({"iec", "letters"}));
  // Multiples of 8, and small enough that 32 bits can number every bit.
  const auto area =
      CLI::Range(8U, 16U << 20) & CLI::Validator(
                                      [](std::string& text) {
                                        return std::strtoul(text.c_str(), nullptr, 10) % 8 == 0
                                                   ? std::string()
                                                   : "not a multiple of 8";
                                      },
                                      "");
  const auto addArea = [&app, &area](const char* name, std::uint32_t& bytes, const char* what) {
    app.add_option(name, bytes, what)->type_name("BYTES")->check(area)->capture_default_str();
  };
  addArea("--memory-markers", common.memory.markers, "Device memory for markers (%M)");
  addArea("--memory-inputs", common.memory.inputs, "Device memory for inputs (%I)");
  addArea("--memory-outputs", common.memory.outputs, "Device memory for outputs (%Q)");
}

void addWarningNames(CLI::App& command, CommonOptions& common, const char* option, bool shown,
                     const char* description) {
  command
      .add_option_function<std::vector<std::string>>(
          option,
          [&common, shown, option](const std::vector<std::string>& names) {
            for (const std::string& name : names) {
              if (common.warnings.choose(name, shown)) continue;
              throw CLI::ValidationError(
                  option, name + " is neither the code of a warning nor a group of them");
            }
          },
          description)
      ->type_name("NAME")
      ->delimiter(',')
      ->allow_extra_args(false);
}

void addWarningOptions(CLI::App& command, CommonOptions& common) {
  // In this order, so that a warning that is both asked for and refused is not shown.
  addWarningNames(command, common, "-W,--warn", true,
                  "Show these warnings too: a group, a code, or all (repeatable)");
  addWarningNames(command, common, "--no-warn", false,
                  "Do not show these warnings: a group, a code, or all (repeatable)");
  command.add_flag("--werror", common.warnings.asErrors, "Warnings are errors");
  command
      .add_option("--max-errors", common.maxErrors,
                  "Print no messages behind so many errors, but say how many there are")
      ->type_name("N")
      ->check(CLI::Range(std::size_t{1}, std::size_t{1} << 30));
}

}  // namespace

CommandLine::CommandLine() : app("Translates IEC 61131-3 Structured Text into C.", "velc") {
  app.require_subcommand(0, 1);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return fmt::format("velc: {}\nRun with --help for more information.\n", error.what());
  });
  app.set_version_flag("-V,--version", "velc " VELC_VERSION);
  app.footer("Exit codes: 0 no errors, 1 errors in the program, 2 bad usage or failed files.");
  addCommonOptions(app, common);
}

CLI::App& CommandLine::addCommand(const char* name, const char* description) {
  CLI::App& command = *app.add_subcommand(name, description);
  addCommonOptions(command, common);
  return command;
}

CLI::App& CommandLine::addPluginCommand(const char* name, const char* description) {
  CLI::App& command = *app.add_subcommand(name, description);
  addGeneralOptions(command, common);
  return command;
}

const FormNames& textAndJson() {
  static const FormNames forms = {{"text", DiagnosticsForm::Text}, {"json", DiagnosticsForm::Json}};
  return forms;
}

void addSources(CLI::App& command, CommonOptions& common, std::vector<std::string>& files,
                const FormNames& forms) {
  command
      .add_option_function<std::vector<std::string>>(
          "FILE", [&files](const std::vector<std::string>& named) { files = sourceFiles(named); },
          "Structured Text; of a folder, all *.st and *.ST in it; - is standard input")
      ->required();
  command
      .add_option_function<std::string>(
          "--diagnostics",
          [&common, &forms](const std::string& form) { common.diagnostics = forms.at(form); },
          "Form of the diagnostics on standard error (default: text)")
      ->check(CLI::IsMember(&forms));
  addWarningOptions(command, common);
}

void addEachOption(CLI::App& command, bool& each) {
  command.add_flag("--each", each, "Each file is a program of its own");
}

}  // namespace velc
