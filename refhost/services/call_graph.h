#pragma once

#include <string>
#include <vector>

#include "host/text_location.h"

namespace refhost {

struct CallEdge {
  std::string caller;
  std::string callee;
  vel::TextLocation location;
};

struct CallGraph {
  // The unit and the call for which code is being generated.
  std::string currentUnit;
  vel::TextLocation currentLocation = vel::TextLocation();

  std::vector<CallEdge> edges;  // in the order in which they were recorded
};

}  // namespace refhost
