#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "velrt.h"

namespace {

const u16* units(const char16_t* text) { return reinterpret_cast<const u16*>(text); }

std::u16string text(const u16* units) {
  std::u16string result;
  while (*units != 0) result += static_cast<char16_t>(*units++);
  return result;
}

TEST(StringSet, CutsWhatDoesNotFit) {
  char target[6] = "#####";
  vel_string_set(target, 4, "abcdef");
  EXPECT_STREQ(target, "abc");
  EXPECT_EQ(target[4], '#');
  vel_string_set(target, 4, "xyz");
  EXPECT_STREQ(target, "xyz");
  vel_string_set(target, 1, "q");
  EXPECT_STREQ(target, "");
  vel_string_set(target, 0, "q");
  EXPECT_EQ(target[0], 0);

  u16 wide[4] = {1, 2, 3, 4};
  vel_wstring_set(wide, 3, units(u"äöü"));
  EXPECT_EQ(text(wide), u"äö");
  EXPECT_EQ(wide[3], 4);
  vel_wstring_set(wide, 0, units(u"x"));
  EXPECT_EQ(text(wide), u"äö");
}

TEST(StringSet, AllowsOverlap) {
  char buffer[8] = "abcdef";
  vel_string_set(buffer + 1, 7, buffer);
  EXPECT_STREQ(buffer, "aabcdef");
  vel_string_set(buffer, 8, buffer + 2);
  EXPECT_STREQ(buffer, "bcdef");

  u16 wide[5] = {'a', 'b', 'c', 0, 0};
  vel_wstring_set(wide + 1, 4, wide);
  EXPECT_EQ(text(wide), u"aabc");
}

TEST(StringCompare, GoesByUnsignedCodeUnits) {
  struct Row {
    const char *a, *b;
    int sign;
  };
  for (const Row& row : {Row{"", "", 0}, Row{"a", "b", -1}, Row{"b", "ab", 1}, Row{"a", "ab", -1},
                         Row{"\xC3", "a", 1}}) {
    EXPECT_EQ(std::clamp(vel_string_compare(row.a, row.b), -1, 1), row.sign) << row.a << row.b;
    EXPECT_EQ(std::clamp(vel_string_compare(row.b, row.a), -1, 1), -row.sign) << row.b << row.a;
  }
  EXPECT_LT(vel_wstring_compare(units(u"a"), units(u"\uFFFF")), 0);
  EXPECT_GT(vel_wstring_compare(units(u"ab"), units(u"a")), 0);
  EXPECT_EQ(vel_wstring_compare(units(u"aä"), units(u"aä")), 0);
}

}  // namespace
