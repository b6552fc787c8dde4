// The folders that the client has open, and the projects in them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lsp/rpc.h"

namespace lsp {

class ClientFolders {
 public:
  // The parameters of `initialize` and of `workspace/didChangeWorkspaceFolders`.
  void initialize(const Json& params);
  void didChange(const Json& params);

  // Each velops.json in one of them or in the folders below it, down to a few levels. They are
  // looked for once until forget() is called.
  const std::vector<std::string>& projects();
  void forget() { projects_.reset(); }

 private:
  std::vector<std::string> folders_;
  std::optional<std::vector<std::string>> projects_;
};

}  // namespace lsp
