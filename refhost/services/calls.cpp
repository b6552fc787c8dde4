#include "refhost/services/calls.h"

namespace vel {

CallTree::~CallTree() = default;

void CallTree::addOperatorCaller(const std::string& caller, const std::string& callee,
                                 TextLocation location) {
  static_cast<refhost::Calls*>(this)->edges.push_back({caller, callee, location});
}

void CallTree::addFirmwareCaller(const std::string& callee) {
  auto& calls = *static_cast<refhost::Calls*>(this);
  calls.edges.push_back({calls.currentUnit, callee, calls.currentLocation});
}

}  // namespace vel
