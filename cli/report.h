// What a command says of its programs.
#pragma once

#include <cstddef>

#include "cli/common_options.h"
#include "cli/diagnostics_printer.h"
#include "cli/sarif.h"
#include "refhost/session.h"

namespace velc {

// Prints the diagnostics of one program or of several in the form that the options ask for. All
// functions throw Failure when standard error cannot be written.
class Report {
 public:
  explicit Report(const CommonOptions& common);

  // Prints the messages of a session from index `first` on; those in a log stand in finish().
  void add(refhost::Session& session, std::size_t first, std::size_t files);
  // The same for any messages about `sources`.
  void add(const refhost::SourceManager& sources, const std::vector<refhost::Diagnostic>& messages,
           std::size_t first, std::size_t files);
  // Prints what comes behind all messages: the log, or how many there were.
  void finish();

 private:
  const CommonOptions& common_;
  Colours colours_;
  Tally tally_;
  SarifLog log_;
};

}  // namespace velc
