// A keyword and its token, for tables of words that are looked up apart from the scanner.
#pragma once

#include <string_view>

namespace refhost {

struct Keyword {
  std::string_view name;
  int kind;
};

}  // namespace refhost
