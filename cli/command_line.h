// The command line of velc, and the options that several commands have.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/common_options.h"

namespace velc {

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

  // The page of a command, or that of velc if `command` is empty. Throws Failure if there is none.
  std::string help(const std::string& command) const;

  // Does what the arguments say, and returns an ExitCode. Throws Failure.
  int execute(int argc, const char* const* argv);

  CommonOptions common;

 private:
  std::unique_ptr<CLI::App> app_;
  std::function<int()> action_;  // of the command that is given
};

using FormNames = Command::Names<DiagnosticsForm>;
// The forms of commands that may print diagnostics more than once.
FormNames textAndJson();

// Adds the files, folders replaced by what is in them, and what decides about their diagnostics.
void addSources(Command& command, CommonOptions& common, std::vector<std::string>& files,
                FormNames forms = textAndJson());
// Adds `--each`, for commands that can take each file for a program of its own.
void addEachOption(Command& command, bool& each);

}  // namespace velc
