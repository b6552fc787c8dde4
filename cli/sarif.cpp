#include "cli/sarif.h"

#include <fmt/format.h>

#include <cctype>
#include <cstring>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>

#include "cli/diagnostics_printer.h"
#include "cli/explanations.h"

namespace velc {

namespace {

using Json = nlohmann::ordered_json;

// Keeps relative paths, which services resolve against the root of the repository.
std::string uriOf(const std::string& path) {
  const std::filesystem::path normal = std::filesystem::path(path).lexically_normal();
  std::string uri = normal.is_absolute() ? "file://" : "";
  for (const char c : normal.generic_string()) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte < 0x80 && (std::isalnum(byte) != 0 || std::strchr("/-._~", c));
    uri += plain ? std::string(1, c) : fmt::format("%{:02X}", byte);
  }
  return uri;
}

Json ruleOf(const vel::VELMessage& message) {
  const std::string code = codeText(message);
  Json rule = {{"id", code}, {"defaultConfiguration", {{"level", severityText(message)}}}};
  // Codes of other plugins and add-ons may have no page.
  if (const Explanation* explanation = explanationOf(code)) {
    rule["shortDescription"] = {{"text", explanation->title}};
    rule["help"] = {{"text", explanation->text}, {"markdown", explanation->text}};
  }
  return rule;
}

Json resultOf(const refhost::SourceManager& sources, const vel::VELMessage& message,
              std::size_t rule) {
  const refhost::LineColumn at = sources.position(message.location);
  const Json location = {
      {"physicalLocation",
       {{"artifactLocation", {{"uri", uriOf(sources.path(message.location.file()))}}},
        {"region", {{"startLine", at.line}, {"startColumn", at.column}}}}}};
  return {{"ruleId", codeText(message)},
          {"ruleIndex", rule},
          {"level", severityText(message)},
          {"message", {{"text", message.text}}},
          {"locations", Json::array({location})}};
}

}  // namespace

std::string sarifLog(const refhost::SourceManager& sources,
                     const std::vector<vel::VELMessage>& messages) {
  Json rules = Json::array();
  Json results = Json::array();
  std::map<unsigned int, std::size_t> ruleNumbers;
  for (const vel::VELMessage& message : messages) {
    const auto [number, isNew] = ruleNumbers.try_emplace(message.code, rules.size());
    if (isNew) rules.push_back(ruleOf(message));
    results.push_back(resultOf(sources, message, number->second));
  }
  const Json driver = {{"name", "velc"}, {"version", VELC_VERSION}, {"rules", rules}};
  const Json run = {
      {"tool", {{"driver", driver}}}, {"columnKind", "unicodeCodePoints"}, {"results", results}};
  const Json log = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                    {"version", "2.1.0"},
                    {"runs", Json::array({run})}};
  // Replaces invalid UTF-8, which sources may contain but JSON must not.
  return log.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace velc
