#include "refhost/services/memory.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

constexpr std::uint32_t kNoBit = 0xFFFFFFFF;

TEST(Memory, AddressesHaveTheirPlace) {
  struct Row {
    const char* text;
    std::uint32_t unitSize;
    std::uint32_t bitIndex;
    std::uint32_t raw;
    int type;
  };
  constexpr std::uint32_t kInputs = 16384;
  constexpr std::uint32_t kOutputs = 17408;
  const Row rows[] = {
      {"%MX0.0", 1, 0, 0, 24},
      {"%mx2.7", 1, 7, 23, 24},
      {"%M9", 1, 1, 9, 24},
      {"%IX0.3", 1, 3, kInputs * 8 + 3, 24},
      {"%QX1023.7", 1, 7, kOutputs * 8 + 8191, 24},
      {"%MB5", 1, kNoBit, 5, 5},
      {"%MW2", 2, kNoBit, 4, 6},
      {"%QD1", 4, kNoBit, kOutputs + 4, 7},
      {"%ML2047", 8, kNoBit, 16376, 8},
      {"X3", 1, 3, kInputs * 8 + 3, 24},
      {"y8", 1, 0, kOutputs * 8 + 8, 24},
      {"M0", 1, 0, 0, 24},
      {"D0", 2, kNoBit, 3072, 6},
      {"D10.3", 1, 3, (3072 + 20) * 8 + 3, 24},
      {"D10.15", 1, 15, (3072 + 20) * 8 + 15, 24},
  };
  Memory memory{Memory::Sizes()};
  for (const Row& row : rows) {
    vel::HeapAddress address;
    ASSERT_TRUE(memory.string2IecAddress(row.text, &address, false)) << row.text;
    EXPECT_NE(0U, address.area) << row.text;
    EXPECT_EQ(row.unitSize, address.unitSize) << row.text;
    EXPECT_EQ(row.bitIndex, address.bitIndex) << row.text;
    EXPECT_EQ(row.bitIndex != kNoBit, address.isBitMode()) << row.text;
    EXPECT_EQ(row.raw, memory.HeapAddress2HeapRawAddr(address).address) << row.text;
    EXPECT_EQ(row.type, static_cast<int>(memory.iecAddressType(address))) << row.text;
  }
}

TEST(Memory, OtherTextsLeaveTheAddressUntouched) {
  Memory memory{Memory::Sizes()};
  for (const char* const text : {"",
                                 "%",
                                 "%M",
                                 "%MX",
                                 "%MX0.8",
                                 "%MX16384.0",
                                 "%MW8192",
                                 "%QX1024.0",
                                 "%ZX0.0",
                                 "%MW1.2",
                                 "%MX0.0x",
                                 "%MX-1.0",
                                 "X",
                                 "X8192",
                                 "D4096",
                                 "D0.16",
                                 "D0.",
                                 "X1.2",
                                 "MW2",
                                 "x",
                                 "5",
                                 "%MX99999999999999999999.0",
                                 "M99999999999999999999"}) {
    vel::HeapAddress address;
    address.position = 77;
    EXPECT_FALSE(memory.string2IecAddress(text, &address, false)) << text;
    EXPECT_EQ(77U, address.position) << text;
  }
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
