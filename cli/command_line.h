// The command line of velc, and the options that several commands have.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "cli/common_options.h"

namespace velc {

struct CommandLine {
  CLI::App app;
  CommonOptions common;
  // Runs the command that was given, and returns an ExitCode or throws Failure. Empty when none
  // was given.
  std::function<int()> action;

  CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  // Adds a command, with all common options or only with those that name the plugin.
  CLI::App& addCommand(const char* name, const char* description);
  CLI::App& addPluginCommand(const char* name, const char* description);

  // Makes `execute(common, *options)` the action when `command` is given.
  template <typename Options>
  void setAction(CLI::App& command, std::shared_ptr<Options> options,
                 int (*execute)(const CommonOptions&, const Options&)) {
    command.callback([this, options, execute] {
      action = [this, options, execute] { return execute(common, *options); };
    });
  }
};

using FormNames = std::map<std::string, DiagnosticsForm>;
// The forms of commands that may print diagnostics more than once.
const FormNames& textAndJson();

// Adds the files, folders replaced by what is in them, and what decides about their diagnostics.
// `forms` must live as long as `command`.
void addSources(CLI::App& command, CommonOptions& common, std::vector<std::string>& files,
                const FormNames& forms = textAndJson());
// Adds `--each`, for commands that can take each file for a program of its own.
void addEachOption(CLI::App& command, bool& each);

}  // namespace velc
