#include <nlohmann/json.hpp>
#include <regex>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

// A text report without the places in it, each test in one line.
std::string brief(const std::string& report) {
  const std::string text = std::regex_replace(report, std::regex("\\w+\\.st:[0-9:]+ "), "");
  return std::regex_replace(text, std::regex("\n   +"), "; ");
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
      {"ASSERT_NEAR(d, D#2024-01-03, T#23h)",
       "ASSERT_NEAR(d, D#2024-01-03, T#23h); d = D#2024-01-02; D#2024-01-03; T#23h = "
       "T#82800000ms"},
      {"ASSERT_NEAR(n, 9_007_199_254_740_992, 1); ASSERT_NEAR(n, 9_007_199_254_740_992, 0)",
       "ASSERT_NEAR(n, 9_007_199_254_740_992, 0); n = 9007199254740993; 9_007_199_254_740_992 = "
       "9007199254740992; 0"},
      {"ASSERT_NEAR(r / 20, 0.1, 0); ASSERT_NEAR(r, 2, -1)",
       "ASSERT_NEAR(r, 2, -1); r = 2.0; 2 = 2.0; -1 = -1.0"},
      {"ASSERT_EQ(LREAL#0.1, r / 20)",
       "ASSERT_EQ(LREAL#0.1, r / 20); LREAL#0.1 = 0.1; r / 20 = 0.10000000149011612"},
      {"ASSERT_NEQ(lw, LINT#-1)", "ASSERT_NEQ(lw, LINT#-1); lw = -1; LINT#-1 = -1"},
      {"ASSERT_NEQ(long, long)",
       "ASSERT_NEQ(long, long); long = [1, 2, 1, 2,... (450 characters); long = [1, 2, 1, 2,... "
       "(450 characters)"},
      {"ASSERT_EQ(s, 'ab')", "ASSERT_EQ(s, 'ab'); s = 'abc'; 'ab'"},
      {R"(ASSERT_EQ(ws, "x"))", R"(ASSERT_EQ(ws, "x"); ws = "y"; "x")"},
      {"ASSERT_EQ(c, Red)", "ASSERT_EQ(c, Red); c = Green; Red"},
      {"ASSERT_EQ(b, 0)", "ASSERT_EQ(b, 0); b = TRUE; 0 = FALSE"},
      {"ASSERT_EQ(a, z)", "ASSERT_EQ(a, z); a[2, 3].y = 7.5; z[2, 3].y = 0.0"},
      {"ASSERT_EQ(a[1, 2].s, 'x')", "ASSERT_EQ(a[1, 2].s, 'x'); a[1, 2].s = ''; 'x'"},
      {"ASSERT_NEQ(p, p)",
       "ASSERT_NEQ(p, p); p = (x := 1, y := 0.0, s := ''); p = (x := 1, y := 0.0, s := '')"},
      {"ASSERT_EQ(ip, NULL)", "ASSERT_EQ(ip, NULL); ip = 16#1; NULL"},
      {"ASSERT_EQ(Next(), Next())", "ASSERT_EQ(Next(), Next()); Next() = 1; Next() = 2"},
      {"ASSERT_EQ(i.0, w.%X4)", "ASSERT_EQ(i.0, w.%X4); i.0 = TRUE; w.%X4 = FALSE"},
      {"ASSERT_EQ(%MB3,\n(* a (* 'b *) *) // c\n7 /* d */)",
       "ASSERT_EQ(%MB3, 7); %MB3 = 16#0; 7 = 16#7"},
      {"ADVANCE_TIME(t - T#2s)", "ADVANCE_TIME of less than 0 ns or more than 292 years"},
  };
  std::string tests =
      "TYPE Color : (Red, Green); Pt : STRUCT x : INT; y : REAL; s : STRING[3]; END_STRUCT; "
      "END_TYPE VAR_GLOBAL n : INT; END_VAR FUNCTION Next : INT n := n + 1; Next := n; "
      "END_FUNCTION SETUP VAR i : INT := 5; u : UINT := 3; w : WORD := 16#F; r : REAL := 2.0; nan "
      ": REAL; t : TIME := T#1.5s; s : STRING := 'abc'; ws : WSTRING := \"y\"; c : Color := "
      "Green; b : BOOL := TRUE; a, z : ARRAY[1..2, 2..3] OF Pt; p : Pt := (x := 1); ip : POINTER "
      "TO INT; d : DATE := D#2024-01-02; n : LINT := 9007199254740993; lw : LWORD := NOT "
      "LWORD#0; long : ARRAY[1..150] OF INT := [75(1, 2)]; END_VAR a[2, 3].y := 7.5; nan := "
      "LN(-1.0); ip := "
      "ADR(%MB0); ip := 1; END_SETUP\n";
  std::string wanted = "a.st\n";
  int number = 0;
  for (const auto& [statement, report] : rows) {
    const std::string name = std::to_string(++number);
    tests += "TEST '" + name + "' " + statement + "; END_TEST\n";
    wanted += "  FAIL  " + name + "; " + report + "\n";
  }
  wanted += std::to_string(number) + " of " + std::to_string(number) + " tests failed\n";
  write("a.st", tests);
  for (const char* const compiler : {"gcc", "clang"}) {
    const Outcome outcome = velc(std::string("test a.st --compiler ") + compiler);
    EXPECT_EQ(outcome.code, 1) << outcome.err;
    EXPECT_EQ(std::regex_replace(brief(outcome.out), std::regex("(1, 2, )+"), "1, 2, "), wanted);
  }
}

