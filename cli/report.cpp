#include "cli/report.h"

#include <unistd.h>

#include "cli/output_file.h"
#include "cli/paths.h"

namespace velc {

Report::Report(const CommonOptions& common)
    : common_(common), colours_(common.colour, STDERR_FILENO) {}

void Report::add(refhost::Session& session, std::size_t first, std::size_t files) {
  if (common_.diagnostics == DiagnosticsForm::Text) {
    add(session.sources(), session.messages(), first, files);
    return;
  }
  std::vector<refhost::Diagnostic> messages = session.messages();
  for (std::size_t i = first; i < messages.size(); ++i) {
    messages[i].fixes = session.fixes(messages[i]);
  }
  add(session.sources(), messages, first, files);
}

void Report::add(const refhost::SourceManager& sources,
                 const std::vector<refhost::Diagnostic>& messages, std::size_t first,
                 std::size_t files) {
  tally_.files += files;
  tally_.add(messages, first);
  const Omitted rest = omitted(messages, first, common_.maxErrors);
  if (common_.diagnostics == DiagnosticsForm::Sarif) {
    log_.add(sources, messages, rest, messagesPage());
    return;
  }
  const bool json = common_.diagnostics == DiagnosticsForm::Json;
  std::string text;
  for (std::size_t i = first; i < rest.first; ++i) {
    text += json ? diagnosticJson(sources, messages[i])
                 : diagnosticText(sources, messages[i], colours_);
  }
  if (rest.any()) text += json ? omittedJson(rest) : omittedText(rest);
  writeStandardError(text);
}

void Report::finish() {
  if (common_.diagnostics == DiagnosticsForm::Sarif) {
    writeStandardError(log_.text());
  } else if (common_.diagnostics == DiagnosticsForm::Text) {
    writeStandardError(tallyText(tally_, colours_));
  }
}

}  // namespace velc
