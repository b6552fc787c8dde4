#include "cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <string_view>

#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/source_files.h"
#include "cli/unknown_argument.h"

namespace velc {

namespace {

constexpr const char* kSeeHelp = "\nRun with --help for more information.";

// All commands but `help` have these options, and so has velc itself, before the command.
void addGeneralOptions(Command command, CommonOptions& common) {
  command.choice<ColourChoice>("--color", common.colour,
                               {{"auto", ColourChoice::Auto},
                                {"always", ColourChoice::Always},
                                {"never", ColourChoice::Never}},
                               "Colours in texts for readers (default: auto, on terminals)");
  command
      .callWithAll(
          "--plugin",
          [&common](const std::vector<std::string>& paths) {
            common.plugins.insert(common.plugins.end(), paths.begin(), paths.end());
            return std::string();
          },
          "The operator plugin, libvelops.so; after it, libraries with further operators "
          "(repeatable)")
      .value("PATH")
      .oneAtATime();
}

// Removes the range at the begin of `text`, behind two characters that nobody reads. False if there
// is none.
bool takeLocalRange(std::string_view& text) {
  constexpr std::size_t kTag = 2;
  const std::size_t dash = text.find('-', std::min(kTag, text.size()));
  const std::size_t end = text.find(';', std::min(dash, text.size()));
  if (end == text.npos) return false;
  const auto isNumber = [](std::string_view number) {
    const std::size_t first = number.find_first_not_of(" \t");
    if (first == number.npos) return false;
    number = number.substr(first, number.find_last_not_of(" \t") - first + 1);
    // The C has the numbers as they stand, where a leading zero would make them octal.
    return number.find_first_not_of("0123456789") == number.npos &&
           (number.size() == 1 || number[0] != '0');
  };
  const bool numbers =
      isNumber(text.substr(kTag, dash - kTag)) && isNumber(text.substr(dash + 1, end - dash - 1));
  text.remove_prefix(end + 1);
  return numbers;
}

// The operators take any text, and refresh nothing, or the wrong bits, for most of them.
std::string checkLocalIo(const std::string& text) {
  std::string_view rest = text;
  const bool fits = text.substr(0, 2).find('-') == text.npos && takeLocalRange(rest) &&
                    takeLocalRange(rest) && rest.find_first_not_of(" \t\r\n") == rest.npos;
  if (fits || text.empty()) return {};
  return fmt::format("'{}' does not have the form I:131072-131088;Q:139264-139280;", text);
}

// All commands that load programs have these options, and so has velc itself, before the command.
void addCommonOptions(Command command, CommonOptions& common) {
  addGeneralOptions(command, common);
  command
      .call(
          "--localio",
          [&common](const std::string& text) {
            common.localIo = text;
            return checkLocalIo(text);
          },
          "Local I/O ranges (the option \"localio.addr\")")
      .value("TEXT");
  command.choice<refhost::Notation>(
      "--notation", common.notation,
      {{"iec", refhost::Notation::Iec}, {"letters", refhost::Notation::Letters}},
      "Notation of device addresses: iec (%IX0.3) or letters (X3)");
  const auto addArea = [&command](const char* name, std::uint32_t& bytes, const char* what) {
    // Small enough that 32 bits can number every bit.
    command.number(name, bytes, 8U, 16U << 20, what).multipleOf(8).value("BYTES").showDefault();
  };
  addArea("--memory-markers", common.memory.markers, "Device memory for markers (%M)");
  addArea("--memory-inputs", common.memory.inputs, "Device memory for inputs (%I)");
  addArea("--memory-outputs", common.memory.outputs, "Device memory for outputs (%Q)");
}

void addWarningNames(Command& command, CommonOptions& common, const char* option, bool shown,
                     const char* description) {
  command
      .callWithAll(
          option,
          [&common, shown](const std::vector<std::string>& names) {
            for (const std::string& name : names) {
              if (common.warnings.choose(name, shown)) continue;
              return name + " is neither the code of a warning nor a group of them";
            }
            return std::string();
          },
          description)
      .value("NAME")
      .commas()
      .oneAtATime();
}

void addWarningOptions(Command& command, CommonOptions& common) {
  // In this order, so that a warning that is both asked for and refused is not shown.
  addWarningNames(command, common, "-W,--warn", true,
                  "Show these warnings too: a group, a code, or all (repeatable)");
  addWarningNames(command, common, "--no-warn", false,
                  "Do not show these warnings: a group, a code, or all (repeatable)");
  command.flag("--werror", common.warnings.asErrors, "Warnings are errors");
  command
      .number("--max-errors", common.maxErrors, std::size_t{1}, std::size_t{1} << 30,
              "Print no messages behind so many errors, but say how many there are")
      .value("N");
}

const CLI::App* commandNamed(const CLI::App& app, const std::string& name) {
  for (const CLI::App* command : app.get_subcommands(nullptr)) {
    if (command->get_name() == name) return command;
  }
  return nullptr;
}

}  // namespace

CommandLine::CommandLine()
    : app_(std::make_unique<CLI::App>("Translates IEC 61131-3 Structured Text into C.", "velc")) {
  app_->require_subcommand(0, 1);
  app_->failure_message([](const CLI::App*, const CLI::Error& error) {
    return fmt::format("velc: {}{}\n", error.what(), kSeeHelp);
  });
  app_->set_version_flag("-V,--version", "velc " VELC_VERSION);
  app_->footer(
      "Exit codes: 0 no errors, 1 errors in the program or failed tests, 2 bad usage or failed "
      "files.");
  addCommonOptions(Command(*app_), common);
}

CommandLine::~CommandLine() = default;

Command CommandLine::addCommand(const char* name, const char* description) {
  const Command command = addPlainCommand(name, description);
  addCommonOptions(command, common);
  return command;
}

Command CommandLine::addPluginCommand(const char* name, const char* description) {
  const Command command = addPlainCommand(name, description);
  addGeneralOptions(command, common);
  return command;
}

Command CommandLine::addPlainCommand(const char* name, const char* description) {
  return Command(*app_->add_subcommand(name, description));
}

void CommandLine::setAction(Command& command, std::function<int()> action) {
  command.whenGiven([this, action = std::move(action)] { action_ = action; });
}

std::string CommandLine::help(const std::string& command) const {
  // Not help(), which would print that of the command that was given.
  if (command.empty()) {
    return app_->get_formatter()->make_help(app_.get(), app_->get_name(),
                                            CLI::AppFormatMode::Normal);
  }
  const CLI::App* const about = commandNamed(*app_, command);
  if (about == nullptr) throw Failure(unknownCommand(*app_, command));
  return about->help(app_->get_name());
}

int CommandLine::execute(int argc, const char* const* argv) {
  try {
    app_->parse(argc, argv);
    if (!action_) throw CLI::RequiredError("A command");
  } catch (const CLI::ParseError& error) {
    std::ostringstream out;
    std::ostringstream err;
    const bool failed = app_->exit(error, out, err) != 0;
    // What is misspelt is often the reason for what else is missing.
    const std::string unknown = failed ? unknownArgument(*app_) : "";
    if (!unknown.empty()) throw Failure(unknown + kSeeHelp);
    writeStandardOutput(out.str());
    writeStandardError(err.str());
    return failed ? kFailure : kSuccess;
  }
  return action_();
}

FormNames textAndJson() {
  return {{"text", DiagnosticsForm::Text}, {"json", DiagnosticsForm::Json}};
}

void addSources(Command& command, CommonOptions& common, std::vector<std::string>& files,
                FormNames forms) {
  command
      .callWithAll(
          "FILE",
          [&files](const std::vector<std::string>& named) {
            files = sourceFiles(named);
            return std::string();
          },
          "Structured Text; of a folder, all *.st and *.ST in it; - is standard input")
      .required();
  command.choice("--diagnostics", common.diagnostics, std::move(forms),
                 "Form of the diagnostics on standard error (default: text)");
  addWarningOptions(command, common);
}

void addEachOption(Command& command, bool& each) {
  command.flag("--each", each, "Each file is a program of its own");
}

}  // namespace velc