TEST_F(Velc, RunsEachTestByItself) {
  write("plant.st",
        "VAR_GLOBAL made : INT := 1; END_VAR FUNCTION Halved : INT VAR_INPUT a, b : INT; END_VAR "
        "Halved := a / b; END_FUNCTION\nFUNCTION Deep : INT VAR_INPUT a : INT; END_VAR Deep := "
        "Deep(a + 1) + 1; END_FUNCTION PROGRAM Gate VAR CONSTANT k : INT := 7; END_VAR VAR open AT "
        "%QX0.1 : BOOL; last AT %MB8 : BYTE; t : TON; runs : INT; END_VAR VAR_INPUT key : BOOL; "
        "END_VAR VAR_OUTPUT done : BOOL; END_VAR t(IN := key AND MEP(key) OR t.IN, PT := T#30ms); "
        "done := t.Q; open := done; runs := runs + 1; IF runs > k THEN last := 5; END_IF "
        "END_PROGRAM FUNCTION_BLOCK Valve VAR_OUTPUT opened : INT; END_VAR VAR key AT %I* : BOOL; "
        "open AT %Q* : BOOL := TRUE; level AT %I* : ARRAY[1..2] OF LREAL; END_VAR open := key AND "
        "level[2] > 1; IF open THEN opened := opened + 1; END_IF END_FUNCTION_BLOCK\n");
  write(
      "a.st",
      "SETUP VAR CONSTANT size : INT := 2; END_VAR VAR g : Gate; v : ARRAY[1..size] OF Valve; r : "
      "ARRAY[1..size] OF REAL; "
      "END_VAR made := made + 1; RETURN; made := 100; END_SETUP\n"
      "TEST 'program' VAR own : Gate; END_VAR g(key := TRUE); ADVANCE_TIME(T#29ms); g(); "
      "ASSERT_FALSE(g.done); ADVANCE_TIME(1_000_000); g(); ASSERT_TRUE(g.done AND %QX0.1); "
      "ASSERT_EQ(g.runs, 3); ASSERT_EQ(own.runs, 0); own(key := FALSE, done => g.key); "
      "ASSERT_FALSE(g.key); g.runs := g.k; g(); ASSERT_EQ(g.last, 5); made := 50; END_TEST\n"
      "TEST 'anew' ASSERT_EQ(made, 2); ASSERT_EQ(g.runs, 0); ASSERT_EQ(%MB8, 0); ASSERT_EQ(TIME(), "
      "T#0ms); r[size] := 1; END_TEST\n"
      "TEST 'places' VAR own : Valve; END_VAR own.key := TRUE; own.level[2] := 3; v[1].level[2] := "
      "4; ASSERT_TRUE(v[2].open); v[1].opened := 7; own(); v[1](); ASSERT_TRUE(own.open); "
      "ASSERT_FALSE(v[1].open); ASSERT_EQ(own.opened, 1); ASSERT_EQ(v[1].opened, 7); END_TEST\n"
      "TEST 'returns' RETURN; ASSERT_TRUE(FALSE); END_TEST\n"
      "TEST 'loop' WHILE TRUE DO made := 1; END_WHILE END_TEST\n"
      "TEST 'pointer' VAR p : POINTER TO INT; END_VAR p^ := 1; END_TEST\n"
      "TEST 'stack' ASSERT_EQ(Deep(1), 1); END_TEST\n"
      "TEST 'by zero' ASSERT_EQ(Halved(1, 0), 0); END_TEST\n"
      "TEST 'real by zero' r[1] := 1 / r[2]; END_TEST\n"
      "TEST 'zero by zero' r[1] := r[2] / r[2]; END_TEST\n"
      "TEST 'cleanup' ASSERT_EQ(made, 3); END_TEST\n"
      "TEARDOWN ASSERT_EQ(made, 2, 'behind'); END_TEARDOWN\n");
  write("b.st", "TEST 'anew' ASSERT_EQ(made, 1); END_TEST SETUP ASSERT_LT(made, 1); END_SETUP\n");
  write("c.st", "TEST 'late' ; END_TEST TEARDOWN WHILE TRUE DO ; END_WHILE END_TEARDOWN\n");
  const Outcome outcome = velc("test plant.st a.st b.st c.st --timeout 0.5 -j 3");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(
      brief(outcome.out),
      "a.st\n  FAIL  program; ASSERT_EQ(made, 2, 'behind'): behind (in TEARDOWN); made = 50; 2\n"
      "  ok    anew\n  ok    places\n  ok    returns\n  FAIL  loop; did not end within 0.5 s "
      "(--timeout)\n"
      "  FAIL  pointer; crashed with signal 11 (Segmentation fault)\n"
      "  FAIL  stack; crashed with signal 11 (Segmentation fault), perhaps by a recursion without "
      "end, in FUNCTION Deep, called at a.st:8\n"
      "  ok    by zero\n  ok    real by zero\n  ok    zero by zero\n  FAIL  cleanup; "
      "ASSERT_EQ(made, 3); made = 2; 3\n"
      "b.st\n  FAIL  anew; ASSERT_LT(made, 1) (in SETUP); made = 1; 1\nc.st\n  FAIL  late; did not "
      "end within 0.5 s (--timeout) (in TEARDOWN)\n7 of 13 tests failed\n");
  EXPECT_EQ(brief(velc("test plant.st a.st --strict --filter zero").out),
            "a.st\n  FAIL  by zero; division by zero in FUNCTION Halved, called at a.st:9\n"
            "  FAIL  real by zero; division by zero\n  FAIL  zero by zero; invalid operation, such "
            "as 0.0 / 0.0\n3 of 3 tests failed\n");
}

