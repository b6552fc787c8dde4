#include "cli/diagnostics_printer.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string_view>

#include "refhost/messages.h"

namespace velc {

namespace {

const char* severityText(const vel::VELMessage& message) {
  return message.severity == static_cast<int>(refhost::Severity::Error) ? "error" : "warning";
}

std::string codeText(const vel::VELMessage& message) { return fmt::format("0x{:X}", message.code); }

// One line whatever the source holds, and nothing that a terminal would act on.
std::string printable(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x20 && c != '\t') || byte == 0x7F) c = ' ';
  }
  return result;
}

bool startsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

// As wide as the `count` characters of `line` before the caret: tabs stay tabs.
std::string indent(std::string_view line, std::uint32_t count) {
  std::string result;
  for (const char c : line) {
    if (!startsCharacter(c)) continue;
    if (result.size() == count) break;
    result += c == '\t' ? '\t' : ' ';
  }
  result.resize(count, ' ');
  return result;
}

}  // namespace

std::string diagnosticText(const refhost::SourceManager& sources, const vel::VELMessage& message) {
  const refhost::LineColumn at = sources.position(message.location);
  const std::string_view line = sources.line(message.location);
  return fmt::format("{}:{}:{}: {}: {} [{}]\n{}\n{}^\n", sources.path(message.location.file()),
                     at.line, at.column, severityText(message), printable(message.text),
                     codeText(message), printable(line), indent(line, at.column - 1));
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
  // Sources need not be valid UTF-8, JSON must be.
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace velc
