// Declarations that name each other, each after those that it names, without recursion: chains
// of declarations may be long.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "refhost/services/progress.h"

namespace refhost {

// Calls `finish(item, needs)` for everything that `root` needs, directly or not, and for `root`
// last. An Item has a member `progress`, which is Open while what it needs is visited. `needsOf`
// gives pointers to what an item needs; `circle` gets those on a circle, each of which needs the
// next and the last the first, and visits them no further.
template <typename Item, typename NeedsOf, typename Circle, typename Finish>
void visitDependencies(Item& root, const NeedsOf& needsOf, const Circle& circle,
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
        // Opened by a visit that has not ended yet.
        if (first == path.end()) continue;
        std::vector<Item*> items;
        for (auto at = first; at != path.end(); ++at) items.push_back(at->item);
        circle(items);
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