TEST_F(Velc, ReportsTestsInFormsThatOthersRead) {
  write("a.st",
        "TEST 'fine' ; END_TEST TEST \"<b>&#\" ASSERT_EQ('\xE9$T', 'x', 'a$N\"'); END_TEST "
        "TEST 'gone' VAR p : POINTER TO INT; END_VAR p^ := 1; END_TEST\n");
  const auto without = [](const std::string& text) {
    return std::regex_replace(text, std::regex("time=\"[0-9.]+\""), "time");
  };
  EXPECT_EQ(without(velc("test a.st --format junit").out),
            R"x(<?xml version="1.0" encoding="UTF-8"?>
<testsuites name="velc" tests="3" failures="1" errors="1" time>
  <testsuite name="a.st" tests="3" failures="1" errors="1" time>
    <testcase name="fine" classname="a.st" file="a.st" line="1" time/>
    <testcase name="&lt;b&gt;&amp;#" classname="a.st" file="a.st" line="1" time>
      <failure type="failed" message="a&#10;&quot;: ASSERT_EQ('é$T', 'x', 'a$N&quot;') where 'é$T' = '$E9$T'">a.st:1:37: a&#10;&quot;: ASSERT_EQ('é$T', 'x', 'a$N&quot;') where 'é$T' = '$E9$T'</failure>
    </testcase>
    <testcase name="gone" classname="a.st" file="a.st" line="1" time>
      <error type="crashed" message="crashed with signal 11 (Segmentation fault)">a.st:1: crashed with signal 11 (Segmentation fault)</error>
    </testcase>
  </testsuite>
</testsuites>
)x");
  EXPECT_EQ(velc("test a.st --format tap").out, R"x(TAP version 14
1..3
ok 1 - fine
not ok 2 - <b>&\#
  ---
  status: failed
  at: "a.st:1:37"
  message: "a\n\": ASSERT_EQ('é$T', 'x', 'a$N\"') where 'é$T' = '$E9$T'"
  ...
not ok 3 - gone
  ---
  status: crashed
  at: "a.st:1"
  message: "crashed with signal 11 (Segmentation fault)"
  ...
)x");
  nlohmann::json report = nlohmann::json::parse(velc("test a.st --format json").out);
  for (auto& test : report["tests"]) EXPECT_LT(test["seconds"], 10);
  for (auto& test : report["tests"]) test.erase("seconds");
  EXPECT_EQ(
      report.dump(),
      R"x({"failed":2,"passed":1,"tests":[{"failures":[],"file":"a.st","line":1,)x"
      R"x("name":"fine","status":"passed"},{"failures":[{"assertion":"ASSERT_EQ('é$T', 'x', )x"
      R"x('a$N\"')","column":37,"file":"a.st","line":1,"part":"TEST","text":"a\n\"",)x"
      R"x("values":[{"expression":"'é$T'","value":"'$E9$T'"},{"expression":"'x'",)x"
      R"x("value":"'x'"}]}],"file":"a.st","line":1,"name":"<b>&#","status":"failed"},)x"
      R"x({"failures":[{"assertion":"","file":"a.st","line":1,"part":"TEST",)x"
      R"x("text":"crashed with signal 11 (Segmentation fault)","values":[]}],"file":"a.st",)x"
      R"x("line":1,"name":"gone","status":"crashed"}]})x");
}

