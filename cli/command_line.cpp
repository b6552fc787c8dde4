#include "cli/command_line.h"

#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string_view>

#include "cli/diagnostics_printer.h"
#include "cli/failure.h"
#include "cli/local_io.h"
#include "cli/output_file.h"
#include "cli/project.h"
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
    command.number(name, bytes, kAreaUnit, kLargestArea, what)
        .multipleOf(kAreaUnit)
        .value("BYTES")
        .showDefault();
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
      .number("--max-errors", common.maxErrors, std::size_t{1}, kMostErrors,
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

void CommandLine::addFiles(Command& command, std::vector<std::string>& files) {
  Option file = command.callWithAll(
      "FILE",
      [&files](const std::vector<std::string>& named) {
        files = sourceFiles(named);
        return std::string();
      },
      "Structured Text; of a folder, all *.st and *.ST in it; - is standard input (default: the "
      "sources of the project, velops.json)");
  // So that options of several values leave one for it.
  file.required().text("...");
  projectUses_.push_back({command, &files, file, false});
}

void CommandLine::addForm(Command& command, FormNames forms) {
  command.choice("--diagnostics", common.diagnostics, std::move(forms),
                 "Form of the diagnostics on standard error (default: text)");
}

void CommandLine::addSources(Command& command, std::vector<std::string>& files, FormNames forms) {
  addFiles(command, files);
  projectUses_.back().loadsPlugin = true;
  addForm(command, std::move(forms));
  addWarningOptions(command, common);
}

bool CommandLine::takeProject(const ProjectUse& use) {
  std::vector<std::string>* const files = use.files;
  const std::filesystem::path here = std::filesystem::current_path();
  const std::filesystem::path path = findProject(here);
  if (path.empty()) {
    if (files == nullptr) return false;
    throw Failure(fmt::format("FILE is required: there is no {} in this folder or above it{}",
                              kProjectFile, kSeeHelp));
  }
  Project project = readProject(path);
  const bool usesLibraries = use.loadsPlugin && common.plugins.empty();
  if (!usesLibraries) project.faults.resize(project.faults.size() - project.libraryFaults);
  const Colours colours(common.colour, STDERR_FILENO);
  for (const refhost::Diagnostic& fault : project.faults) {
    writeStandardError(diagnosticText(project.source, fault, colours));
  }
  if (!project.faults.empty()) {
    throw Failure(fmt::format("{} cannot be used", project.source.path(0)));
  }
  common = project.options;
  if (files == nullptr) return true;
  for (const std::string& file : project.files) {
    files->push_back(std::filesystem::path(file).lexically_proximate(here));
  }
  return true;
}

void CommandLine::parse(int argc, const char* const* argv) {
  const auto given = [](const ProjectUse& use) { return use.command.isGiven(); };
  try {
    app_->parse(argc, argv);
  } catch (const CLI::RequiredError&) {
    const auto use = std::find_if(projectUses_.begin(), projectUses_.end(), given);
    const bool lacksFiles = use != projectUses_.end() && use->file && use->files->empty();
    if (!lacksFiles || !unknownArgument(*app_).empty()) throw;
    use->file->required(false);
  }
  const auto use = std::find_if(projectUses_.begin(), projectUses_.end(), given);
  if (use == projectUses_.end() || (use->files != nullptr && !use->files->empty())) return;
  // Options go before the settings of the project.
  if (takeProject(*use)) app_->parse(argc, argv);
}

int CommandLine::execute(int argc, const char* const* argv) {
  try {
    parse(argc, argv);
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

void addEachOption(Command& command, bool& each) {
  command.flag("--each", each, "Each file is a program of its own");
}

}  // namespace velc
