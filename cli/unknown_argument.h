// Commands and options that are not known, mostly misspelt ones.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace velc {

// Text for the first argument that the command line has not understood, with the nearest command or
// option; empty if there is none. `app` has parsed the arguments, with or without an error.
std::string unknownArgument(const CLI::App& app);

// Text for the name of a command that does not exist.
std::string unknownCommand(const CLI::App& app, const std::string& name);

}  // namespace velc
