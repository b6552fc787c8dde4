#include "refhost/spelling.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/kit.h"

namespace refhost {
namespace {

// The number of edits that turn `a` into `b`; swapped neighbours are one edit.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> beforeLast;
  std::vector<std::size_t> last(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::vector<std::size_t> row(b.size() + 1, i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = toLower(a[i - 1]) == toLower(b[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && toLower(a[i - 1]) == toLower(b[j - 2]) &&
                           toLower(a[i - 2]) == toLower(b[j - 1]);
      if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    beforeLast = std::move(last);
    last = std::move(row);
  }
  return last.back();
}

constexpr std::size_t kShort = 4;
constexpr std::size_t kLongest = 100;

}  // namespace

Spelling::Spelling(std::string_view wanted)
    : wanted_(wanted), limit_(wanted.size() <= kShort ? 2 : 3) {}

void Spelling::offer(std::string_view name) {
  const std::size_t longer = std::max(name.size(), wanted_.size());
  const std::size_t shorter = std::min(name.size(), wanted_.size());
  // One letter is not a misspelling of another one.
  if (shorter < 2 || longer > kLongest || longer - shorter > limit_) return;
  const std::size_t edits = distance(wanted_, name);
  if (edits > limit_) return;
  if (edits < limit_) {
    limit_ = edits;
    best_ = name;
  } else if (!equalIgnoringCase(best_, name)) {
    best_.clear();
  }
}

}  // namespace refhost
