// The function blocks and functions of the standard.
#include <fmt/format.h>

#include <cstring>
#include <regex>
#include <vector>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

// Inputs and outputs over several scans, as lines of a timing diagram, one character for each.
struct Diagram {
  const char* block;
  const char* call;  // `$a` and `$b` are the lines of the inputs, `n` the scan from 1
  const char* a;
  const char* b;
  // What is traced: a BOOL output, and a count or time in steps of `unit`, empty for none.
  const char* output;
  const char* outputs;
  const char* amount;
  const char* amounts;
};

class FunctionBlocks : public Velc {
 protected:
  void expectDiagrams(const std::vector<Diagram>& rows, const char* options) const {
    std::string declared = "n : INT;\n";
    std::string body = "n := n + 1;\n";
    std::string expected = fmt::format("n = {}\n", std::strlen(rows[0].a));
    int i = 0;
    for (const Diagram& row : rows) {
      declared += fmt::format("f{0} : {1}; q{0}, v{0} : STRING;\n", ++i, row.block);
      std::string call = row.call;
      for (const auto& [input, line] : {std::pair("\\$a", row.a), {"\\$b", row.b}}) {
        call =
            std::regex_replace(call, std::regex(input), fmt::format("MID('{}', 1, n) = '1'", line));
      }
      body += fmt::format("f{0}({1}); q{0} := CONCAT(q{0}, SEL(f{0}.{2}, '0', '1'));\n", i, call,
                          row.output);
      if (*row.amount != 0) {
        body += fmt::format("v{0} := CONCAT(v{0}, MID('-0123456789', 1, DINT_TO_INT(", i);
        body += fmt::format(fmt::runtime(row.amount), fmt::format("f{}.", i)) + ") + 2));\n";
      }
      expected += fmt::format("q{0} = '{1}'\nv{0} = '{2}'\n", i, row.outputs, row.amounts);
    }
    writeProgram("blocks.st", declared, body);
    const Outcome outcome =
        velc(fmt::format("run blocks.st --scans {} {}", std::strlen(rows[0].a), options));
    EXPECT_EQ(expected, outcome.out) << outcome.err;
  }
};

constexpr const char* kSteps = "TIME_TO_DINT({}ET) / 10";
constexpr const char* kCount = "INT_TO_DINT({}CV)";

TEST_F(FunctionBlocks, Timers) {
  // clang-format off
  expectDiagrams({
      {"TON", "$a, T#30ms", "011011111100", "", "Q", "000000011100", kSteps, "001001233300"},
      {"TON", "IN := $a, PT := T#0ms", "011011111100", "", "Q", "011011111100", kSteps, "000000000000"},
      {"TON", "$a, T#-1d", "011011111100", "", "Q", "011011111100", kSteps, "000000000000"},
      // Between two scans the delay is over at the second.
      {"TON", "$a, T#25ms", "011011111100", "", "Q", "000000011100", "TIME_TO_DINT({}ET) / 5", "002002455500"},
      // PT grows while the time runs, and when it is over; it shrinks while it runs.
      {"TON", "$a, SEL(n > 4, T#20ms, T#40ms)", "001111111100", "", "Q", "000000111100", kSteps, "000123444400"},
      {"TON", "$a, SEL(n > 4, T#10ms, T#40ms)", "011111111100", "", "Q", "001111111100", kSteps, "001111111100"},
      {"TON", "$a, SEL(n > 5, T#90ms, T#20ms)", "011111111100", "", "Q", "000001111100", kSteps, "001232222200"},
      {"TOF", "$a, T#30ms", "011000101000", "", "Q", "011111111111", kSteps, "000012000012"},
      {"TOF", "$a, T#20ms", "011000000100", "", "Q", "011110000111", kSteps, "000012222001"},
      {"TOF", "$a, T#0ms", "011000000100", "", "Q", "011000000100", kSteps, "000000000000"},
      {"TP", "$a, T#30ms", "010000111110", "", "Q", "011100111000", kSteps, "001200012330"},
      // Nothing during the pulse counts, not even at its end.
      {"TP", "$a, T#30ms", "010110100110", "", "Q", "011100111000", kSteps, "001230012330"},
      {"TP", "$a, T#0ms", "010110101011", "", "Q", "000000000000", kSteps, "000000000000"},
  }, "");
  // clang-format on
}

TEST_F(FunctionBlocks, TimersAndClocksOfOtherCycles) {
  // The clock wraps at 49 days, a TIME beyond 24.
  expectDiagrams({{"TON", "$a, T#24d20h", "11110", "", "Q", "00110", "", ""},
                  {"TOF", "$a, T#24d20h", "10001", "", "Q", "11101", "", ""}},
                 "--cycle T#24d");
  expectDiagrams({{"RTC", "$a, DT#1970-01-01-00:00:01", "111101", "", "Q", "111101",
                   "UDINT_TO_DINT(DT_TO_UDINT({}CDT))", "112301"}},
                 "--cycle T#700ms");
  const Outcome refused = velc("run blocks.st --cycle T#-1s");
  EXPECT_EQ(2, refused.code);
  EXPECT_NE(std::string::npos, refused.err.find("T#-1s is not a TIME of 0 or more")) << refused.err;
}

TEST_F(FunctionBlocks, CountersEdgesAndBistables) {
  // clang-format off
  expectDiagrams({
      {"CTU", "CU := $a, R := $b, PV := 2", "010110101010", "000000000110", "Q", "000111111000", kCount, "011222334000"},
      {"CTD", "CD := $a, LD := $b, PV := 2", "001011010000", "010000000000", "Q", "100011111111", kCount, "0211000-----"},
      {"CTUD", "$a, $b, n = 11, n = 9, 3", "010101010000", "000001000101", "QU", "000000011000", kCount, "01122223320-"},
      {"CTUD", "CU := $a, LD := $b, PV := 32767", "001000000000", "010000000000", "QU", "011111111111", "INT_TO_DINT({}CV) / 32767", "011111111111"},
      {"CTUD_ULINT", "CD := $a, PV := 5", "010101000000", "", "QD", "111111111111", "ULINT_TO_DINT({}CV)", "000000000000"},
      {"SR", "S1 := $a, R := $b", "011000010000", "000010011000", "Q1", "011100010000", "", ""},
      {"RS", "S := $a, R1 := $b", "011000010000", "000010011000", "Q1", "011100000000", "", ""},
      {"R_TRIG", "$a", "011001000110", "", "Q", "010001000100", "", ""},
      {"F_TRIG", "$a", "011001000110", "", "Q", "100100100001", "", ""},
      {"SEMA", "$a, $b", "010100000100", "000000110000", "BUSY", "001111000011", "", ""},
  }, "");
  // clang-format on
}

TEST_F(FunctionBlocks, ACountStopsAtTheEndOfItsType) {
  writeProgram("count.st", "c : CTU; i : DINT; n : INT;",
               "FOR i := 1 TO 32770 DO c(CU := FALSE); c(CU := TRUE, CV => n); END_FOR;");
  EXPECT_EQ("i = 32771\nn = 32767\n", velc("run count.st").out);
}

// What functions of the standard compute, through plugin, compiler and runtime; operators, and
// functions of texts, have their values in tests/execution.

TEST_F(Velc, ComputesFunctionsOfTheStandard) {
  struct Row {
    const char* type;
    const char* expression;
    const char* value;
  };
  // clang-format off
  const Row rows[] = {
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
               "SPLIT_DATE(d, y, m, day);\n"
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
