#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "velrt.h"

namespace {

const u16* units(const char16_t* text) { return reinterpret_cast<const u16*>(text); }
std::u16string text(const u16* units) { return reinterpret_cast<const char16_t*>(units); }

TEST(StringSet, CutsWhatDoesNotFit) {
  char target[6] = "#####";
  vel_string_set(target, 4, "abcdef");
  EXPECT_EQ(std::string(target, 5), std::string("abc\0#", 5));
  vel_string_set(target, 1, "q");
  vel_string_set(target, 0, "q");
  EXPECT_STREQ(target, "");

  u16 wide[4] = {1, 2, 3, 4};
  vel_wstring_set(wide, 3, units(u"äöü"));
  vel_wstring_set(wide, 0, units(u"x"));
  EXPECT_EQ(text(wide), u"äö");
  EXPECT_EQ(wide[3], 4);
}

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
