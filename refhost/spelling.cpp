#include "refhost/spelling.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/kit.h"

namespace refhost {
namespace {

// Each edit costs kEdit, and a wrong letter a little more: it is a rarer mistake than a letter that
// is missing, doubled or swapped, so that MOV is nearer to MOVE than to MOD.
constexpr std::size_t kEdit = 16;
constexpr std::size_t kWrongLetter = kEdit + 1;

// The cost of the edits that turn `a` into `b`; swapped neighbours are one edit.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> beforeLast;
  std::vector<std::size_t> last(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j * kEdit;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::vector<std::size_t> row(b.size() + 1, i * kEdit);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = toLower(a[i - 1]) == toLower(b[j - 1]);
      row[j] =
          std::min({last[j] + kEdit, row[j - 1] + kEdit, last[j - 1] + (same ? 0 : kWrongLetter)});
      const bool swapped = i > 1 && j > 1 && toLower(a[i - 1]) == toLower(b[j - 2]) &&
                           toLower(a[i - 2]) == toLower(b[j - 1]);
      if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + kEdit);
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
    : wanted_(wanted), limit_((wanted.size() <= kShort ? 2 : 3) * kEdit) {}

void Spelling::offer(std::string_view name) {
  const std::size_t longer = std::max(name.size(), wanted_.size());
  const std::size_t shorter = std::min(name.size(), wanted_.size());
  if (longer > kLongest || (longer - shorter) * kEdit > limit_) return;
  // One letter is not a misspelling of another one, unless it is doubled.
  const bool doubled = shorter == 1 && longer == 2 && wanted_[0] == wanted_.back();
  if (shorter < 2 && !doubled) return;
  const std::size_t cost = distance(wanted_, name);
  if (cost > limit_) return;
  if (cost < limit_) {
    limit_ = cost;
    best_ = name;
  } else if (!equalIgnoringCase(best_, name)) {
    best_.clear();
  }
}

}  // namespace refhost
