// The tokens that a syntax error names as expected, in the words of a user.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace refhost {

class ExpectedTokens {
 public:
  // `name` as the grammar shows it; must live on.
  void add(std::string_view name);
  // "a, b or c"; what many tokens can begin or go on with is named as a whole.
  std::string text() const;
  bool has(std::string_view name) const;

 private:
  std::vector<std::string_view> names_;
};

}  // namespace refhost
