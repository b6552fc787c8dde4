// The standard's function blocks and functions that are written in Structured Text.
#pragma once

#include <string_view>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/diagnostics.h"
#include "refhost/syntax/source.h"
#include "refhost/syntax/tree.h"

namespace refhost {

class Spelling;

struct PreludeUnit {
  std::string_view name;
  bool isBlock;  // a function block, no function
};

std::string_view preludeText();
// All units of the prelude. Its text is not parsed for them.
std::vector<PreludeUnit> preludeUnits();

class Prelude {
 public:
  // The text is appended to `sources`, and its units become nodes of `tree`. No warning of it is
  // added to `messages`.
  Prelude(SourceManager& sources, Tree& tree, Diagnostics& messages)
      : sources_(sources), tree_(tree), messages_(messages) {}

  // The declaration of the unit; null when there is none. The text is parsed when it is first
  // needed.
  Unit* unit(std::string_view name);
  // Offers the names of all function blocks.
  void offerBlocks(Spelling& spelling);

 private:
  void parse();

  SourceManager& sources_;
  Tree& tree_;
  Diagnostics& messages_;
  bool parsed_ = false;
  FoldedMap<Unit*> units_;
};

}  // namespace refhost
