#include <nlohmann/json.hpp>
#include <regex>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

// The report on tests with these statements, each of which fails, without its places.
std::string failures(const Velc& /*fixture*/, const std::string& report) {
  std::string text = std::regex_replace(report, std::regex("  FAIL[^\n]*\n +a.st:[0-9:]+ "), "");
  return std::regex_replace(text, std::regex("\n +"), "; ");
}

TEST_F(Velc, ShowsTheValuesOfFailedAssertions) {
  const std::pair<const char*, const char*> rows[] = {
      {"ASSERT_EQ(i, 4, 'why')", "ASSERT_EQ(i, 4, 'why'): why; i = 5; 4"},
      {"ASSERT_EQ(16#10, w)", "ASSERT_EQ(16#10, w); 16#10; w = 16#F"},
      {"ASSERT_NEQ(i, i)", "ASSERT_NEQ(i, i); i = 5; i = 5"},
      {"ASSERT_GT(i, 5)", "ASSERT_GT(i, 5); i = 5; 5"},
      {"ASSERT_LT(i, u)", "ASSERT_LT(i, u); i = 5; u = 3"},
      {"ASSERT_GE(u, i)", "ASSERT_GE(u, i); u = 3; i = 5"},
      {"ASSERT_LE(i + 1, 5)", "ASSERT_LE(i + 1, 5); i + 1 = 6; 5"},
      {"ASSERT_TRUE(i = 4, CONCAT(s, '!'))", "ASSERT_TRUE(i = 4, CONCAT(s, '!')): abc!"},
      {"ASSERT_FALSE(1)", "ASSERT_FALSE(1)"},
      {"ASSERT_NEAR(r, 1.5, 0.25)", "ASSERT_NEAR(r, 1.5, 0.25); r = 2.0; 1.5; 0.25"},
      {"ASSERT_NEAR(r, nan, 5)", "ASSERT_NEAR(r, nan, 5); r = 2.0; nan = NaN; 5 = 5.0"},
      {"ASSERT_NEAR(t, LTIME#2s, T#1ms)",
       "ASSERT_NEAR(t, LTIME#2s, T#1ms); t = T#1500ms; LTIME#2s = LTIME#2000000000ns; T#1ms"},
      {"ASSERT_EQ(s, 'ab')", "ASSERT_EQ(s, 'ab'); s = 'abc'; 'ab'"},
      {"ASSERT_EQ(ws, \"x\")", "ASSERT_EQ(ws, \"x\"); ws = \"y\"; \"x\""},
      {"ASSERT_EQ(c, Red)", "ASSERT_EQ(c, Red); c = Green; Red"},
      {"ASSERT_EQ(b, 0)", "ASSERT_EQ(b, 0); b = TRUE; 0 = FALSE"},
      {"ASSERT_EQ(a, z)", "ASSERT_EQ(a, z); a[2, 3].y = 7.5; z[2, 3].y = 0.0"},
      {"ASSERT_EQ(a[1, 2].s, 'x')", "ASSERT_EQ(a[1, 2].s, 'x'); a[1, 2].s = ''; 'x'"},
      {"ASSERT_NEQ(p, p)",
       "ASSERT_NEQ(p, p); p = (x := 1, y := 0.0, s := ''); p = (x := 1, y := 0.0, s := '')"},
      {"ASSERT_EQ(ip, NULL)", "ASSERT_EQ(ip, NULL); ip = 16#1; NULL"},
      {"ASSERT_EQ(Next(), Next())", "ASSERT_EQ(Next(), Next()); Next() = 1; Next() = 2"},
      {"ASSERT_EQ(i.0, w.%X4)", "ASSERT_EQ(i.0, w.%X4); i.0 = TRUE; w.%X4 = FALSE"},
      {"ASSERT_EQ(%MB3,\n  (* blank *) 7)", "ASSERT_EQ(%MB3, (* blank *) 7); %MB3 = 16#0; 7 = 16#7"},
      {"ADVANCE_TIME(t - T#2s)", "ADVANCE_TIME of a negative time"},
  };
  std::string tests =
      "TYPE Color : (Red, Green); Pt : STRUCT x : INT; y : REAL; s : STRING[3]; END_STRUCT; "
      "END_TYPE VAR_GLOBAL n : INT; END_VAR FUNCTION Next : INT n := n + 1; Next := n; "
      "END_FUNCTION SETUP VAR i : INT := 5; u : UINT := 3; w : WORD := 16#F; r : REAL := 2.0; nan "
      ": REAL; t : TIME := T#1.5s; s : STRING := 'abc'; ws : WSTRING := \"y\"; c : Color := "
      "Green; b : BOOL := TRUE; a, z : ARRAY[1..2, 2..3] OF Pt; p : Pt := (x := 1); ip : POINTER "
      "TO INT; END_VAR a[2, 3].y := 7.5; nan := LN(-1.0); ip := ADR(%MB0); ip := 1; END_SETUP\n";
  std::string wanted = "a.st\n";
  for (const auto& [statement, report] : rows) {
    tests += std::string("TEST '") + "t' " + statement + "; END_TEST\n";
    wanted += std::string(report) + "\n";
  }
  write("a.st", tests);
  const Outcome outcome = velc("test a.st");
  EXPECT_EQ(outcome.code, 1) << outcome.err;
  EXPECT_EQ(failures(*this, outcome.out), wanted);
}

}  // namespace
}  // namespace velc
