// The expected tokens in the message of a syntax error.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace refhost {

class ExpectedTokens {
 public:
  // `name` is that of the grammar and must outlive the object.
  void add(std::string_view name);
  // "a, b or c". The tokens that begin an expression, a statement or a type are summed up by that
  // word.
  std::string text() const;
  // The names that are words of the language.
  std::vector<std::string_view> keywords() const;
  bool has(std::string_view name) const;

 private:
  std::vector<std::string_view> names_;
};

}  // namespace refhost
