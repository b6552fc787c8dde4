// Renaming a symbol in all files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/program_view.h"

namespace refhost {

struct Renaming {
  std::string refusal;          // why it is not possible, in words for the user; empty if it is
  std::vector<TextEdit> edits;  // by file and offset; none after a refusal
};

// What would be renamed at the place: its range and its name as it stands there. The length is 0,
// and `refusal` says why, if nothing can be.
struct Renameable {
  std::string refusal;
  SourceRange range;
  std::string name;
};

Renameable renameableAt(const ProgramView& view, vel::TextLocation place);

// Refused if the program would mean something else then: if the name is taken, or if it would hide
// another symbol from a place that names that, or be hidden by another.
Renaming renamed(const ProgramView& view, vel::TextLocation place, std::string_view name);

}  // namespace refhost
