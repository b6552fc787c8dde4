// Shows how a text would change.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "refhost/format/format.h"

namespace velc {

// The changes of a text by lines, as `diff -u` shows them and `patch` takes them; both texts have
// the name.
std::string unifiedDiff(const std::string& name, std::string_view text,
                        const std::vector<refhost::LayoutEdit>& edits);

}  // namespace velc
