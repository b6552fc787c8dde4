// The commands of velc, in the order of `velc --help`. Each function adds one command with its
// options to the command line.
#pragma once

#include "cli/command_line.h"

namespace velc {

void addOperatorsCommand(CommandLine& line);
void addCheckCommand(CommandLine& line);
void addTranslateCommand(CommandLine& line);
void addFormatCommand(CommandLine& line);
void addRunCommand(CommandLine& line);
void addBuildCommand(CommandLine& line);
void addTestCommand(CommandLine& line);
void addMemoryCommand(CommandLine& line);
void addLspCommand(CommandLine& line);
void addExplainCommand(CommandLine& line);
void addHelpCommand(CommandLine& line);

}  // namespace velc
