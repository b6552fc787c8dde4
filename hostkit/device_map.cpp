#include "hostkit/device_map.h"

#include <array>
#include <charconv>

#include "hostkit/elementary_types.h"
#include "hostkit/folding.h"

namespace hostkit {
namespace {

using vel::HeapAddress;
using vel::HeapRawAddr;

constexpr std::uint32_t kNone = 0xFFFFFFFF;

struct IecArea {
  char letter;
  std::uint32_t number;
};
constexpr std::array<IecArea, 3> kIecAreas{{{'M', 1}, {'I', 2}, {'Q', 3}}};

struct Device {
  char letter;
  std::uint32_t number;
  bool words;
  // Start and end of the area, in sixteenths of Sizes::m. X and Y lie in the areas of the
  // inputs and outputs instead.
  std::uint32_t from;
  std::uint32_t to;
};
// clang-format off
constexpr std::array<Device, 8> kDevices{{
    {'M',  4, false,  0,  1},
    {'S',  5, false,  1,  2},
    {'B',  6, false,  2,  3},
    {'D',  7, true,   3, 11},
    {'R',  8, true,  11, 15},
    {'W',  9, true,  15, 16},
    {'X', 10, false,  0,  0},
    {'Y', 11, false,  0,  0},
}};
// clang-format on
constexpr std::uint32_t kInputs = 10;
constexpr std::uint32_t kOutputs = 11;

bool parseNumber(std::string_view text, std::uint64_t& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

std::size_t countLetters(std::string_view text) {
  std::size_t n = 0;
  while (n < text.size() && isLetter(text[n])) ++n;
  return n;
}

std::size_t countDigits(std::string_view text) {
  std::size_t n = 0;
  while (n < text.size() && text[n] >= '0' && text[n] <= '9') ++n;
  return n;
}

}  // namespace

DeviceMap::Area DeviceMap::area(std::uint32_t number) const {
  switch (number) {
    case 1:
      return {0, sizes_.m};
    case 2:
    case kInputs:
      return {sizes_.m, sizes_.i};
    case 3:
    case kOutputs:
      return {sizes_.m + sizes_.i, sizes_.q};
    default:
      break;
  }
  for (const Device& device : kDevices) {
    if (device.number != number) continue;
    // Rounded down to multiples of 8 bytes, so that every area starts aligned.
    const std::uint32_t start = sizes_.m / 16 * device.from & ~7U;
    return {start, (sizes_.m / 16 * device.to & ~7U) - start};
  }
  return {0, 0};
}

bool DeviceMap::place(std::uint32_t areaNumber, std::uint32_t unitSize, std::uint64_t index,
                      std::uint32_t bit, HeapAddress& out) const {
  const std::uint64_t size = area(areaNumber).size;
  if (index >= size / unitSize) return false;
  const auto firstBit = static_cast<std::uint32_t>(index * unitSize * 8);
  out = HeapAddress();
  out.area = areaNumber;
  out.unitSize = bit == kNone ? unitSize : 1;
  out.position = bit == kNone ? firstBit : firstBit + bit;
  out.bitIndex = bit;
  return true;
}

bool DeviceMap::parseIec(std::string_view text, HeapAddress& out) const {
  if (text.size() < 3 || text[0] != '%') return false;
  std::uint32_t areaNumber = 0;
  for (const IecArea& candidate : kIecAreas) {
    if (candidate.letter == toUpper(text[1])) areaNumber = candidate.number;
  }
  if (areaNumber == 0) return false;

  std::string_view rest = text.substr(2);
  std::uint32_t unitSize = 0;  // a bit
  switch (toUpper(rest[0])) {
    case 'X':
      rest.remove_prefix(1);
      break;
    case 'B':
      unitSize = 1;
      rest.remove_prefix(1);
      break;
    case 'W':
      unitSize = 2;
      rest.remove_prefix(1);
      break;
    case 'D':
      unitSize = 4;
      rest.remove_prefix(1);
      break;
    case 'L':
      unitSize = 8;
      rest.remove_prefix(1);
      break;
    default:
      break;
  }
  std::uint64_t index = 0;
  if (unitSize != 0)
    return parseNumber(rest, index) && place(areaNumber, unitSize, index, kNone, out);

  std::uint64_t bit = 0;
  const std::size_t dot = rest.find('.');
  if (dot == std::string_view::npos) {
    // The number counts bits from the start of the area.
    return parseNumber(rest, bit) &&
           place(areaNumber, 1, bit / 8, static_cast<std::uint32_t>(bit % 8), out);
  }
  return parseNumber(rest.substr(0, dot), index) && parseNumber(rest.substr(dot + 1), bit) &&
         bit < 8 && place(areaNumber, 1, index, static_cast<std::uint32_t>(bit), out);
}

bool DeviceMap::parseLetters(std::string_view text, HeapAddress& out) const {
  if (countLetters(text) != 1) return false;
  const std::size_t digits = countDigits(text.substr(1));
  std::uint64_t index = 0;
  if (!parseNumber(text.substr(1, digits), index)) return false;
  const std::string_view suffix = text.substr(1 + digits);
  for (const Device& device : kDevices) {
    if (device.letter != toUpper(text[0])) continue;
    if (!device.words) {
      return suffix.empty() &&
             place(device.number, 1, index / 8, static_cast<std::uint32_t>(index % 8), out);
    }
    if (suffix.empty()) return place(device.number, 2, index, kNone, out);
    std::uint64_t bit = 0;
    return suffix[0] == '.' && parseNumber(suffix.substr(1), bit) && bit < 16 &&
           place(device.number, 2, index, static_cast<std::uint32_t>(bit), out);
  }
  return false;
}

bool DeviceMap::parse(std::string_view text, HeapAddress& out) const {
  return !text.empty() && (text[0] == '%' ? parseIec(text, out) : parseLetters(text, out));
}

HeapRawAddr DeviceMap::raw(const HeapAddress& address) const {
  HeapRawAddr result;
  const std::uint32_t start = area(address.area).start;
  if (address.area == 0) {
    result.address = kNone;
  } else if (address.bitIndex != kNone) {
    result.address = start * 8 + address.position;
  } else {
    result.address = start + address.position / 8;
  }
  return result;
}

const char* addressTypeName(const HeapAddress& address) {
  if (address.isBitMode()) return "BOOL";
  switch (address.unitSize) {
    case 1:
      return "BYTE";
    case 2:
      return "WORD";
    case 4:
      return "DWORD";
    default:
      return "LWORD";
  }
}

std::string DeviceMap::text(const HeapAddress& address) const {
  const std::string place = std::to_string(raw(address).address);
  if (address.isBitMode()) return "gbit(" + place + ")";
  return std::string("VEL_MEM(") + elementaryType(addressTypeName(address))->cType + ", " + place +
         ")";
}

HeapRawAddr DeviceMap::allocateState() {
  HeapRawAddr result;
  result.address = byteSize();
  ++stateBytes_;
  return result;
}

}  // namespace hostkit
