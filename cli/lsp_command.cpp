#include "cli/commands.h"
#include "lsp/server.h"

namespace velc {

namespace {

struct LspOptions {
  bool stdio = false;
};

int serve(const CommonOptions& common, const LspOptions& /*options*/) {
  return lsp::serve({common.plugins});
}

}  // namespace

void addLspCommand(CommandLine& line) {
  Command command = line.addPluginCommand(
      "lsp", "Serve an editor: the language server protocol on standard input and output");
  const auto options = std::make_shared<LspOptions>();
  command.flag("--stdio", options->stdio, "What is done anyway; some editors say it");
  line.setAction(command, options, serve);
}

}  // namespace velc
