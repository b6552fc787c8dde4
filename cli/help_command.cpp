#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output_file.h"

namespace velc {

void addHelpCommand(CommandLine& line) {
  Command command = line.addPlainCommand("help", "Print the options of a command");
  const auto name = std::make_shared<std::string>();
  command.option("COMMAND", *name, "The command; without one, all commands are listed");
  line.setAction(command, [&line, name] {
    writeStandardOutput(line.help(*name));
    return kSuccess;
  });
}

}  // namespace velc
