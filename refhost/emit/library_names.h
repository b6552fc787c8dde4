// The names that a header must avoid, since C and C++ files include it beside others.
#pragma once

#include <string_view>
#include <unordered_set>

namespace refhost {

class LibraryNames {
 public:
  LibraryNames();

  // True for keywords of C++ and for macros that have a meaning wherever they stand.
  bool anywhere(std::string_view name) const;
  // True for what C libraries and C++ declare outside functions, and for macros with parameters.
  bool atFileScope(std::string_view name) const { return declared_.count(name) != 0; }

 private:
  std::unordered_set<std::string_view> everywhere_;
  std::unordered_set<std::string_view> declared_;
};

}  // namespace refhost
