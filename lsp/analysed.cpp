#include "lsp/analysed.h"

namespace lsp {

const Lines& Analysed::linesOf(std::uint32_t file) const {
  const auto known = lines_.find(file);
  if (known != lines_.end()) return known->second;
  const refhost::SourceManager& sources = session_->sources();
  // Editors do not count the byte order marks of files as they are on disk.
  const bool isOpen = documents_->find(sources.path(file)) != nullptr;
  const std::string_view mark = isOpen ? sources.byteOrderMark(file) : std::string_view();
  return lines_.try_emplace(file, sources.text(file), client().encoding, mark).first->second;
}

vel::TextLocation Analysed::place(Position position) const {
  return vel::TextLocation(file_, static_cast<std::uint32_t>(linesOf(file_).offset(position)));
}

Position Analysed::position(vel::TextLocation place) const {
  return linesOf(place.file()).position(place.offset());
}

Json Analysed::range(const refhost::SourceRange& where) const {
  const vel::TextLocation end(where.begin.file(), where.begin.offset() + where.length);
  return {{"start", toJson(position(where.begin))}, {"end", toJson(position(end))}};
}

std::string Analysed::uri(std::uint32_t file) const {
  return documents_->uriOf(session_->sources().path(file));
}

Json Analysed::location(const refhost::SourceRange& where) const {
  return {{"uri", uri(where.begin.file())}, {"range", range(where)}};
}

Json Analysed::edit(const refhost::SourceRange& where, const std::string& text) const {
  return {{"range", range(where)}, {"newText", text}};
}

Json Analysed::workspaceEdit(const std::vector<refhost::TextEdit>& edits) const {
  Json changes = Json::object();
  for (const refhost::TextEdit& edited : edits) {
    changes[uri(edited.range.begin.file())].push_back(edit(edited.range, edited.text));
  }
  return {{"changes", std::move(changes)}};
}

}  // namespace lsp
