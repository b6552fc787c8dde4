// The command line of velc, and the options that several commands have.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/common_options.h"

namespace velc {

using FormNames = Command::Names<DiagnosticsForm>;
// The forms of commands that may print diagnostics more than once.
FormNames textAndJson();

class CommandLine {
 public:
  CommandLine();
  ~CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  // Adds a command, with all common options, only with those that name the plugin, or with none.
  Command addCommand(const char* name, const char* description);
  Command addPluginCommand(const char* name, const char* description);
  Command addPlainCommand(const char* name, const char* description);

  // Makes `perform(common, *options)` what `command` does.
  template <typename Options>
  void setAction(Command& command, std::shared_ptr<Options> options,
                 int (*perform)(const CommonOptions&, const Options&)) {
    setAction(command, [this, options, perform] { return perform(common, *options); });
  }
  // `action` returns an ExitCode or throws Failure.
  void setAction(Command& command, std::function<int()> action);

  // Adds the files, folders replaced by what is in them. Without files the command gets those and
  // the settings of the project.
  void addFiles(Command& command, std::vector<std::string>& files);
  // Adds the form of diagnostics.
  void addForm(Command& command, FormNames forms = textAndJson());
  // Adds both, and what decides about warnings.
  void addSources(Command& command, std::vector<std::string>& files,
                  FormNames forms = textAndJson());
  // Has a command without files use the settings of the project, too, if there is one.
  void useProject(const Command& command) { projectUses_.push_back({command, nullptr, {}, false}); }

  // The page of a command, or that of velc if `command` is empty. Throws Failure if there is none.
  std::string help(const std::string& command) const;

  // Does what the arguments say, and returns an ExitCode. Throws Failure.
  int execute(int argc, const char* const* argv);

  CommonOptions common;

 private:
  struct ProjectUse {
    Command command;
    std::vector<std::string>* files;  // null for a command without files
    std::optional<Option> file;       // the argument that names them
    bool loadsPlugin;
  };

  void parse(int argc, const char* const* argv);

  // True if there is a project whose settings the command line has now.
  bool takeProject(const ProjectUse& use);

  std::unique_ptr<CLI::App> app_;
  std::vector<ProjectUse> projectUses_;
  std::function<int()> action_;  // of the command that is given
};

// Adds `--each`, for commands that can take each file for a program of its own.
void addEachOption(Command& command, bool& each);

}  // namespace velc
