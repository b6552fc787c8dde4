// Files by which tools that build programs know what an output depends on.
#pragma once

#include <string>
#include <vector>

namespace velc {

// A rule in the syntax of make, which ninja reads too: `output` depends on the inputs, each of
// which may be missing the next time. Throws Failure for a name that has no spelling there.
std::string depfileText(const std::string& output, const std::vector<std::string>& inputs);

}  // namespace velc
