// velc: checks, translates and runs Structured Text with the reference host.
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <map>
#include <new>
#include <sstream>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/termination_guard.h"
#include "hostkit/literal.h"

namespace velc {

namespace {

// All commands have this option, and so has velc itself, before the command.
void addPluginOption(CLI::App& app, CommonOptions& common) {
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

// All commands but `explain` have these options, and so has velc itself, before the command.
void addCommonOptions(CLI::App& app, CommonOptions& common) {
  addPluginOption(app, common);
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

CLI::App& addCommand(CLI::App& app, CommonOptions& common, const char* name,
                     const char* description) {
  CLI::App& command = *app.add_subcommand(name, description);
  addCommonOptions(command, common);
  return command;
}

using FormNames = std::map<std::string, DiagnosticsForm>;
const FormNames kForms = {{"text", DiagnosticsForm::Text}, {"json", DiagnosticsForm::Json}};
const FormNames kCheckForms = {{"text", DiagnosticsForm::Text},
                               {"json", DiagnosticsForm::Json},
                               {"sarif", DiagnosticsForm::Sarif}};

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

void addSources(CLI::App& command, CommonOptions& common, std::vector<std::string>& files,
                const FormNames& forms = kForms) {
  command.add_option("FILE", files, "Structured Text")->required();
  command
      .add_option_function<std::string>(
          "--diagnostics",
          [&common, &forms](const std::string& form) { common.diagnostics = forms.at(form); },
          "Form of the diagnostics on standard error (default: text)")
      ->check(CLI::IsMember(&forms));
  addWarningOptions(command, common);
}

// Parses a TIME literal into milliseconds.
std::int64_t durationOf(const std::string& text) {
  hostkit::LiteralValue value;
  const bool time = hostkit::parseLiteral(text, value) == hostkit::LiteralError::None &&
                    value.type == vel::BasicDataType::Time;
  if (!time || value.ticks < 0) {
    throw CLI::ValidationError("--cycle", text + " is not a TIME of 0 or more, such as T#10ms");
  }
  return value.ticks;
}

int execute(int argc, char** argv) {
  CLI::App app("Translates IEC 61131-3 Structured Text into C.", "velc");
  app.require_subcommand(0, 1);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return fmt::format("velc: {}\nRun with --help for more information.\n", error.what());
  });
  app.set_version_flag("--version", "velc " VELC_VERSION);
  app.footer("Exit codes: 0 no errors, 1 errors in the program, 2 bad usage or failed files.");
  CommonOptions common;
  addCommonOptions(app, common);
  std::function<int()> action;

  OperatorsOptions operators;
  CLI::App& operatorsCommand =
      addCommand(app, common, "operators", "List the operators in the order of registration");
  operatorsCommand.add_option("NAME", operators.names, "Only these");
  operatorsCommand.add_flag("--long", operators.detailed,
                            "With class, family, and whether it is a function-call operator");
  operatorsCommand.add_flag("--json", operators.json,
                            "All of that, and the names of the inputs, as JSON");
  operatorsCommand.callback([&] { action = [&] { return listOperators(common, operators); }; });

  std::vector<std::string> checked;
  CLI::App& checkCommand = addCommand(app, common, "check", "Print the diagnostics of programs");
  addSources(checkCommand, common, checked, kCheckForms);
  checkCommand.callback([&] { action = [&] { return check(common, checked); }; });

  TranslateOptions translation;
  CLI::App& translateCommand = addCommand(app, common, "translate", "Translate programs into C");
  addSources(translateCommand, common, translation.files);
  translateCommand
      .add_option("-o,--output", translation.output, "Where the C goes (default: standard output)")
      ->type_name("OUT.c");
  translateCommand.add_flag("--call-tree", translation.callTree,
                            "Print who calls what as JSON; the C goes only where -o says");
  translateCommand.callback([&] { action = [&] { return translate(common, translation); }; });

  RunOptions running;
  CLI::App& runCommand =
      addCommand(app, common, "run", "Translate, compile and run programs; print their variables");
  addSources(runCommand, common, running.files);
  runCommand.add_option("--scans", running.scans, "Scans of every PROGRAM")
      ->type_name("N")
      ->check(CLI::Range(std::int64_t{0}, std::int64_t{1} << 62))
      ->capture_default_str();
  runCommand
      .add_option_function<std::string>(
          "--cycle", [&running](const std::string& text) { running.cycle = durationOf(text); },
          "Time that passes for the programs from one scan to the next (default: T#10ms)")
      ->type_name("TIME");
  runCommand
      .add_option("--set", running.settings,
                  "Give a variable or a device address a value before the first scan (repeatable)")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  runCommand
      .add_option("--show", running.shown,
                  "Print a global variable or what stands at a device address after the variables "
                  "(repeatable)")
      ->type_name("PLACE")
      ->allow_extra_args(false);
  runCommand
      .add_option("--retain", running.retained,
                  "Load retained variables from this file before the first scan, and store them "
                  "behind the last")
      ->type_name("FILE")
      ->check(CLI::Validator(
          [](std::string& file) { return file.empty() ? std::string("no file") : std::string(); },
          ""));
  runCommand.add_flag("--trace-io", running.traceIo, "Print each refresh of local I/O");
  runCommand.add_option("--compiler", running.compiler, "The C compiler")
      ->type_name("CC")
      ->capture_default_str();
  runCommand
      .add_option_function<int>(
          "--timeout", [&running](int seconds) { running.timeout = std::chrono::seconds(seconds); },
          "Seconds that compiling may take, and then the program (default: 60)")
      ->type_name("SECONDS")
      ->check(CLI::Range(1, 1'000'000));
  runCommand.callback([&] { action = [&] { return run(common, running); }; });

  std::vector<std::string> topics;
  CLI::App& explainCommand =
      *app.add_subcommand("explain", "Tell what messages mean and what operators do");
  addPluginOption(explainCommand, common);
  explainCommand.add_option("TOPIC", topics,
                            "Code of a message (0xC0032) or name of an operator; without one, the "
                            "codes are listed");
  explainCommand.callback([&] { action = [&] { return explain(common, topics); }; });

  try {
    app.parse(argc, argv);
    if (!action) throw CLI::RequiredError("A command");
  } catch (const CLI::ParseError& error) {
    std::ostringstream out;
    std::ostringstream err;
    const bool failed = app.exit(error, out, err) != 0;
    writeStandardOutput(out.str());
    writeStandardError(err.str());
    return failed ? kFailure : kSuccess;
  }
  return action();
}

// Opens closed standard streams, so that no file that is opened later gets their descriptors.
// Writing to such a stream remains an error.
void occupyStandardStreams() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
    descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
  }
  if (descriptor >= 0) close(descriptor);
}

}  // namespace

}  // namespace velc

int main(int argc, char** argv) {
  velc::occupyStandardStreams();
  // A closed pipe and the limit of the file size are to be errors of write(), not signals.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return velc::execute(argc, argv);
  } catch (const velc::Terminated&) {
    return velc::kFailure;
  } catch (const std::bad_alloc&) {
    std::fputs("velc: out of memory\n", stderr);
    return velc::kFailure;
  } catch (const std::exception& error) {
    // fputs, because it does not throw when standard error cannot be written to either.
    std::fputs(fmt::format("velc: {}\n", error.what()).c_str(), stderr);
    return velc::kFailure;
  }
}
