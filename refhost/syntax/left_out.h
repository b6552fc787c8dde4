// Constructs that the token stream leaves out, by the word that begins them. The words are no
// keywords: elsewhere they are names like any other.
#pragma once

#include <cstdint>
#include <string_view>

#include "refhost/messages.h"

namespace refhost {

struct LeftOut {
  enum class Extent : std::uint8_t {
    Word,
    Names,   // the word, and the names, dots and commas that follow
    Closer,  // to the word `closer`
    Unit,    // to the end of the unit
  };

  std::string_view opener;
  Extent extent;
  std::string_view closer;
  const MessageFormat* format;  // null: nothing is said
  const char* what;
};

// A type of the standard that no variable can have; a program may declare one of its name.
bool isLeftOutType(std::string_view name);

}  // namespace refhost
