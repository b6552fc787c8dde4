// What is known about the symbol at a place.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "refhost/editor/program_view.h"

namespace refhost {

// Texts are empty for what there is not.
struct Hover {
  SourceRange range;        // of the name or word at the place
  std::string declaration;  // in Structured Text, as it stands: a variable, a type, or the head of
                            // a unit with its parameters
  std::string comment;      // beside or above the declaration, without its marks
  std::string type;         // the name of the type of a variable, a member or a value
  std::string value;        // of a constant or a value of an enumeration
  std::string address;      // at which the variable is declared
  std::optional<std::uint64_t> bytes;  // the size of the variable in C
  // What `velc explain` tells more about: an operator, a standard function or block, an elementary
  // type or a keyword, in capitals. There is not always a page.
  std::string topic;
};

// Nothing between words.
std::optional<Hover> hoverAt(const ProgramView& view, vel::TextLocation place);

// The declaration of a symbol as a hover shows it; empty for a symbol without one.
std::string declarationText(const ProgramView& view, SymbolId id);
// The comment beside or above it.
std::string commentText(const ProgramView& view, SymbolId id);

}  // namespace refhost