TEST_F(Velc, SelectsAndListsTests) {
  write("a.st",
        "TEST 'Fills the tank' ; END_TEST\nTEST 'empties it' ASSERT_TRUE(FALSE); END_TEST\nTEST "
        "'Öff[$Nnet' ; END_TEST\n");
  write("none.st", "PROGRAM P VAR x : INT; END_VAR x := 1; END_PROGRAM\n");
  EXPECT_EQ(velc("test a.st --list").out,
            "a.st:1: Fills the tank\na.st:2: empties it\na.st:3: Öff[ net\n");
  EXPECT_EQ(velc("test a.st --list --filter '*IT'").out, "a.st:2: empties it\n");
  EXPECT_EQ(velc("test a.st --list --filter '*IT' --name 'Öff[\nnet'").out,
            "a.st:2: empties it\na.st:3: Öff[ net\n");
  for (const char* const filter : {"'öff['", "'?FF[?NET'"}) {
    EXPECT_EQ(velc("test a.st --color always --filter " + std::string(filter)).out,
              "a.st\n  \x1b[1;32mok\x1b[0m    Öff[ net\n1 test passed\n");
  }
  const Outcome good = velc("test a.st --filter TANK -o report");
  EXPECT_EQ(good.code, 0);
  EXPECT_EQ(read("report"), "a.st\n  ok    Fills the tank\n1 test passed\n");
  const std::pair<const char*, const char*> rows[] = {
      {"a.st --filter tank?", "velc: no test matches --filter\n"},
      {"a.st --name 'fills the tank'", "velc: no test matches --name\n"},
      {"none.st", "velc: there is no TEST to run\n"},
      {"a.st --compiler missing", "velc: cannot start 'missing': No such file or directory\n"},
      {"a.st --coverage c --compiler clang",
       "velc: --coverage needs gcc as the --compiler, and 'clang' is clang, whose counters gcov "
       "cannot read\n"},
      {"a.st --coverage c",
       "velc: --coverage needs gcc as the --compiler, and 'cc' is clang, whose counters gcov "
       "cannot read\n"},
      {"a.st --list --format json",
       "velc: --list excludes --format\nRun with --help for more information.\n"},
      {"a.st -o a.st", "velc: a.st is a source and cannot be the output too\n"},
  };
  for (const auto& [arguments, message] : rows) {
    const Outcome outcome = velc(std::string("test ") + arguments,
                                 "ln -sf $(command -v clang) cc; export PATH=.:$PATH; ");
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_EQ(outcome.err, message);
  }
  // Nothing but the syntax of tests concerns the other commands, and check says what is wrong.
  write("wrong.st",
        "PROGRAM P VAR x : INT; END_VAR x := 1; END_PROGRAM TEST 'a' ASSERT_EQ(y, 1); END_TEST");
  EXPECT_EQ(velc("run wrong.st").out, "x = 1\n");
  EXPECT_EQ(velc("check wrong.st").code, 1);
  EXPECT_EQ(velc("test wrong.st").code, 1);
}

