// Diagnostics for code-scanning services.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/diagnostics_printer.h"
#include "refhost/diagnostic.h"
#include "refhost/syntax/source.h"

namespace velc {

// A log in the Static Analysis Results Interchange Format, SARIF 2.1.0.
class SarifLog {
 public:
  // Adds a run of velc, with those of its messages that are not among the `rest`. Each message code
  // is a rule, with its page as explanation; `pages` is the place of the page of all messages,
  // empty for none.
  void add(const refhost::SourceManager& sources, const std::vector<refhost::Diagnostic>& messages,
           const Omitted& rest, const std::string& pages);
  std::string text() const;

 private:
  nlohmann::ordered_json runs_ = nlohmann::ordered_json::array();
};

}  // namespace velc
