// Definitions, references and highlights.
#pragma once

#include <optional>
#include <vector>

#include "refhost/editor/program_view.h"

namespace refhost {

// The name in the declaration of what stands at the place; nothing for what the language declares.
std::optional<SourceRange> definitionAt(const ProgramView& view, vel::TextLocation place);

// The declaration of its type: of a variable, member or value the type that its declaration names,
// of an array or pointer that of the elements or the target. The specification itself if that has
// no name; nothing for elementary types.
std::optional<SourceRange> typeDefinitionAt(const ProgramView& view, vel::TextLocation place);

// All places in all files where it is named, in order.
std::vector<SourceRange> referencesAt(const ProgramView& view, vel::TextLocation place,
                                      bool withDeclaration);

struct Highlight {
  SourceRange range;
  bool writes = false;
};

// Those in the file of the place.
std::vector<Highlight> highlightsAt(const ProgramView& view, vel::TextLocation place);

}  // namespace refhost
