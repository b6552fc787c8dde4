// The table from which the registry creates the operators.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "core/operator.h"

namespace vel {

using OperatorFactory = std::unique_ptr<STOperator> (*)(const std::string& name);

// One row of the registration table: a name, or a pattern whose "*" is replaced by each of
// `words` (separated by single blanks) in turn. Names that would convert a type to itself
// (`INT_TO_INT`) are skipped.
struct Registration {
  std::string_view pattern;
  OperatorFactory make;
  std::string_view words = {};
};

struct RegistrationTable {
  const Registration* first;
  std::size_t count;

  const Registration* begin() const { return first; }
  const Registration* end() const { return first + count; }
};

bool convertsToItself(std::string_view name);

// Calls `use` with each name of the row, a std::string, in order.
template <class Use>
void forEachName(const Registration& row, Use use) {
  const std::size_t star = row.pattern.find('*');
  std::string_view rest = row.words;
  do {
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(word.size() < rest.size() ? word.size() + 1 : rest.size());
    std::string name(row.pattern);
    if (star != std::string_view::npos) name.replace(star, 1, word);
    if (!convertsToItself(name)) use(name);
  } while (!rest.empty());
}

// All operators in registration order. Defined in operators/registration.cpp.
RegistrationTable registrationTable();

}  // namespace vel
