// Suggestions for names that are misspelt.
#pragma once

#include <string>
#include <string_view>

namespace refhost {

// The nearest of the names that are offered, by the number of letters that are missing, too many,
// wrong or swapped with a neighbour, regardless of letter case: at most one of them in a name of up
// to four letters, two in a longer one. Of names at the same number the one is nearer that has
// fewer wrong letters.
class Spelling {
 public:
  // `wanted` is not copied.
  explicit Spelling(std::string_view wanted);

  void offer(std::string_view name);
  // Empty if no name is near enough, or if two are equally near.
  const std::string& best() const { return best_; }

 private:
  std::string_view wanted_;
  std::size_t limit_;  // the cost that best_ has, or from which on none is accepted
  std::string best_;
};

}  // namespace refhost
