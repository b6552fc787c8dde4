#include "hostkit/device_map.h"

#include <algorithm>
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

struct IecUnit {
  char letter;
  std::uint32_t size;  // in bytes; 0 for a bit
};
constexpr std::array<IecUnit, 5> kIecUnits{{{'X', 0}, {'B', 1}, {'W', 2}, {'D', 4}, {'L', 8}}};

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

struct Number {
  std::string_view text;
  std::uint64_t value = 0;
};

// The numbers between the dots, none if one of them is missing or there are too many. Higher ones
// than any memory has are cut, so that sums of them do not wrap.
template <std::size_t N>
std::size_t splitNumbers(std::string_view text, std::array<Number, N>& parts) {
  constexpr std::uint64_t kHighest = std::uint64_t{1} << 40;
  for (std::size_t count = 0; count < N;) {
    const std::size_t dot = text.find('.');
    Number& part = parts[count++];
    part.text = text.substr(0, dot);
    if (!parseNumber(part.text, part.value)) return 0;
    part.value = std::min(part.value, kHighest);
    if (dot == std::string_view::npos) return count;
    text.remove_prefix(dot + 1);
  }
  return 0;
}

bool isBelow(const Number& number, std::uint64_t limit, DeviceMap::Fault& fault) {
  if (number.value < limit) return true;
  fault.number = number.text;
  fault.limit = limit;
  return false;
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

bool DeviceMap::parseIec(std::string_view text, HeapAddress& out, Fault& fault) const {
  if (text.size() < 3 || text[0] != '%') return false;
  std::uint32_t areaNumber = 0;
  for (const IecArea& candidate : kIecAreas) {
    if (candidate.letter == toUpper(text[1])) areaNumber = candidate.number;
  }
  if (areaNumber == 0) return false;
  for (const IecUnit& unit : kIecUnits) {
    if (unit.letter != toUpper(text[2])) continue;
    return placeIec(areaNumber, unit.size, text.substr(3), out, fault);
  }
  return placeIec(areaNumber, 0, text.substr(2), out, fault);
}

// `unitSize` is 0 for a bit.
bool DeviceMap::placeIec(std::uint32_t areaNumber, std::uint32_t unitSize, std::string_view numbers,
                         HeapAddress& out, Fault& fault) const {
  std::array<Number, 5> parts;
  std::size_t count = splitNumbers(numbers, parts);
  std::uint32_t bit = kNone;
  if (unitSize == 0) {
    unitSize = 1;
    Number& last = parts[count == 0 ? 0 : count - 1];
    // A single number counts bits from the start of the area.
    if (count > 1 && !isBelow(last, 8, fault)) return false;
    bit = static_cast<std::uint32_t>(last.value % 8);
    if (count == 1) last.value /= 8;
    if (count > 1) --count;
  }
  // From the unit to what contains it; the first number may be any.
  constexpr std::array<std::uint32_t, 3> kLimits{kModuleBytes, kModulesOfRack, kRacksOfBus};
  if (count == 0 || count > kLimits.size() + 1) return false;
  std::uint64_t index = 0;
  std::uint64_t units = 1;
  for (std::size_t level = 0; level < count; ++level) {
    const Number& part = parts[count - 1 - level];
    const std::uint32_t limit =
        level == 0 ? kModuleBytes / unitSize : kLimits[std::min(level, kLimits.size() - 1)];
    if (level + 1 < count && !isBelow(part, limit, fault)) return false;
    index += part.value * units;
    units *= limit;
  }
  if (place(areaNumber, unitSize, index, bit, out)) return true;
  fault.byte = index * unitSize;
  fault.areaSize = area(areaNumber).size;
  return false;
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
  Fault fault;
  return parse(text, out, fault);
}

bool DeviceMap::parse(std::string_view text, HeapAddress& out, Fault& fault) const {
  return !text.empty() && (text[0] == '%' ? parseIec(text, out, fault) : parseLetters(text, out));
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

HeapRawAddr DeviceMap::allocateState(std::uint32_t bytes, std::uint32_t alignment) {
  HeapRawAddr result;
  result.address = (byteSize() + alignment - 1) / alignment * alignment;
  stateBytes_ += result.address + bytes - byteSize();
  return result;
}

}  // namespace hostkit
