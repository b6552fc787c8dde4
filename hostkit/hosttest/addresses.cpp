// Device addresses in both notations.
#include "host/device_memory.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

using vel::BasicDataType;
using vel::HeapAddress;

constexpr std::uint32_t kNone = 0xFFFFFFFF;

struct Row {
  int notation;  // as InternalInterface::addressNotation returns it
  const char* text;
  std::uint32_t unitSize;  // bytes; 0 for a bit
  BasicDataType type;
};

// Pairs of adjacent addresses.
const std::vector<Row>& addresses() {
  using T = BasicDataType;
  static const std::vector<Row> rows = {
      {0, "%IX0.0", 0, T::BitAddress}, {0, "%IX0.1", 0, T::BitAddress},
      {0, "%qx0.7", 0, T::BitAddress}, {0, "%QX1.0", 0, T::BitAddress},
      {0, "%MX2.3", 0, T::BitAddress}, {0, "%MX2.4", 0, T::BitAddress},
      {0, "%MB4", 1, T::USInt},        {0, "%MB5", 1, T::USInt},
      {0, "%mw10", 2, T::UInt},        {0, "%MW11", 2, T::UInt},
      {1, "X0", 0, T::BitAddress},     {1, "X1", 0, T::BitAddress},
      {1, "y6", 0, T::BitAddress},     {1, "Y7", 0, T::BitAddress},
      {1, "M10", 0, T::BitAddress},    {1, "M11", 0, T::BitAddress},
      {1, "D10", 2, T::UInt},          {1, "d11", 2, T::UInt},
  };
  return rows;
}

// Makes the host use a notation; false when the host does not have it.
bool use(HostUnderTest& host, int notation) {
  if (host.services().deviceMemory() == nullptr) return false;
  return host.setNotation(notation) || host.services().addressNotation() == notation;
}

// The rows of the notations that the host has.
std::vector<Row> usable(HostUnderTest& host) {
  std::vector<Row> rows;
  for (const Row& row : addresses()) {
    if (use(host, row.notation)) rows.push_back(row);
  }
  return rows;
}

bool parse(HostUnderTest& host, const Row& row, HeapAddress& out) {
  return use(host, row.notation) &&
         host.services().deviceMemory()->string2IecAddress(row.text, &out, false);
}

void parseAll(HostUnderTest& host, int notation) {
  if (!use(host, notation)) {
    GTEST_SKIP() << "the host has no device memory, or cannot use notation " << notation
                 << " (HostUnderTest::setNotation)";
  }
  Faults wrong;
  for (const Row& row : addresses()) {
    if (row.notation != notation) continue;
    HeapAddress address;
    wrong.addIf(!parse(host, row, address) || address.area == 0 || address.unitSize == kNone ||
                    address.position == kNone,
                row.text);
  }
  EXPECT_EQ(wrong.text(), "")
      << "DeviceMemory::string2IecAddress (host/device_memory.h) owes true for the addresses of "
         "the project's notation, in any letter case, and sets area, unitSize and position. The "
         "operators on device memory would refuse them with 0xC0221.";
}

void iecAddressesAreParsed(HostUnderTest& host) { parseAll(host, 0); }
void letterAddressesAreParsed(HostUnderTest& host) { parseAll(host, 1); }

void otherTextsAreNoAddresses(HostUnderTest& host) {
  Faults wrong;
  for (const char* const text : {"", "%", "%IX", "%IX0.", "%IXa.b", "%ZX0.0", "%IX0.0x", "5", "i",
                                 "speed", "LIMIT(0, i, 1)"}) {
    HeapAddress address;
    wrong.addIf(host.services().deviceMemory()->string2IecAddress(text, &address, false),
                "\"" + std::string(text) + "\"");
  }
  EXPECT_EQ(wrong.text(), "")
      << "DeviceMemory::string2IecAddress (host/device_memory.h) owes false for a text that is no "
         "device address. Operators would take a name for a place in memory.";
}

void failedParsesLeaveTheAddress(HostUnderTest& host) {
  Faults wrong;
  for (const char* const text : {"", "%IX", "%IX0.", "%ZX0.0", "speed", "5"}) {
    HeapAddress address;
    host.services().deviceMemory()->string2IecAddress(text, &address, false);
    wrong.addIf(address.area != 0 || address.unitSize != kNone || address.position != kNone ||
                    address.bitIndex != kNone || address.extra != 0,
                "\"" + std::string(text) + "\"");
  }
  EXPECT_EQ(wrong.text(), "")
      << "DeviceMemory::string2IecAddress (host/device_memory.h) leaves the HeapAddress untouched "
         "when it returns false. SIZEOF and ADR judge by the fields alone, and would take a name "
         "for a device address.";
}

void addressesTellTheirUnits(HostUnderTest& host) {
  Faults wrong;
  for (const Row& row : usable(host)) {
    HeapAddress address;
    if (!parse(host, row, address)) continue;
    const bool isBit = row.unitSize == 0;
    const bool fits = isBit ? address.unitSize == 1 : address.unitSize == row.unitSize;
    wrong.addIf(address.isBitMode() != isBit || (address.bitIndex != kNone) != isBit || !fits,
                row.text);
  }
  EXPECT_EQ(wrong.text(), "")
      << "HeapAddress (host/device_memory.h) owes the bytes of the unit in unitSize, 1 for a bit, "
         "and a bitIndex and isBitMode() for bits only. ZSET and ZRST would refuse sound zones, or "
         "fill a wrong number of units.";
}

