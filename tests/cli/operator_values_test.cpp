// What functions of the standard compute, through plugin, compiler and runtime; those that are
// operators have their values in tests/execution.
#include <fmt/format.h>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

TEST_F(Velc, ComputesFunctionsOfTheStandard) {
  struct Row {
    const char* type;
    const char* expression;
    const char* value;
  };
  // clang-format off
  const Row rows[] = {
      {"STRING", "CONCAT(LEFT(s, 3), MID(s, 1, 2), RIGHT(IN := s, L := k))", "'ABCBDE'"},
      {"STRING", "CONCAT(LEFT(s, -1), RIGHT(s, -1), LEFT(s, 99), RIGHT(s, 99))", "'ABCDEABCDE'"},
      {"STRING", "CONCAT(MID(s, 9, 4), '|', MID(s, 1, 6), MID(s, 1, 0), MID(s, 0, 1))", "'DE|'"},
      {"STRING", "INSERT(INSERT(INSERT(s, 'x', 0), 'y', 6), 'z', 8)", "'xABCDEy'"},
      {"STRING", "CONCAT(DELETE(L := 2, P := 2, IN := s), DELETE(s, 99, 3), DELETE(s, 1, 6))", "'ADEABABCDE'"},
      {"STRING", "CONCAT(REPLACE(s, 'xyz', 1, 3), REPLACE(s, '-', -1, 1), REPLACE(s, '-', 9, 5))", "'ABxyzDE-ABCDEABCD-'"},
      {"STRING", "REPLACE(s, '-', 1, 0)", "'ABCDE'"},
      {"STRING[4]", "CONCAT(s, 'x')", "'ABCD'"},
      {"INT", "LEN(CONCAT(long, long)) + LEN(LEFT(MOVE(long), 120)) + LEN('$24')", "421"},
      {"INT", "FIND(s, 'DE') * 100 + FIND(s, 'DEF') * 10 + FIND(s, '')", "400"},
      {"WSTRING", "INSERT(CONCAT(w, w), RIGHT(w, 1), FIND(w, \"ö\"))", "\"äööäö\""},
      {"INT", "LEN(w) * 10 + FIND(w, \"äö\")", "21"},
      {"BOOL", "s < 'ABCE' AND s > 'ABCD' AND s <> 'abcde' AND '$FF' > s", "TRUE"},
      {"BOOL", "w = \"äö\" AND w > \"zz\" AND LEFT(w, 1) <= w", "TRUE"},
      {"LTIME", "SUB_LTIME(ADD_LTIME(LTIME#3s, LTIME#1s), LTIME#1ns)", "LTIME#3999999999ns"},
      {"TIME", "SUB_TIME(ADD_TIME(IN2 := T#1s, IN1 := T#2s), T#500ms)", "T#2500ms"},
      {"TOD", "SUB_TOD_TIME(ADD_TOD_TIME(TOD#23:00:00, T#2h), T#90m)", "TOD#23:30:00"},
      {"DT", "SUB_DT_TIME(ADD_DT_TIME(x, T#1d), T#1m)", "DT#2026-11-22-12:29:15"},
      {"TIME", "SUB_DT_DT(x, DT#2026-11-21-00:00:00)", "T#45015000ms"},
      {"TIME", "ADD(SUB_TOD_TOD(TOD#1:0:0, TOD#2:0:0), SUB_DATE_DATE(D#2026-11-21, D#2026-11-20))", "T#82800000ms"},
      {"DT", "CONCAT_DATE_TOD(D#2026-11-21, TOD#12:30:15)", "DT#2026-11-21-12:30:15"},
      {"DATE", "DATE_AND_TIME_TO_DATE(x)", "D#2026-11-21"},
      {"TOD", "DATE_AND_TIME_TO_TIME_OF_DAY(x)", "TOD#12:30:15"},
      {"DATE", "CONCAT_DATE(YEAR := 2024, MONTH := 2, DAY := 29)", "D#2024-02-29"},
      {"TOD", "CONCAT_TOD(23, 59, 58, 997)", "TOD#23:59:58.997"},
      {"INT", "DAY_OF_WEEK(D#2026-11-21)", "6"},
      {"LREAL", "ATAN2(0.0, -1.0) + ATAN2(-1.0, 0.0) * 2 + ATAN2(1.0, 1.0) + ATAN2(-1.0, -1.0)", "-1.5707963267948966"},
  };
  // clang-format on
  std::string declared;
  std::string statements;
  std::string expected;
  int number = 0;
  for (const auto& [type, expression, value] : rows) {
    declared += fmt::format("v{} : {};\n", ++number, type);
    statements += fmt::format("v{} := {};\n", number, expression);
    expected += fmt::format("v{} = {}\n", number, value);
  }
  const std::string inputs =
      "s : STRING := 'ABCDE'; k : INT := 2; w : WSTRING := \"äö\"; x : DT := "
      "DT#2026-11-21-12:30:15; long : STRING[200] := '";
  writeProgram("values.st", declared + inputs + std::string(150, 'x') + "';", statements);
  const Outcome outcome = velc("run values.st");
  EXPECT_EQ(expected, outcome.out.substr(0, expected.size())) << outcome.err;
}

TEST_F(Velc, EveryDaySplitsIntoItsParts) {
  std::string counters;
  for (const char* type : {"DINT", "LINT", "UDINT", "ULINT"}) {
    counters += fmt::format("u{0} : CTU_{0}; d{0} : CTD_{0}; ud{0} : CTUD_{0};\n", type);
  }
  writeProgram("days.st", counters + "n, i : DINT; d : DATE; y, m, day, hour, minute, s, ms : INT;",
               "FOR i := 0 TO 49709 DO d := UDINT_TO_DATE(DINT_TO_UDINT(i) * 86400);\n"
               "SPLIT_DATE(d, YEAR => y, MONTH => m, DAY => day);\n"
               "IF CONCAT_DATE(y, m, day) = d AND day <= 31 THEN n := n + 1; END_IF; END_FOR;\n"
               "SPLIT_TOD(TOD#12:30:15.25, hour => hour, MINUTE => minute, SECOND => s,\n"
               "MILLISECOND => ms);");
  EXPECT_EQ(
      "n = 49710\ni = 49710\nd = D#2106-02-06\ny = 2106\nm = 2\nday = 6\nhour = 12\n"
      "minute = 30\ns = 15\nms = 250\n",
      velc("run days.st").out);
}

TEST_F(Velc, CallsAreRecorded) {
  writeProgram(
      "calls.st", "k, i : INT; s : STRING; l : LREAL;",
      "i := MUX(k, i, 2);\nl := MUX(k, l, 2);\ns := TO_STRING(i);\ni := TO_INT(s);\ni := F();");
  write("f.st", "FUNCTION F : INT F := 1; END_FUNCTION");
  const Outcome outcome = velc("translate calls.st f.st --call-tree");
  std::string calls;
  for (std::size_t at = 0; (at = outcome.out.find("\"callee\": \"", at)) != std::string::npos;) {
    at += 11;
    calls += outcome.out.substr(at, outcome.out.find('"', at) - at) + " ";
  }
  EXPECT_EQ("MUX FC_MUX_INT MUX FC_MUX_LONGREAL INT_TO_STRING STRING_TO_INT F ", calls);
  EXPECT_NE(std::string::npos, outcome.out.find("\"caller\": \"p\"")) << outcome.out;
}

}  // namespace
}  // namespace velc
