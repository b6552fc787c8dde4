// What the client can take.
#pragma once

#include <string>

#include "lsp/rpc.h"
#include "lsp/text.h"

namespace lsp {

struct Client {
  Encoding encoding = Encoding::Utf16;
  // In completions: snippets, and a range to be replaced beside one for an insertion.
  bool snippets = false;
  bool insertions = false;
  // The labels of parameters as offsets in that of the signature.
  bool labelOffsets = false;
  // The symbols of a document as a tree.
  bool symbolTrees = false;
  // The range of a name is asked for before it is renamed.
  bool preparesRenaming = false;
  // Parts of diagnostics.
  bool relatedPlaces = false;
  bool codeLinks = false;
  bool tags = false;
  // Is told by the client which files have changed if it is asked to.
  bool watchesFiles = false;
  // Markdown, or only plain text.
  bool hoverMarkdown = true;
  bool completionMarkdown = true;
  bool signatureMarkdown = true;
};

// From the parameters of `initialize`.
Client clientFrom(const Json& params);

// MarkupContent of a text in Markdown; if the client does not take it, without the marks of blocks
// of code.
Json markup(bool takesMarkdown, const std::string& markdown);

}  // namespace lsp
