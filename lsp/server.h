// The language server.
#pragma once

#include <string>
#include <vector>

namespace lsp {

struct ServerOptions {
  std::vector<std::string> libraries;  // the plugin and add-ons; none for those of projects
  int input = 0;                       // descriptors
  int output = 1;
};

// Serves one client until it says `exit` or the input ends. Returns the exit code: 0 if the client
// has said `shutdown` before, otherwise 1.
int serve(const ServerOptions& options);

}  // namespace lsp
