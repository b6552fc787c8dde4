// A topological sort of declarations that name each other. It does not recurse, since chains of
// declarations may be long.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "refhost/services/unit_symbol.h"

namespace refhost {

// Calls `finish(item, needs)` for each direct and indirect dependency of `root`, and for `root`
// last. `needsOf` returns pointers to an item's dependencies. An Item has a member `progress`,
// which is Open while its dependencies are visited. `cycle` is called with the items of each cycle,
// in which each item needs the next and the last needs the first.
template <typename Item, typename NeedsOf, typename Cycle, typename Finish>
void visitDependencies(Item& root, const NeedsOf& needsOf, const Cycle& cycle,
                       const Finish& finish) {
  if (root.progress != Progress::Waiting) return;
  struct Step {
    Item* item;
    std::vector<Item*> needs;
    std::size_t next = 0;
  };
  std::vector<Step> path;
  const auto open = [&](Item& item) {
    item.progress = Progress::Open;
    path.push_back({&item, needsOf(item)});
  };
  open(root);
  while (!path.empty()) {
    Step& last = path.back();
    if (last.next < last.needs.size()) {
      Item& needed = *last.needs[last.next++];
      if (needed.progress == Progress::Waiting) {
        open(needed);
      } else if (needed.progress == Progress::Open) {
        const auto first = std::find_if(path.begin(), path.end(),
                                        [&](const Step& step) { return step.item == &needed; });
        // It was opened by an enclosing visit.
        if (first == path.end()) continue;
        std::vector<Item*> items;
        for (auto at = first; at != path.end(); ++at) items.push_back(at->item);
        cycle(items);
      }
      continue;
    }
    const Step done = std::move(last);
    path.pop_back();
    finish(*done.item, done.needs);
    done.item->progress = Progress::Done;
  }
}

}  // namespace refhost
