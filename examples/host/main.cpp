// Lets the plugin check the calls on standard input, and prints their C.
#include <iostream>

#include "host.h"
#include "hostkit/plugin_library.h"

int main(int count, char** arguments) {
  Host host;
  hostkit::PluginLibrary library;  // destroyed before the services, which its registry uses
  std::string error = "usage: host PLUGIN [ADD-ON...] < calls.txt";
  if (count < 2 ||
      !library.start(host.services, arguments[1], {arguments + 2, arguments + count}, error)) {
    std::cerr << error << '\n';
    return 2;
  }
  int exitCode = 0;
  std::string text;
  for (std::uint32_t number = 1; std::getline(std::cin, text); ++number) {
    const std::string c = host.compile(text, number);
    for (const vel::VELMessage& message : host.messages) {
      if (hostkit::isError(message)) exitCode = 1;
      std::cout << message.location.file() << ':' << message.location.offset() << ": "
                << hostkit::messageText(message) << '\n';
    }
    if (!c.empty()) std::cout << c << '\n';
  }
  return exitCode;
}
