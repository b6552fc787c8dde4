#include "lsp/documents.h"

#include <limits>
#include <utility>

#include "cli/uri.h"

namespace lsp {

namespace {

void apply(const Json& change, Encoding encoding, std::string& text) {
  const auto& replacement = change.at("text").get_ref<const std::string&>();
  const auto range = change.find("range");
  if (range == change.end() || range->is_null()) {
    text = replacement;
    return;
  }
  const Lines lines(text, encoding);
  std::size_t begin = lines.offset(positionFrom(range->at("start")));
  std::size_t end = lines.offset(positionFrom(range->at("end")));
  // An edit that was dropped would leave another text here than in the editor.
  if (end < begin) std::swap(begin, end);
  text.replace(begin, end - begin, replacement);
}

}  // namespace

namespace {

// Numbers that are too large stand for the end of the text or of the line.
std::uint32_t countFrom(const Json& json) {
  const double number = json.get<double>();
  if (!(number >= 0)) throw RequestError(ErrorCode::InvalidParams, "a position is negative");
  constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
  return number < kMost ? static_cast<std::uint32_t>(number) : kMost;
}

}  // namespace

std::string pathIn(const Json& params) {
  return velc::pathOfUri(params.at("textDocument").at("uri").get<std::string>());
}

Json toJson(Position position) {
  return {{"line", position.line}, {"character", position.character}};
}

Position positionFrom(const Json& json) {
  return {countFrom(json.at("line")), countFrom(json.at("character"))};
}

const Document* Documents::didOpen(const Json& params) {
  const Json& given = params.at("textDocument");
  Document document;
  document.uri = given.at("uri").get<std::string>();
  document.path = pathIn(params);
  document.version = given.value("version", std::int64_t{0});
  document.text = given.at("text").get<std::string>();
  uris_[document.path] = document.uri;
  return &(documents_[document.path] = document);
}

const Document* Documents::didChange(const Json& params) {
  const auto found = documents_.find(pathIn(params));
  if (found == documents_.end()) return nullptr;
  Document& document = found->second;
  const auto version = params.at("textDocument").find("version");
  if (version != params.at("textDocument").end() && version->is_number())
    document.version = *version;
  for (const Json& change : params.at("contentChanges")) {
    apply(change, client.encoding, document.text);
  }
  return &document;
}

std::string Documents::didClose(const Json& params) {
  std::string path = pathIn(params);
  documents_.erase(path);
  return path;
}

const Document* Documents::find(const std::string& path) const {
  const auto found = documents_.find(path);
  return found != documents_.end() ? &found->second : nullptr;
}

std::string Documents::uriOf(const std::string& path) const {
  const auto known = uris_.find(path);
  return known != uris_.end() ? known->second : velc::fileUri(path);
}

}  // namespace lsp
