// An analysed program as the requests see it: the session, and places as the protocol has them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "lsp/documents.h"
#include "lsp/text.h"
#include "refhost/session.h"

namespace lsp {

// Valid until the session is used for another analysis.
class Analysed {
 public:
  // `file` is the index of the document in the session's sources; those below `count` are files,
  // the others come with velc.
  Analysed(refhost::Session& session, const Documents& documents, std::uint32_t file,
           std::uint32_t count)
      : session_(&session), documents_(&documents), file_(file), count_(count) {}

  refhost::Session& session() const { return *session_; }
  std::uint32_t file() const { return file_; }
  std::uint32_t fileCount() const { return count_; }
  bool isFile(std::uint32_t file) const { return file < count_; }

  const Client& client() const { return documents_->client; }

  // In the document.
  vel::TextLocation place(Position position) const;
  std::uint32_t offset(Position position) const { return place(position).offset(); }

  Position position(vel::TextLocation place) const;
  Json range(const refhost::SourceRange& where) const;
  std::string uri(std::uint32_t file) const;
  Json location(const refhost::SourceRange& where) const;
  // A TextEdit.
  Json edit(const refhost::SourceRange& where, const std::string& text) const;
  // A WorkspaceEdit.
  Json workspaceEdit(const std::vector<refhost::TextEdit>& edits) const;

 private:
  const Lines& linesOf(std::uint32_t file) const;

  refhost::Session* session_;
  const Documents* documents_;
  std::uint32_t file_;
  std::uint32_t count_;
  mutable std::map<std::uint32_t, Lines> lines_;
};

}  // namespace lsp
