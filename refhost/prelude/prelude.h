// The units of the standard that are written in Structured Text: function blocks, and
// functions of times and dates.
#pragma once

#include "hostkit/folding.h"
#include "refhost/syntax/source.h"
#include "refhost/syntax/tree.h"

namespace refhost {

class Prelude {
 public:
  // Its text becomes the last of `sources`, its units nodes of `tree`.
  Prelude(SourceManager& sources, Tree& tree) : sources_(sources), tree_(tree) {}

  // The declaration of the unit of this name; null when there is none. The text is
  // parsed when it is first asked.
  Unit* unit(std::string_view name);

 private:
  void parse();

  SourceManager& sources_;
  Tree& tree_;
  bool parsed_ = false;
  FoldedMap<Unit*> units_;
};

}  // namespace refhost
