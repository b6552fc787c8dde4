#include "refhost/services/types.h"

#include <gtest/gtest.h>

#include <string>

namespace refhost {
namespace {

BasicDataType typeNamed(const std::string& name) { return elementaryType(name)->type; }

TEST(Types, ConversionsAreRated) {
  struct Row {
    const char* target;
    const char* source;
    const char* text;
    int rated;
  };
  const Row rows[] = {
      {"INT", "INT", nullptr, 0},
      {"INT", "SINT", nullptr, 0},
      {"INT", "USINT", nullptr, 0},
      {"BYTE", "USINT", nullptr, 0},
      {"LREAL", "UDINT", nullptr, 0},
      {"REAL", "INT", nullptr, 0},
      {"LREAL", "REAL", nullptr, 0},
      {"LTIME", "TIME", nullptr, 0},
      {"REAL", "DINT", nullptr, -1},
      {"REAL", "UDINT", nullptr, -1},
      {"LREAL", "LINT", nullptr, -1},
      {"LREAL", "ULINT", nullptr, -1},
      {"REAL", "LREAL", nullptr, -1},
      {"ULINT", "SINT", nullptr, -1},
      {"USINT", "LINT", nullptr, -1},
      {"SINT", "USINT", nullptr, -1},
      {"INT", "UDINT", nullptr, -1},
      {"WORD", "INT", nullptr, -1},
      {"SINT", "INT", nullptr, -2},
      {"BYTE", "LWORD", nullptr, -2},
      {"INT", "REAL", nullptr, -2},
      {"LINT", "LREAL", nullptr, -2},
      {"TIME", "LTIME", nullptr, -2},
      {"TIME", "DINT", nullptr, -2},
      {"BOOL", "USINT", nullptr, -2},
      {"USINT", "BOOL", nullptr, -2},
      {"STRING", "WSTRING", nullptr, -2},
      {"WSTRING", "STRING", nullptr, -2},
      {"DATE", "DT", nullptr, -2},
      {"STRING", "INT", nullptr, -2},
      {"USINT", "SINT", "5", 0},
      {"USINT", "SINT", "-5", -3},
      {"SINT", "INT", "300", -3},
      {"SINT", "UINT", "16#7F", 0},
      {"SINT", "UINT", "INT#1_27", 0},
      {"SINT", "USINT", "2#1000_0000", -3},
      {"REAL", "LINT", "3_000_000_000", 0},
      {"INT", "REAL", "1.0", -2},
      {"SINT", "INT", "x", -2},
      {"BOOL", "SINT", "1", -2},
      {"ULINT", "LINT", "18446744073709551615", 0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.rated, rateConversion(typeNamed(row.target), typeNamed(row.source), row.text))
        << row.target << " := " << row.source << " " << (row.text != nullptr ? row.text : "");
  }
  for (int type = -1; type <= 24; ++type) {
    const auto other = static_cast<BasicDataType>(type);
    EXPECT_EQ(0, rateConversion(BasicDataType::None, other, nullptr));
    EXPECT_EQ(0, rateConversion(other, BasicDataType::None, nullptr));
  }
}

TEST(Types, NumbersMeetInTheTypeThatHoldsBoth) {
  const char* const rows[][3] = {
      {"SINT", "INT", "INT"},     {"USINT", "INT", "INT"},    {"USINT", "SINT", "INT"},
      {"UINT", "INT", "DINT"},    {"UDINT", "SINT", "LINT"},  {"ULINT", "SINT", "LINT"},
      {"UDINT", "LINT", "LINT"},  {"UINT", "UDINT", "UDINT"}, {"DINT", "REAL", "REAL"},
      {"LINT", "LREAL", "LREAL"}, {"REAL", "LREAL", "LREAL"}, {"USINT", "LINT", "LINT"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(typeNamed(row[2]), commonNumber(typeNamed(row[0]), typeNamed(row[1]))) << row[0];
    EXPECT_EQ(typeNamed(row[2]), commonNumber(typeNamed(row[1]), typeNamed(row[0]))) << row[0];
  }
  EXPECT_EQ(BasicDataType::None, commonNumber(BasicDataType::Bool, BasicDataType::Int));
}

}  // namespace
}  // namespace refhost
