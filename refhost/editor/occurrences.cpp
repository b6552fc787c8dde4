#include "refhost/editor/occurrences.h"

#include <algorithm>

#include "refhost/editor/name_walk.h"

namespace refhost {

namespace {

bool isBefore(const Occurrence& a, const Occurrence& b) {
  const vel::TextLocation first = a.range.begin;
  const vel::TextLocation second = b.range.begin;
  return first.file() != second.file() ? first.file() < second.file()
                                       : first.offset() < second.offset();
}

std::uint32_t endOf(const Occurrence& occurrence) {
  return occurrence.range.begin.offset() + occurrence.range.length;
}

}  // namespace

Occurrences::Occurrences(const AnalysedProgram& program, const Symbols& symbols) {
  NameWalk(program, symbols, all_).run();
  std::stable_sort(all_.begin(), all_.end(), isBefore);
  // A node that the analysis has replaced may be reached twice.
  const auto overlaps = [](const Occurrence& a, const Occurrence& b) {
    return a.range.begin.file() == b.range.begin.file() && b.range.begin.offset() < endOf(a);
  };
  all_.erase(std::unique(all_.begin(), all_.end(), overlaps), all_.end());
}

const Occurrence* Occurrences::at(vel::TextLocation place) const {
  Occurrence key;
  key.range.begin = place;
  auto behind = std::upper_bound(all_.begin(), all_.end(), key, isBefore);
  if (behind == all_.begin()) return nullptr;
  --behind;
  const bool contains =
      behind->range.begin.file() == place.file() && place.offset() <= endOf(*behind);
  return contains ? &*behind : nullptr;
}

std::vector<const Occurrence*> Occurrences::of(SymbolId symbol) const {
  std::vector<const Occurrence*> result;
  for (const Occurrence& occurrence : all_) {
    if (occurrence.symbol == symbol) result.push_back(&occurrence);
  }
  return result;
}

}  // namespace refhost
