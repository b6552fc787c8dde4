#include "operators/device/local_io.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>

#include "core/emission.h"
#include "host/internal_interface.h"
#include "host/project_settings.h"

namespace vel {
namespace {

constexpr std::size_t kTagLength = 2;

std::int32_t leadingInt(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(leadingNumber(text), Limits::min(), Limits::max()));
}

}  // namespace

bool LocalIoRange::contains(std::uint32_t address) const {
  return static_cast<std::uint32_t>(start) <= address && address < static_cast<std::uint32_t>(end);
}

bool parseLocalIoRanges(std::string_view text, LocalIoBounds& bounds) {
  constexpr std::size_t kNone = std::string_view::npos;
  const std::size_t inDash = text.find('-');
  if (inDash == kNone) return false;
  // If the dash is inside the tag, the start is the rest of the text after the tag.
  bounds.inStart = text.substr(kTagLength, inDash < kTagLength ? kNone : inDash - kTagLength);

  const std::size_t inStop = text.find(';', inDash + 1);
  if (inStop == kNone) return false;
  bounds.inEnd = text.substr(inDash + 1, inStop - inDash - 1);

  const std::size_t output = inStop + 1 + kTagLength;
  const std::size_t outDash = text.find('-', output);
  if (outDash == kNone) return false;
  bounds.outStart = text.substr(output, outDash - output);

  const std::size_t outStop = text.find(';', outDash + 1);
  if (outStop == kNone) return false;
  bounds.outEnd = text.substr(outDash + 1, outStop - outDash - 1);
  return true;
}

bool readLocalIoRanges(std::string_view text, LocalIoBounds& bounds) {
  try {
    return parseLocalIoRanges(text, bounds);
  } catch (const std::out_of_range&) {
    return false;
  }
}

LocalIoRanges projectLocalIo(InternalInterface* ii) {
  const ProjectSettings* settings = ii->projectSettings();
  if (settings == nullptr || settings->localIoAddress.empty()) return {};
  const std::string_view text = settings->localIoAddress;
  LocalIoBounds bounds;
  // A missing bound is 0, so that a faulty text shows by warnings for every address.
  readLocalIoRanges(text, bounds);
  return {{leadingInt(bounds.inStart), leadingInt(bounds.inEnd)},
          {leadingInt(bounds.outStart), leadingInt(bounds.outEnd)}};
}

std::string_view localIoOption(Generator* gen) {
  GenClanAPI* api = clanApi(gen);
  return api != nullptr ? api->optionText("localio.addr") : "";
}

std::int64_t leadingNumber(std::string_view text) {
  return std::strtoll(std::string(text).c_str(), nullptr, 10);
}

}  // namespace vel
