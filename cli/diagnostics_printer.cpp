#include "cli/diagnostics_printer.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string_view>

#include "hostkit/encoding.h"
#include "refhost/messages.h"

namespace velc {

namespace {

// Replaces control characters by blanks, so that the text is one line and contains no commands
// to a terminal.
std::string printable(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x20 && c != '\t') || byte == 0x7F) c = ' ';
  }
  return result;
}

// White space as wide as the first `count` characters of `line`. Keeps tabs, whose width varies.
std::string indent(std::string_view line, std::uint32_t count) {
  std::string result;
  while (!line.empty() && result.size() < count) {
    result += line.front() == '\t' ? '\t' : ' ';
    hostkit::takeCharacter(line);
  }
  result.resize(count, ' ');
  return result;
}

struct Excerpt {
  std::string text;
  std::uint32_t caret;  // number of characters before the caret
};

// Shortens a long line to the characters around the caret.
Excerpt excerpt(std::string_view line, std::uint32_t caret) {
  constexpr std::uint32_t kAround = 70;
  constexpr std::string_view kCut = "...";
  const std::uint32_t first = caret > kAround ? caret - kAround : 0;
  const std::size_t begin = hostkit::sizeOfFirst(first, line);
  const std::size_t end = begin + hostkit::sizeOfFirst(caret + kAround - first, line.substr(begin));
  Excerpt result{std::string(line.substr(begin, end - begin)), caret - first};
  if (first != 0) {
    result.text.insert(0, kCut);
    result.caret += static_cast<std::uint32_t>(kCut.size());
  }
  if (end != line.size()) result.text += kCut;
  return result;
}

}  // namespace

const char* severityText(const vel::VELMessage& message) {
  return message.severity == static_cast<int>(refhost::Severity::Error) ? "error" : "warning";
}

std::string codeText(const vel::VELMessage& message) { return fmt::format("0x{:X}", message.code); }

std::string diagnosticText(const refhost::SourceManager& sources, const vel::VELMessage& message) {
  const refhost::LineColumn at = sources.position(message.location);
  const Excerpt line = excerpt(sources.line(message.location), at.column - 1);
  return fmt::format("{}:{}:{}: {}: {} [{}]\n{}\n{}^\n",
                     printable(sources.path(message.location.file())), at.line, at.column,
                     severityText(message), printable(message.text), codeText(message),
                     printable(line.text), indent(line.text, line.caret));
}

std::string diagnosticJson(const refhost::SourceManager& sources, const vel::VELMessage& message) {
  const refhost::LineColumn at = sources.position(message.location);
  const nlohmann::ordered_json object = {
      {"file", sources.path(message.location.file())},
      {"line", at.line},
      {"column", at.column},
      {"severity", severityText(message)},
      {"code", codeText(message)},
      {"message", message.text},
  };
  // Replaces invalid UTF-8, which sources may contain but JSON must not.
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace velc
