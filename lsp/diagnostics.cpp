#include "lsp/diagnostics.h"

#include "cli/diagnostics_printer.h"
#include "cli/explanations.h"
#include "refhost/messages.h"

namespace lsp {

namespace {

constexpr int kError = 1, kWarning = 2;
constexpr int kUnnecessary = 1;

// What an editor may show faded: it can go.
bool isUnnecessary(unsigned int code) {
  namespace message = refhost::message;
  return code == message::kNeverUsed.code || code == message::kNeverRead.code ||
         code == message::kUnusedInProgram.code || code == message::kUnreachable.code;
}

Json diagnosticOf(const refhost::Diagnostic& message, Json range, const Client& client) {
  Json diagnostic = {{"range", std::move(range)},
                     {"severity", message.severity == refhost::Severity::Error ? kError : kWarning},
                     {"source", "velc"},
                     {"message", message.text}};
  if (message.code == 0) return diagnostic;
  diagnostic["code"] = velc::codeText(message);
  const std::string page = velc::explanationUri(velc::codeText(message));
  if (client.codeLinks && !page.empty()) diagnostic["codeDescription"] = {{"href", page}};
  if (client.tags && isUnnecessary(message.code)) diagnostic["tags"] = {kUnnecessary};
  return diagnostic;
}

}  // namespace

Json diagnosticOf(const Analysed& analysed, const refhost::Diagnostic& message) {
  Json diagnostic = diagnosticOf(message, analysed.range(message.range), analysed.client());
  if (!analysed.client().relatedPlaces) return diagnostic;
  Json related = Json::array();
  for (const refhost::Note& note : message.notes) {
    if (!analysed.isFile(note.range.begin.file())) continue;
    related.push_back({{"location", analysed.location(note.range)}, {"message", note.text}});
  }
  if (!related.empty()) diagnostic["relatedInformation"] = std::move(related);
  return diagnostic;
}

std::map<std::string, Json> diagnosticsByFile(const Analysed& analysed) {
  std::map<std::string, Json> files;
  const refhost::SourceManager& sources = analysed.session().sources();
  for (std::uint32_t file = 0; file < analysed.fileCount(); ++file) {
    files[sources.path(file)] = Json::array();
  }
  for (const refhost::Diagnostic& message : analysed.session().messages()) {
    const std::uint32_t file = message.range.begin.file();
    if (!analysed.isFile(file)) continue;
    files[sources.path(file)].push_back(diagnosticOf(analysed, message));
  }
  return files;
}

Json diagnosticsOf(const refhost::SourceManager& source,
                   const std::vector<refhost::Diagnostic>& faults, const Client& client) {
  Json all = Json::array();
  const Lines lines(source.text(0), client.encoding);
  for (const refhost::Diagnostic& fault : faults) {
    const std::size_t begin = fault.range.begin.offset();
    all.push_back(diagnosticOf(fault,
                               {{"start", toJson(lines.position(begin))},
                                {"end", toJson(lines.position(begin + fault.range.length))}},
                               client));
  }
  return all;
}

}  // namespace lsp
