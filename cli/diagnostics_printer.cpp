#include "cli/diagnostics_printer.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <set>

#include "cli/counted.h"
#include "cli/excerpt.h"

namespace velc {

namespace {

using Json = nlohmann::ordered_json;

using Role = Colours::Role;

std::string placeText(const refhost::SourceManager& sources, const refhost::SourceRange& range,
                      const Colours& colours) {
  const refhost::LineColumn at = sources.position(range.begin);
  return colours(Role::Strong, fmt::format("{}:{}:{}:", printable(sources.path(range.begin.file())),
                                           at.line, at.column));
}

bool isError(const refhost::Diagnostic& message) {
  return message.severity == refhost::Severity::Error;
}

Json placeJson(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  const Region region = regionOf(sources, range);
  return {{"file", sources.path(range.begin.file())},
          {"line", region.begin.line},
          {"column", region.begin.column},
          {"endLine", region.end.line},
          {"endColumn", region.end.column}};
}

}  // namespace

const char* severityText(const refhost::Diagnostic& message) {
  return isError(message) ? "error" : "warning";
}

std::string codeText(const refhost::Diagnostic& message) {
  return fmt::format("0x{:X}", message.code);
}

Region regionOf(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  const vel::TextLocation end(range.begin.file(), range.begin.offset() + range.length);
  return {sources.position(range.begin), sources.position(end)};
}

std::string Omitted::text() const {
  std::string all;
  if (errors != 0) all = counted(errors, "more error");
  if (warnings != 0) all += (all.empty() ? "" : " and ") + counted(warnings, "more warning");
  return all + (errors + warnings == 1 ? " is" : " are") + " not shown (--max-errors)";
}

Omitted omitted(const std::vector<refhost::Diagnostic>& messages, std::size_t first,
                std::size_t maxErrors) {
  Omitted rest;
  std::size_t errors = 0;
  while (first < messages.size() && (maxErrors == 0 || errors < maxErrors)) {
    if (isError(messages[first++])) ++errors;
  }
  rest.first = first;
  for (; first < messages.size(); ++first)
    ++(isError(messages[first]) ? rest.errors : rest.warnings);
  return rest;
}

std::string omittedText(const Omitted& rest) { return fmt::format("velc: {}\n", rest.text()); }

std::string omittedJson(const Omitted& rest) {
  const Json object = {
      {"message", rest.text()}, {"omittedErrors", rest.errors}, {"omittedWarnings", rest.warnings}};
  return object.dump() + '\n';
}

std::string diagnosticText(const refhost::SourceManager& sources,
                           const refhost::Diagnostic& message, const Colours& colours) {
  const std::string severity = colours(isError(message) ? Role::Error : Role::Warning,
                                       fmt::format("{}:", severityText(message)));
  const std::string code = message.code != 0 ? fmt::format(" [{}]", codeText(message)) : "";
  std::string text =
      fmt::format("{} {} {}{}\n{}", placeText(sources, message.range, colours), severity,
                  printable(message.text), code, excerpt(sources, message.range, colours));
  for (const refhost::Note& note : message.notes) {
    text += fmt::format("{} {} {}\n{}", placeText(sources, note.range, colours),
                        colours(Role::Note, "note:"), printable(note.text),
                        excerpt(sources, note.range, colours));
  }
  return text;
}

void Tally::add(const std::vector<refhost::Diagnostic>& messages, std::size_t first) {
  std::set<std::uint32_t> found;
  for (; first < messages.size(); ++first) {
    ++(isError(messages[first]) ? errors : warnings);
    found.insert(messages[first].range.begin.file());
  }
  withFault += found.size();
}

std::string tallyText(const Tally& tally, const Colours& colours) {
  const std::size_t messages = tally.errors + tally.warnings;
  if (messages == 0 || (messages == 1 && tally.files == 1)) return "";
  std::string text;
  if (tally.errors != 0) text = colours(Role::Error, counted(tally.errors, "error"));
  if (tally.errors != 0 && tally.warnings != 0) text += ", ";
  if (tally.warnings != 0) text += colours(Role::Warning, counted(tally.warnings, "warning"));
  text += " in ";
  if (tally.withFault != tally.files) text += fmt::format("{} of ", tally.withFault);
  return text + counted(tally.files, "file") + '\n';
}

std::string diagnosticJson(const refhost::SourceManager& sources,
                           const refhost::Diagnostic& message) {
  Json object = placeJson(sources, message.range);
  object["severity"] = severityText(message);
  object["code"] = codeText(message);
  object["message"] = message.text;
  object["notes"] = Json::array();
  for (const refhost::Note& note : message.notes) {
    Json& added = object["notes"].emplace_back(placeJson(sources, note.range));
    added["message"] = note.text;
  }
  object["fixes"] = Json::array();
  for (const refhost::Fix& fix : message.fixes) {
    Json& added = object["fixes"].emplace_back(Json{{"title", fix.title}});
    for (const refhost::TextEdit& edit : fix.edits) {
      added["edits"].emplace_back(placeJson(sources, edit.range))["replacement"] = edit.text;
    }
  }
  // Replaces invalid UTF-8, which sources may contain but JSON must not.
  return object.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace velc
