#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "velc_fixture.h"

namespace velc {
namespace {

TEST_F(Velc, ListsTheOperatorsInOrderOfRegistration) {
  const std::string all = velc("operators").out;
  EXPECT_EQ(all.substr(0, 28), "IRDBIT\nIWRBIT\n_READIDIRECT\n_");
  EXPECT_NE(all.find("\nLREAL_TO_REAL\nLREAL_TO_TIME\n"), std::string::npos);
  EXPECT_NE(all.find("\nTO_DATE\nTO_DT\n"), std::string::npos);
  EXPECT_EQ(velc("operators to_bool Limit limit").out, "LIMIT\nTO_BOOL\n");

  EXPECT_EQ(velc("operators --long limit SQRT").out.substr(0, 67),
            "LIMIT              LimitOperator           selection           no\nS");
  EXPECT_EQ(velc("operators --long").out.find(" other "), std::string::npos);
  const auto json = nlohmann::json::parse(velc("operators --json INT_TO_REAL ABS").out);
  EXPECT_EQ(json[0]["name"], "ABS");
  EXPECT_EQ(json[0]["functionCall"], true);
  EXPECT_EQ(json[1]["class"], "ConvertOperator");
  EXPECT_EQ(json[1]["family"], "conversion");
  EXPECT_EQ(json[1]["functionCall"], false);
  EXPECT_EQ(json[1]["inputs"], nlohmann::json({"IN"}));
  const auto mux = nlohmann::json::parse(velc("operators --json MUX").out)[0];
  EXPECT_EQ(mux["inputs"], nlohmann::json({"K", "IN0"}));
  EXPECT_EQ(mux["extensible"], true);
}

TEST_F(Velc, ExplainsMessagesAndOperators) {
  const std::string text = velc("explain 0xc0040 int_to_real").out;
  EXPECT_EQ(text.rfind("## 0xC0040 Number of parameters\n", 0), 0U) << text;
  EXPECT_NE(text.find("in PRG 'LIMIT'; [0xC0040]\nlevel := LIMIT(0, level);\n"), std::string::npos);
  EXPECT_EQ(text.find("0xC0046"), std::string::npos) << "another section";
  EXPECT_NE(text.find("\n\n# Typed conversions\n"), std::string::npos);
}

TEST_F(Velc, TranslatesIntoAFileOrNothing) {
  writeProgram("p.st", "x, y : INT;", "y := LIMIT(0, x, 100); x := LIMIT(0, y, 9);");
  const std::string text = velc("translate p.st").out;
  EXPECT_NE(text.find("LIMIT((0), ("), std::string::npos);
  EXPECT_EQ(velc("translate p.st -o out.c").code, 0);
  EXPECT_EQ(read("out.c"), text);
  writeProgram("bad.st", "x : INT;", "x := LIMIT(1);");
  EXPECT_EQ(velc("translate p.st bad.st -o out.c").code, 1);
  EXPECT_EQ(velc("translate bad.st -o new.c").code, 1);
  EXPECT_EQ(velc("translate bad.st").out, "");
  EXPECT_EQ(read("out.c"), text);
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "new.c"));
}

}  // namespace
}  // namespace velc
