#include "cli/unknown_argument.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <vector>

#include "cli/excerpt.h"
#include "refhost/spelling.h"

namespace velc {

namespace {

std::string unknown(const char* kind, const std::string& name, const std::string& nearest) {
  std::string text = fmt::format("unknown {} '{}'", kind, printable(name));
  if (!nearest.empty()) text += fmt::format(", did you mean '{}'?", nearest);
  return text;
}

std::string unknownOption(const CLI::App& command, const std::string& argument) {
  const std::string name = argument.substr(0, argument.find('='));
  refhost::Spelling spelling(name);
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& known : option->get_lnames()) spelling.offer("--" + known);
  }
  return unknown("option", name, spelling.best());
}

// Without the `--` behind which no options come.
std::vector<std::string> remaining(const CLI::App& app) {
  std::vector<std::string> arguments = app.remaining();
  arguments.erase(std::remove(arguments.begin(), arguments.end(), "--"), arguments.end());
  return arguments;
}

}  // namespace

std::string unknownCommand(const CLI::App& app, const std::string& name) {
  refhost::Spelling spelling(name);
  for (const CLI::App* command : app.get_subcommands(nullptr)) spelling.offer(command->get_name());
  return unknown("command", name, spelling.best());
}

std::string unknownArgument(const CLI::App& app) {
  for (const std::string& argument : remaining(app)) {
    return argument[0] == '-' ? unknownOption(app, argument) : unknownCommand(app, argument);
  }
  for (const CLI::App* command : app.get_subcommands()) {
    for (const std::string& argument : remaining(*command)) {
      return argument[0] == '-' ? unknownOption(*command, argument)
                                : fmt::format("'{}' is more than '{}' takes", printable(argument),
                                              command->get_name());
    }
  }
  return "";
}

}  // namespace velc
