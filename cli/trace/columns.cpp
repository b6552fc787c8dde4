#include "cli/trace/columns.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "cli/failure.h"

namespace velc {

namespace {

using refhost::ProgramVariable;
using refhost::ValueShape;

constexpr std::size_t kMostColumns = 100'000;

// The number of elementary values; no more than one above kMostColumns.
std::size_t elementaryCount(const ValueShape& shape) {
  std::size_t count = 0;
  if (shape.element != nullptr) {
    const std::size_t one = elementaryCount(*shape.element);
    const auto elements = static_cast<std::size_t>(shape.count);
    count = one == 0 || elements > kMostColumns / one ? kMostColumns + 1 : one * elements;
  } else if (shape.isStructure) {
    for (const ValueShape::Member& member : shape.members) {
      count += elementaryCount(*member.shape);
      if (count > kMostColumns) break;
    }
  } else {
    count = 1;
  }
  return std::min(count, kMostColumns + 1);
}

}  // namespace

TracedPlaces tracedPlaces(const Places& places, const std::vector<std::string>& names) {
  TracedPlaces traced;
  std::set<std::string> known;
  std::size_t count = 0;
  for (const std::string& name : names) {
    // The command line leaves no more than one source to the words behind `--trace`.
    if (name.size() > 3 && name.substr(name.size() - 3) == ".st" && std::filesystem::exists(name)) {
      throw Failure(fmt::format("--trace: '{}' is a file; give the files before --trace", name));
    }
    for (ProgramVariable& place : places.matching("--trace", name)) {
      count += elementaryCount(*place.shape);
      if (count > kMostColumns) {
        throw Failure(fmt::format("--trace: '{}' and those before it have more than {} values",
                                  places.displayName(place), kMostColumns));
      }
      std::vector<ProgramVariable> parts = elementaryParts(place);
      const std::size_t all = parts.size();
      const auto isKnown = [&known](const ProgramVariable& part) {
        return !known.insert(part.qualifiedName()).second;
      };
      parts.erase(std::remove_if(parts.begin(), parts.end(), isKnown), parts.end());
      count -= all - parts.size();
      if (parts.size() == all) parts.assign(1, std::move(place));
      for (ProgramVariable& part : parts) traced.places.push_back(std::move(part));
    }
  }
  for (const ProgramVariable& place : traced.places) {
    for (const ProgramVariable& part : elementaryParts(place)) {
      const bool address = part.type == vel::BasicDataType::Pointer && part.name != place.name;
      if (!address) {
        traced.columns.push_back(
            {places.displayName(part), part.program, part.name, part.shape, traced.recordSize});
      }
      traced.recordSize += static_cast<std::size_t>(part.byteSize);
    }
  }
  return traced;
}

}  // namespace velc
