// The properties of operators that `velc operators` lists.
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
  std::vector<std::string> inputs;  // names, in the order of the parameters
  bool isExtensible = false;        // the last input may be repeated
};

// The operators in `names`, or all when that is empty, in order of registration. Throws Failure
// for a name that is not an operator.
std::vector<OperatorEntry> operatorCatalogue(refhost::Session& session,
                                             const std::vector<std::string>& names);

}  // namespace velc
