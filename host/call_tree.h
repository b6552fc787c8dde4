// The host's call graph.
#pragma once

#include <string>

#include "host/export.h"
#include "host/text_location.h"

namespace vel {

class VEL_HOST_API CallTree {
 public:
  virtual ~CallTree();

  // Unit `caller` calls the operator or library function `callee` at `location`.
  void addOperatorCaller(const std::string& caller, const std::string& callee,
                         TextLocation location);
  // The unit for which code is being generated calls the runtime function `callee`.
  void addFirmwareCaller(const std::string& callee);
};

}  // namespace vel