// Collects the faults that `judge` finds in the pairs of adjacent addresses.
template <class Judge>
std::string faultsOfNeighbours(HostUnderTest& host, Judge judge) {
  Faults wrong;
  const std::vector<Row> rows = usable(host);
  for (std::size_t i = 0; i + 1 < rows.size(); i += 2) {
    HeapAddress first;
    HeapAddress second;
    if (!parse(host, rows[i], first) || !parse(host, rows[i + 1], second)) continue;
    wrong.addIf(!judge(rows[i], first, second),
                rows[i].text + std::string(" and ") + rows[i + 1].text);
  }
  return wrong.text();
}

void positionsOrderAddresses(HostUnderTest& host) {
  EXPECT_EQ(faultsOfNeighbours(host,
                               [](const Row&, const HeapAddress& first, const HeapAddress& second) {
                                 return first.position < second.position;
                               }),
            "")
      << "HeapAddress::position (host/device_memory.h) orders the addresses of an area. IZSET and "
         "IZRST would refuse a zone whose start comes before its end with 0xC0223.";
}

void placesFollowEachOther(HostUnderTest& host) {
  vel::DeviceMemory* const memory = host.services().deviceMemory();
  // For an operand that is no valid address, operators pass the empty address.
  static_cast<void>(memory->HeapAddress2HeapRawAddr(HeapAddress()));
  const auto follows = [memory](const Row& row, const HeapAddress& first,
                                const HeapAddress& second) {
    const std::uint32_t step = memory->HeapAddress2HeapRawAddr(second).address -
                               memory->HeapAddress2HeapRawAddr(first).address;
    return step == (row.unitSize == 0 ? 1 : row.unitSize);
  };
  EXPECT_EQ(faultsOfNeighbours(host, follows), "")
      << "DeviceMemory::HeapAddress2HeapRawAddr (host/device_memory.h) owes the number of a bit, "
         "or of the first byte of a larger unit. Zones would be filled in part, or beyond their "
         "end.";
}

void addressesHaveTheirTypes(HostUnderTest& host) {
  Faults wrong;
  for (const Row& row : usable(host)) {
    HeapAddress address;
    if (!parse(host, row, address)) continue;
    const BasicDataType type = host.services().deviceMemory()->iecAddressType(address);
    wrong.addIf(type != row.type, row.text + std::string(" is ") + std::to_string(number(type)));
  }
  EXPECT_EQ(wrong.text(), "")
      << "DeviceMemory::iecAddressType (host/device_memory.h) owes 24 (BasicDataType::BitAddress) "
         "for a bit, and the number of the bit string of a larger unit's size. SIZEOF of an "
         "address would give a wrong size.";
}

void bitsOfMemoryAreBool(HostUnderTest& host) {
  if (!use(host, 0)) GTEST_SKIP() << "the host has no IEC notation";
  Call call(host, "IRDBIT(%IX0.1, b)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  EXPECT_EQ(number(call.typeOf(0).type), number(BasicDataType::Bool))
      << "AstNodeHelper::dataType (host/ast_node_helper.h) owes BOOL (9) for a bit of device "
         "memory: "
         "24 is the answer of iecAddressType only. SEL, MUX, MEP, IRDBIT and IWRBIT would refuse "
         "it.";
}

void namesOfDevicesHaveTheirParts(HostUnderTest& host) {
  vel::DeviceMemory* const memory = host.services().deviceMemory();
  constexpr const char* kOwed =
      "DeviceMemory::parseComponent (host/device_memory.h) owes device, number and suffix of a "
      "device-letter name, and no suffix for any other address. ZSET and ZRST refuse a unit with "
      "a suffix, and device letters are told by the first part.";
  if (use(host, 1)) {
    const auto parts = [memory](const char* text) {
      const vel::JapanComponent component = memory->parseComponent(text);
      return component.device + "|" + component.number + "|" + component.suffix;
    };
    EXPECT_EQ(parts("D10.3"), "D|10|.3") << kOwed;
    EXPECT_EQ(parts("X0"), "X|0|") << kOwed;
  }
  EXPECT_EQ(memory->parseComponent("%MB4").suffix, "") << kOwed;
}

}  // namespace

Duties addressDuties() {
  return {{"IecAddressesAreParsed", iecAddressesAreParsed},
          {"LetterAddressesAreParsed", letterAddressesAreParsed},
          {"OtherTextsAreNoAddresses", otherTextsAreNoAddresses},
          {"FailedParsesLeaveTheAddress", failedParsesLeaveTheAddress},
          {"AddressesTellTheirUnits", addressesTellTheirUnits},
          {"PositionsOrderAddresses", positionsOrderAddresses},
          {"PlacesFollowEachOther", placesFollowEachOther},
          {"AddressesHaveTheirTypes", addressesHaveTheirTypes},
          {"BitsOfMemoryAreBool", bitsOfMemoryAreBool},
          {"NamesOfDevicesHaveTheirParts", namesOfDevicesHaveTheirParts}};
}

}  // namespace hosttest
