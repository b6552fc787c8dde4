// A program as the analysis has left it, for the parts of the editor's view.
#pragma once

#include <cstdint>
#include <vector>

#include "refhost/services/services.h"
#include "refhost/syntax/source.h"
#include "refhost/syntax/tree.h"

namespace refhost {

// Valid until the session restarts. The analysis has finished, with errors or without.
struct AnalysedProgram {
  // True of a file that the user can open. The text of the prelude is none.
  bool isOpenable(std::uint32_t file) const { return file < broken.size(); }

  const SourceManager& sources;
  const Tree& tree;
  const Services& services;
  std::vector<bool> broken;  // of each file that was loaded: it has syntax errors
};

}  // namespace refhost
