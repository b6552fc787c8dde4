// Build tool: prints the names that the registration table stands for, in its order,
// as C++ string literals. The registry itself keeps them sorted.
#include <cstdio>

#include "core/registration.h"

int main() {
  for (const vel::Registration& row : vel::registrationTable()) {
    std::string_view words = row.words;
    do {
      const std::string_view word = words.substr(0, words.find(' '));
      words.remove_prefix(word.size() < words.size() ? word.size() + 1 : words.size());
      std::string name(row.pattern);
      if (const auto star = name.find('*'); star != std::string::npos) name.replace(star, 1, word);
      std::printf("\"%s\",\n", name.c_str());
    } while (!words.empty());
  }
}
