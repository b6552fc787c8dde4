#include "hostkit/elementary_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "host/ast_node_helper.h"

namespace hostkit {
namespace {

BasicDataType typeNamed(const std::string& name) { return elementaryType(name)->type; }

// The text of a source stands behind a comma.
TEST(Types, ConversionsAreRated) {
  const std::pair<int, const char*> ratings[] = {
      {0,
       "INT:=INT INT:=SINT INT:=USINT BYTE:=USINT LREAL:=UDINT REAL:=INT LREAL:=REAL LTIME:=TIME "
       "USINT:=SINT,5 SINT:=UINT,16#7F SINT:=UINT,INT#1_27 REAL:=LINT,3_000_000_000 REAL:=SINT,-5 "
       "ULINT:=LINT,18446744073709551615"},
      {-1,
       "REAL:=DINT REAL:=UDINT LREAL:=LINT LREAL:=ULINT REAL:=LREAL ULINT:=SINT USINT:=LINT "
       "SINT:=USINT INT:=UDINT WORD:=INT"},
      {-2,
       "SINT:=INT BYTE:=LWORD INT:=REAL LINT:=LREAL TIME:=LTIME TIME:=DINT BOOL:=USINT "
       "USINT:=BOOL STRING:=WSTRING WSTRING:=STRING DATE:=DT STRING:=INT INT:=REAL,1.0 SINT:=INT,x "
       "SINT:=INT,(1) SINT:=BOOL,BOOL#1 REAL:=TIME,T#1s BOOL:=SINT,1"},
      {-3, "USINT:=SINT,-5 SINT:=INT,300 SINT:=USINT,2#1000_0000"}};
  for (const auto& [rated, list] : ratings) {
    std::istringstream types(list);
    for (std::string type; types >> type;) {
      const std::size_t mark = type.find(":=");
      const std::size_t comma = std::min(type.find(','), type.size());
      const std::string source = type.substr(mark + 2, comma - mark - 2);
      EXPECT_EQ(rated, rateConversion(typeNamed(type.substr(0, mark)), typeNamed(source),
                                      comma < type.size() ? &type[comma + 1] : nullptr))
          << type;
    }
  }
  for (int type = -1; type <= 24; ++type) {
    const auto other = static_cast<BasicDataType>(type);
    EXPECT_EQ(0, rateConversion(BasicDataType::None, other, nullptr));
    EXPECT_EQ(0, rateConversion(other, BasicDataType::None, nullptr));
  }
}

// The first row of a number, which bit strings share.
TEST(Types, NumbersHaveANameACTypeAndASize) {
  const std::pair<int, const char*> rows[] = {
      {5, "USINT u8 1"},    {8, "ULINT u64 8"},   {13, "LTIME i64 8"}, {19, "WSTRING u16* 0"},
      {24, "INVALID u8 1"}, {17, "a pointer  0"}, {-1, "INVALID  0"},  {31, "INVALID  0"}};
  for (const auto& [number, expected] : rows) {
    const auto type = static_cast<BasicDataType>(number);
    EXPECT_EQ(expected, AstNodeHelper::basicDataTypeText(type) + " " +
                            AstNodeHelper::basicDataToCTypeText(type) + " " +
                            std::to_string(AstNodeHelper::getBasicDataTypeSize(nullptr, type)));
  }
  EXPECT_EQ(BasicDataType::DateAndTime, typeNamed("date_And_Time"));
  EXPECT_EQ(nullptr, elementaryType("INVALID"));
}

}  // namespace
}  // namespace hostkit
