#include "hostkit/device_map.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <sstream>

namespace refhost {
namespace {

// The unit's size and bit, its place in bits or bytes, and the number of its type.
std::string describe(Memory& memory, const std::string& text) {
  vel::HeapAddress address;
  if (!memory.string2IecAddress(text, &address, false) || address.area == 0) return "none";
  const std::string bit = address.isBitMode() ? std::to_string(address.bitIndex) : "-";
  EXPECT_EQ(address.isBitMode(), address.bitIndex != 0xFFFFFFFF) << text;
  return fmt::format("{}.{} {} {}", address.unitSize, bit,
                     memory.HeapAddress2HeapRawAddr(address).address,
                     static_cast<int>(memory.iecAddressType(address)));
}

// Markers have bytes 0 to 16383, inputs and outputs 1024 each behind them; D begins at 3072.
TEST(Memory, AddressesHaveTheirPlace) {
  const char* const rows[][2] = {
      {"%MX0.0", "1.0 0 24"},      {"%mx2.7", "1.7 23 24"},        {"%M9", "1.1 9 24"},
      {"%IX0.3", "1.3 131075 24"}, {"%QX1023.7", "1.7 147455 24"}, {"%MB5", "1.- 5 5"},
      {"%MW2", "2.- 4 6"},         {"%QD1", "4.- 17412 7"},        {"%ML2047", "8.- 16376 8"},
      {"X3", "1.3 131075 24"},     {"y8", "1.0 139272 24"},        {"M0", "1.0 0 24"},
      {"D0", "2.- 3072 6"},        {"D10.3", "1.3 24739 24"},      {"D10.15", "1.15 24751 24"}};
  Memory memory{Memory::Sizes()};
  for (const auto& [text, expected] : rows) EXPECT_EQ(expected, describe(memory, text)) << text;
}

TEST(Memory, OtherTextsLeaveTheAddressUntouched) {
  Memory memory{Memory::Sizes()};
  std::istringstream texts(
      "% %M %MX %MX0.8 %MX16384.0 %MW8192 %QX1024.0 %ZX0.0 %MW1.2 %MX0.0x %MX-1.0 X X8192 D4096 "
      "D0.16 D0. X1.2 MW2 x 5 %MX99999999999999999999.0 M99999999999999999999");
  std::string text;
  do {
    vel::HeapAddress address;
    address.position = 77;
    EXPECT_FALSE(memory.string2IecAddress(text, &address, false)) << text;
    EXPECT_EQ(77U, address.position) << text;
  } while (texts >> text);
  const vel::HeapAddress empty;
  EXPECT_EQ(0xFFFFFFFF, memory.HeapAddress2HeapRawAddr(empty).address);
}

TEST(Memory, DeviceNamesAreSplit) {
  Memory memory{Memory::Sizes()};
  const vel::JapanComponent bit = memory.parseComponent("d10.3");
  EXPECT_EQ("d", bit.device);
  EXPECT_EQ("10", bit.number);
  EXPECT_EQ(".3", bit.suffix);
  EXPECT_EQ("", memory.parseComponent("%IX0.1").device);
  EXPECT_EQ("", memory.parseComponent("X7").suffix);
}

}  // namespace
}  // namespace refhost
