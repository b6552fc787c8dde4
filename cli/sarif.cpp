#include "cli/sarif.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>

#include "cli/diagnostics_printer.h"
#include "cli/explanations.h"
#include "cli/uri.h"
#include "host/ast_node_helper.h"

namespace velc {

namespace {

using Json = nlohmann::ordered_json;

Json ruleOf(const refhost::Diagnostic& message, const std::string& pages) {
  const std::string code = codeText(message);
  Json rule = {{"id", code}, {"defaultConfiguration", {{"level", severityText(message)}}}};
  // Codes of other plugins and add-ons may have no page.
  const auto explanations = explanationsOf(code);
  if (!explanations.empty()) {
    const Explanation* const explanation = explanations.front();
    rule["shortDescription"] = {{"text", explanation->title}};
    rule["help"] = {{"text", explanation->text}, {"markdown", explanation->text}};
    if (!pages.empty()) rule["helpUri"] = fileUri(pages) + "#" + code;
  }
  return rule;
}

// Services resolve relative paths against the root of the repository.
Json artifactOf(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  return {{"uri", fileUri(sources.path(range.begin.file()))}};
}

Json regionJson(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  const Region region = regionOf(sources, range);
  return {{"startLine", region.begin.line},
          {"startColumn", region.begin.column},
          {"endLine", region.end.line},
          {"endColumn", region.end.column}};
}

Json locationOf(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  return {
      {"physicalLocation",
       {{"artifactLocation", artifactOf(sources, range)}, {"region", regionJson(sources, range)}}}};
}

Json fixOf(const refhost::SourceManager& sources, const refhost::Fix& fix) {
  Json changes = Json::array();
  for (const refhost::TextEdit& edit : fix.edits) {
    const Json replacement = {{"deletedRegion", regionJson(sources, edit.range)},
                              {"insertedContent", {{"text", edit.text}}}};
    const Json artifact = artifactOf(sources, edit.range);
    const auto known = std::find_if(
        changes.begin(), changes.end(),
        [&artifact](const Json& change) { return change["artifactLocation"] == artifact; });
    if (known != changes.end()) {
      (*known)["replacements"].push_back(replacement);
    } else {
      changes.push_back(
          {{"artifactLocation", artifact}, {"replacements", Json::array({replacement})}});
    }
  }
  return {{"description", {{"text", fix.title}}}, {"artifactChanges", std::move(changes)}};
}

// Recognises a message in other versions of its file: made from its line without white space, and
// counted among those that are alike.
class Fingerprints {
 public:
  std::string next(std::string_view path, std::string_view line, unsigned int code) {
    std::string key = fmt::format("{}\n{:X}\n", path, code);
    std::copy_if(line.begin(), line.end(), std::back_inserter(key),
                 [](char c) { return c != ' ' && c != '\t'; });
    const std::string digest = AstNodeHelper::opExpTextToMd5HexText("line", key);
    return fmt::format("{}:{}", digest, ++seen_[digest]);
  }

 private:
  std::map<std::string, int> seen_;
};

Json resultOf(const refhost::SourceManager& sources, const refhost::Diagnostic& message,
              std::size_t rule, Fingerprints& fingerprints) {
  const vel::TextLocation begin = message.range.begin;
  Json result = {
      {"ruleId", codeText(message)},
      {"ruleIndex", rule},
      {"level", severityText(message)},
      {"message", {{"text", message.text}}},
      {"locations", Json::array({locationOf(sources, message.range)})},
      {"partialFingerprints",
       {{"primaryLocationLineHash",
         fingerprints.next(sources.path(begin.file()), sources.line(begin), message.code)}}}};
  for (const refhost::Note& note : message.notes) {
    Json& added = result["relatedLocations"].emplace_back(locationOf(sources, note.range));
    added["message"] = {{"text", note.text}};
  }
  for (const refhost::Fix& fix : message.fixes) result["fixes"].push_back(fixOf(sources, fix));
  return result;
}

}  // namespace

void SarifLog::add(const refhost::SourceManager& sources,
                   const std::vector<refhost::Diagnostic>& messages, const Omitted& rest,
                   const std::string& pages) {
  Fingerprints fingerprints;
  Json rules = Json::array();
  Json results = Json::array();
  std::map<unsigned int, std::size_t> ruleNumbers;
  for (std::size_t i = 0; i < rest.first; ++i) {
    const refhost::Diagnostic& message = messages[i];
    const auto [number, isNew] = ruleNumbers.try_emplace(message.code, rules.size());
    if (isNew) rules.push_back(ruleOf(message, pages));
    results.push_back(resultOf(sources, message, number->second, fingerprints));
  }
  const Json driver = {{"name", "velc"}, {"version", VELC_VERSION}, {"rules", rules}};
  Json run = {
      {"tool", {{"driver", driver}}}, {"columnKind", "unicodeCodePoints"}, {"results", results}};
  if (rest.any()) {
    const Json notice = {{"level", "note"}, {"message", {{"text", rest.text()}}}};
    run["invocations"] = Json::array(
        {{{"executionSuccessful", true}, {"toolExecutionNotifications", Json::array({notice})}}});
  }
  runs_.push_back(std::move(run));
}

std::string SarifLog::text() const {
  const Json log = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                    {"version", "2.1.0"},
                    {"runs", runs_}};
  // Replaces invalid UTF-8, which sources may contain but JSON must not.
  return log.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace velc
