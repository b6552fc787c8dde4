#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/unknown_argument.h"

namespace velc {

namespace {

const CLI::App* commandNamed(const CLI::App& app, const std::string& name) {
  for (const CLI::App* command : app.get_subcommands(nullptr)) {
    if (command->get_name() == name) return command;
  }
  return nullptr;
}

}  // namespace

void addHelpCommand(CommandLine& line) {
  CLI::App& command = *line.app.add_subcommand("help", "Print the options of a command");
  const auto name = std::make_shared<std::string>();
  command.add_option("COMMAND", *name, "The command; without one, all commands are listed");
  command.callback([&line, name] {
    line.action = [&line, name] {
      const CLI::App& app = line.app;
      const CLI::App* const about = commandNamed(app, *name);
      if (about == nullptr && !name->empty()) throw Failure(unknownCommand(app, *name));
      // Not help(), which would print that of this command.
      writeStandardOutput(about != nullptr ? about->help(app.get_name())
                                           : app.get_formatter()->make_help(
                                                 &app, app.get_name(), CLI::AppFormatMode::Normal));
      return kSuccess;
    };
  });
}

}  // namespace velc
