#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include "velrt.h"

namespace {

// Arithmetic, and what texts hold, are proven by tests/execution.

TEST(IntegerBits, AreThoseOfTheWidth) {
  for (const i64 n : {i64{-1}, i64{8}, i64{64}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(vel_bit(UINT64_MAX, 8, n), 0) << n;
    EXPECT_EQ(vel_with_bit(5, 8, n, 1), 5u) << n;
    EXPECT_EQ(vel_with_bit(5, 8, n, 0), 5u) << n;
  }
  EXPECT_EQ(vel_with_bit(5, 8, 7, 256), 0x85u);
  u8 bytes[2] = {0, 0xF0};
  const vel_bit_param param = {bytes, 12};
  setBitOfParam(&param, 11, 1);
  setBitOfParam(&param, 12, 0);
  EXPECT_EQ(bytes[1], 0xF8);
  EXPECT_EQ(getBitOfParam(&param, 12), 0);
}

class DeviceMemory : public testing::Test {
 protected:
  void SetUp() override { std::memset(_m, 0, sizeof _m); }
};

TEST_F(DeviceMemory, NothingOutsideIsReadOrWritten) {
  const u32 end = VEL_MEMORY_BYTES;
  sbit(end * 8 - 1, 1);
  EXPECT_EQ(gbit(end * 8 - 1), 1);
  sbit(end * 8, 1);
  EXPECT_EQ(gbit(end * 8), 0);
  EXPECT_EQ(gbit(UINT32_MAX), 0);

  VEL_MEM(u32, end - 4) = 0x89ABCDEF;
  for (const u32 offset : {end - 3, end, end + 1, UINT32_MAX - 1}) {
    VEL_MEM(u32, offset) = 0xFFFFFFFF;
    const u32 outside = VEL_MEM(u32, offset);
    EXPECT_EQ(outside, 0u) << offset;
  }
  EXPECT_EQ(_m[end - 1], 0x89);
}

TEST_F(DeviceMemory, ZonesAreFilledToTheBit) {
  constexpr u32 kBits = VEL_MEMORY_BYTES * 8;
  std::mt19937 random(1);
  const auto upTo60 = [&random] { return static_cast<u32>(random() % 60); };
  for (int i = 0; i < 2000; ++i) {
    // Near both ends, where the zone may be partly or wholly outside.
    const u32 a = (i % 2 == 0 ? 0 : kBits - 30) + upTo60();
    const u32 n = i % 16 == 0 ? UINT32_MAX - upTo60() : upTo60();
    const bool set = i % 4 < 2;
    std::memset(_m, set ? 0 : 0xFF, sizeof _m);
    mset(a, n, 1, set ? 0xFF : 0);
    for (u32 bit = 0; bit < kBits; bit += bit == 300 ? kBits - 600 : 1) {
      ASSERT_EQ(gbit(bit) != 0, (bit >= a && bit < u64{a} + n) == set) << a << ' ' << n;
    }
  }
}

TEST_F(DeviceMemory, ZonesOfBytesTakeTheValue) {
  mset(2, 2, 0, 0xFF);
  mset(VEL_MEMORY_BYTES - 1, UINT32_MAX, 0, 0x5A);
  mset(VEL_MEMORY_BYTES, 1, 0, 1);
  mset(UINT32_MAX, UINT32_MAX, 0, 1);
  const u32 around = VEL_MEM(u32, 1);
  EXPECT_EQ(around, 0xFFFF00u);
  EXPECT_EQ(_m[VEL_MEMORY_BYTES - 1], 0x5A);
}

TEST(Platform, DoesNothingUntilItIsFilledIn) {
  static u32 refreshed = 0;
  __platform_api.UPDATEINPUT(1, 2);
  __platform_api.UPDATEOUTPUT(3, 4);
  __platform_api.UPDATEOUTPUT = [](u32 offset, u32 count) { refreshed = offset * 100 + count; };
  __platform_api.UPDATEOUTPUT(12, 4);
  EXPECT_EQ(refreshed, 1204u);
}

const u16* units(const char16_t* text) { return reinterpret_cast<const u16*>(text); }
std::u16string text(const u16* units) { return reinterpret_cast<const char16_t*>(units); }

TEST(StringSet, AllowsOverlap) {
  char buffer[8] = "abcdef";
  vel_string_set(buffer + 1, 7, buffer);
  EXPECT_STREQ(buffer, "aabcdef");
  u16 wide[5] = {'a', 'b', 'c', 0, 0};
  vel_wstring_set(wide + 1, 4, wide);
  EXPECT_EQ(text(wide), u"aabc");
}

TEST(StringCompare, GoesByUnsignedCodeUnits) {
  struct Row {
    const char *a, *b;
    int sign;
  };
  for (const Row& row :
       {Row{"", "", 0}, Row{"b", "ab", 1}, Row{"a", "ab", -1}, Row{"\xC3", "a", 1}}) {
    EXPECT_EQ(std::clamp(vel_string_compare(row.a, row.b), -1, 1), row.sign) << row.a << row.b;
  }
  EXPECT_LT(vel_wstring_compare(units(u"a"), units(u"\uFFFF")), 0);
  EXPECT_GT(vel_wstring_compare(units(u"ab"), units(u"a")), 0);
  EXPECT_EQ(vel_wstring_compare(units(u"aä"), units(u"aä")), 0);
}

}  // namespace
