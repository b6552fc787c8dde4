// What there is to say of the plugin's operators.
#pragma once

#include <string>
#include <vector>

#include "refhost/session.h"

namespace velc {

struct OperatorEntry {
  std::string name;
  std::string className;  // without its namespace
  const char* family = "";
  bool isFunctionCall = false;
  std::vector<std::string> inputs;  // by name, in the order of the parameters
  bool isExtensible = false;        // takes more inputs of the last one's kind
};

// The operators named, or all when none is, in the order of registration. Throws
// Failure for a name that is no operator.
std::vector<OperatorEntry> operatorCatalogue(refhost::Session& session,
                                             const std::vector<std::string>& names);

}  // namespace velc
