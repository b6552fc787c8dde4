#include "cli/shared_storage.h"

#include <algorithm>
#include <map>
#include <string>

namespace velc {

namespace {

using refhost::ProgramVariable;

struct Extent {
  std::uint64_t begin;
  std::uint64_t end;
  std::size_t number;
};

Extent extentOf(const ProgramVariable& place, std::size_t number) {
  const std::uint64_t bits =
      place.memoryBit.empty() ? static_cast<std::uint64_t>(place.byteSize) * 8 : 1;
  return {*place.firstBit, *place.firstBit + bits, number};
}

}  // namespace

std::vector<SharedStorage> sharedStorage(const std::vector<ProgramVariable>& places) {
  std::vector<SharedStorage> shared;
  std::map<std::string, std::size_t> known;
  std::vector<Extent> extents;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto [variable, isNew] = known.emplace(places[i].qualifiedName(), i);
    if (!isNew) {
      shared.push_back({variable->second, i});
    } else if (places[i].firstBit) {
      extents.push_back(extentOf(places[i], i));
    }
  }
  std::sort(extents.begin(), extents.end(),
            [](const Extent& a, const Extent& b) { return a.begin < b.begin; });
  std::vector<Extent> open;  // those that may reach beyond the begin of the next one
  for (const Extent& extent : extents) {
    const auto ended = [&extent](const Extent& other) { return other.end <= extent.begin; };
    open.erase(std::remove_if(open.begin(), open.end(), ended), open.end());
    for (const Extent& other : open) {
      shared.push_back({std::min(other.number, extent.number),
                        std::max(other.number, extent.number), extent.begin,
                        std::min(other.end, extent.end)});
    }
    open.push_back(extent);
  }
  return shared;
}

bool bitOf(const ProgramVariable& place, std::string_view bytes, std::uint64_t bit) {
  const std::uint64_t at = bit - *place.firstBit;
  return (static_cast<unsigned char>(bytes[at / 8]) >> (at % 8) & 1) != 0;
}

}  // namespace velc
