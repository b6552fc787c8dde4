#include "cli/value_format.h"

#include <gtest/gtest.h>

#include <string_view>

// The runtime prints all other values; run_test.cpp has one of every type.
namespace velc {
namespace {

std::string wide(std::u16string_view units) {
  return valueText(vel::BasicDataType::WString, "WSTRING",
                   {reinterpret_cast<const char*>(units.data()), units.size() * sizeof units[0]});
}

TEST(ValueFormat, StringsEscapeWhatTheirLiteralsNeedEscaped) {
  const auto narrow = [](std::string_view bytes) {
    return valueText(vel::BasicDataType::String, "STRING", bytes);
  };
  EXPECT_EQ(narrow(""), "''");
  EXPECT_EQ(narrow(std::string_view("ab\0cd", 5)), "'ab'");
  EXPECT_EQ(narrow("it's $5 \"x\""), "'it$'s $$5 \"x\"'");
  EXPECT_EQ(narrow("\t\n\f\r\x01\x7F"), "'$T$L$P$R$01$7F'");
  EXPECT_EQ(narrow("\xC3\xA4\xE2\x82\xAC"), "'\xC3\xA4\xE2\x82\xAC'");
  EXPECT_EQ(narrow("\xE4 \xC3"), "'$E4 $C3'");
  EXPECT_EQ(narrow("\xED\x9F\xBF\xEE\x80\x80"), "'\xED\x9F\xBF\xEE\x80\x80'");
  EXPECT_EQ(narrow("\xC0\x80\xED\xA0\x80"), "'$C0$80$ED$A0$80'");

  EXPECT_EQ(wide(u"it's \"x\""), "\"it's $\"x$\"\"");
  EXPECT_EQ(wide(u"\u00E4\u20AC\U0001F600\x01"), "\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80$0001\"");
  constexpr char16_t halves[] = {0xD83D, 'x', 0xDE00, 0xD7FF, 0xD800, 0xDFFF, 0xE000, 0xDFFF, 0};
  EXPECT_EQ(wide(halves), "\"$D83Dx$DE00\xED\x9F\xBF\xF0\x90\x8F\xBF\xEE\x80\x80$DFFF\"");
}

}  // namespace
}  // namespace velc
