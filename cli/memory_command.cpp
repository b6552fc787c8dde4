#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "hostkit/device_map.h"

namespace velc {

namespace {

using Addresses = std::vector<std::string>;
using hostkit::DeviceMap;

// First bit in device memory, and the one behind the last.
struct BitRange {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

BitRange bitsOf(const DeviceMap& map, const vel::HeapAddress& address) {
  const std::uint32_t place = map.raw(address).address;
  if (address.isBitMode()) return {place, place + 1};
  return {place * 8, (place + address.unitSize) * 8};
}

// More than device memory can have, to tell addresses outside of it from other texts.
constexpr DeviceMap::Sizes kLargest{1u << 28, 1u << 28, 1u << 28};

std::optional<vel::HeapAddress> parsed(const DeviceMap& map, const std::string& text) {
  vel::HeapAddress address;
  if (!map.parse(text, address)) return std::nullopt;
  return address;
}

// The areas of a notation, one in each row. `unit` is the beginning of the addresses of their
// smallest units.
std::string areaTable(const DeviceMap& map, std::initializer_list<const char*> units) {
  std::string text =
      fmt::format("{:<6}{:<20}{:<16}{}\n", "Area", "Addresses", "Bytes of _m", "Bits of _m");
  for (const std::string unit : units) {
    const auto first = parsed(map, unit + '0');
    if (!first) continue;  // in small memories not all devices have one
    const std::uint32_t size = map.areaSize(*first);
    const std::uint32_t begin = bitsOf(map, *first).begin / 8;
    const std::uint32_t unitCount = first->isBitMode() ? size * 8 : size / first->unitSize;
    text += fmt::format("{:<6}{:<20}{:<16}{}\n", unit.substr(0, unit[0] == '%' ? 2 : 1),
                        fmt::format("{}0..{}{}", unit, unit, unitCount - 1),
                        fmt::format("{}..{}", begin, begin + size - 1),
                        fmt::format("{}..{}", begin * 8, (begin + size) * 8 - 1));
  }
  return text;
}

// The smallest range that has all of the addresses of an area, as a half of the option
// "localio.addr". `letter` is that of the area in the notation of the project.
class LocalRange {
 public:
  LocalRange(char letter, std::uint32_t areaBegin)
      : letter_(letter), bits_{areaBegin * 8, areaBegin * 8} {}

  void add(BitRange bits) {
    const bool isFirst = bits_.end == bits_.begin;
    bits_.begin = isFirst ? bits.begin : std::min(bits_.begin, bits.begin);
    bits_.end = isFirst ? bits.end : std::max(bits_.end, bits.end);
  }
  std::string text() const { return fmt::format("{}:{}-{};", letter_, bits_.begin, bits_.end); }

 private:
  char letter_;
  BitRange bits_;  // empty, at the begin of the area, until an address is added
};

vel::HeapAddress requireAddress(const DeviceMap& map, bool letters, const std::string& text) {
  const bool known = parsed(DeviceMap(kLargest), text).has_value();
  if (known && letters == (text[0] == '%')) {
    throw Failure(
        fmt::format("'{}' is an address of --notation {}", text, letters ? "iec" : "letters"));
  }
  const auto address = parsed(map, text);
  if (address) return *address;
  throw Failure(fmt::format(
      "'{}' {}", text,
      known ? "is outside of its area; 'velc memory' shows the areas" : "is no device address"));
}

std::string localIoText(const DeviceMap& map, bool letters, const Addresses& addresses) {
  const std::uint32_t inputsBegin = map.sizes().m;
  const std::uint32_t outputsBegin = inputsBegin + map.sizes().i;
  LocalRange inputs(letters ? 'X' : 'I', inputsBegin);
  LocalRange outputs(letters ? 'Y' : 'Q', outputsBegin);
  for (const std::string& text : addresses) {
    const BitRange bits = bitsOf(map, requireAddress(map, letters, text));
    if (bits.begin / 8 < inputsBegin) {
      throw Failure(fmt::format("'{}' is neither an input nor an output", text));
    }
    (bits.begin / 8 < outputsBegin ? inputs : outputs).add(bits);
  }
  return inputs.text() + outputs.text() + '\n';
}

int showMemory(const CommonOptions& common, const Addresses& addresses) {
  const DeviceMap map({common.memory.markers, common.memory.inputs, common.memory.outputs});
  const bool letters = common.notation == refhost::Notation::Letters;
  if (!addresses.empty()) {
    writeStandardOutput(localIoText(map, letters, addresses));
  } else if (letters) {
    writeStandardOutput(areaTable(map, {"M", "S", "B", "D", "R", "W", "X", "Y"}));
  } else {
    writeStandardOutput(areaTable(map, {"%MB", "%IB", "%QB"}));
  }
  return kSuccess;
}

}  // namespace

void addMemoryCommand(CommandLine& line) {
  Command command =
      line.addCommand("memory", "Show where device addresses lie, and texts for --localio");
  const auto addresses = std::make_shared<Addresses>();
  command.option("ADDRESS", *addresses,
                 "Inputs and outputs, for which to print the text for --localio: the smallest "
                 "ranges that have them all");
  line.useProject(command);
  line.setAction(command, addresses, showMemory);
}

}  // namespace velc