TEST_F(Velc, CountsWhatTestsExecute) {
  write(
      "pump.st",
      "FUNCTION Flow : INT\nVAR_INPUT on : BOOL; END_VAR\nIF on THEN\n  Flow := 5;\nELSE\n  Flow "
      ":= 0;\nEND_IF\nEND_FUNCTION\nFUNCTION Hangs : INT\nHangs := 1;\nWHILE Hangs > 0 DO\n  "
      "Hangs := 2;\nEND_WHILE\nEND_FUNCTION\nFUNCTION Unused : INT\nUnused := 1;\nEND_FUNCTION\n");
  std::string tests;
  for (int i = 0; i < 205; ++i) {
    tests += "TEST '" + std::to_string(i) + "'\n ASSERT_EQ(Flow(TRUE), 5);\nEND_TEST\n";
  }
  // Tests that crash or do not end count, too.
  write("test.st", tests +
                       "TEST 'crash' VAR p : POINTER TO INT; END_VAR p^ := Flow(FALSE); END_TEST\n"
                       "TEST 'loop' ASSERT_EQ(Hangs(), 1); END_TEST\n");
  const Outcome outcome = velc("test pump.st test.st --coverage c.info -j 2 --timeout 0.5");
  EXPECT_EQ(outcome.out.substr(std::min(outcome.out.find("covered"), outcome.out.size())),
            "covered: 76.9 % of 13 lines, 100.0 % of 4 branches\n");
  const std::string places = std::regex_replace(read("c.info"), std::regex("SF:.*/"), "SF:");
  EXPECT_EQ(
      std::regex_replace(places, std::regex("[0-9]{4,}"), "many"),
      "TN:\nSF:pump.st\nBRDA:3,0,0,205\nBRDA:3,0,1,1\nBRDA:11,0,0,many\nBRDA:11,0,1,1\nBRF:4\n"
      "BRH:4\nDA:1,206\nDA:3,206\nDA:4,205\nDA:6,1\nDA:8,206\nDA:9,1\nDA:10,1\nDA:11,many\n"
      "DA:12,many\nDA:14,1\nDA:15,0\nDA:16,0\nDA:17,0\nLF:13\nLH:10\nend_of_record\n");
  const ProcessResult pages = runProcess(
      {"genhtml", "--branch-coverage", "-o", folder.path() / "html", folder.path() / "c.info"},
      TerminationGuard());
  EXPECT_NE(pages.output.find("lines......: 76.9% (10 of 13 lines)"), std::string::npos)
      << pages.output;
}

TEST_F(Velc, TestsAnExample) {
  EXPECT_EQ(velc("test " EXAMPLES "/filling_station.st " EXAMPLES "/filling_station_test.st").code,
            0);
}

}  // namespace
}  // namespace velc
