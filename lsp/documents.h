// The documents that are open in the editor.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "lsp/client.h"
#include "lsp/rpc.h"
#include "lsp/text.h"

namespace lsp {

struct Document {
  std::string uri;  // as the client spells it
  std::string path;
  std::int64_t version = 0;
  std::string text;
};

class Documents {
 public:
  Client client;  // set by `initialize`

  // The parameters of the notifications of these names. Each returns the document, null if it is
  // not open.
  const Document* didOpen(const Json& params);
  const Document* didChange(const Json& params);
  // Returns the path.
  std::string didClose(const Json& params);

  // Null if it is not open.
  const Document* find(const std::string& path) const;
  const std::map<std::string, Document>& all() const { return documents_; }
  // As the client spelt it if it is or was open.
  std::string uriOf(const std::string& path) const;

 private:
  std::map<std::string, Document> documents_;  // by path
  std::map<std::string, std::string> uris_;    // of all that were opened
};

// The path of the document that `params` name in `textDocument`.
std::string pathIn(const Json& params);

Json toJson(Position position);
Position positionFrom(const Json& json);

}  // namespace lsp
