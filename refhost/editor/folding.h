// Parts of a file that an editor can fold.
#pragma once

#include <cstdint>
#include <vector>

#include "refhost/editor/program_view.h"

namespace refhost {

struct FoldingRange {
  enum class Kind : std::uint8_t { Code, Comment, Region };

  std::uint32_t firstLine;  // from 1; stays visible
  std::uint32_t lastLine;   // greater than firstLine; the last one that is hidden
  Kind kind;
};

// Units, sections of declarations, types, statements and their branches, elements of a CASE,
// comments, comments in consecutive lines, and the lines from {region} to {endregion}; by first
// line. Each spans more than one line. The line of an END_ stays visible.
std::vector<FoldingRange> foldingRangesOf(const ProgramView& view, std::uint32_t file);

}  // namespace refhost
