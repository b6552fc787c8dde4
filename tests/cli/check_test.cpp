#include <nlohmann/json.hpp>
#include <sstream>
#include <tuple>

#include "velc_fixture.h"

namespace velc {
namespace {

TEST_F(Velc, PointsAtTheFault) {
  writeProgram("p.st", "\tx : INT; (* \xC3\xA4 *)", "\t(* \xC3\xA4 *)\tx := LIMIT(0, x, 9, 1);");
  const Outcome outcome = velc("check p.st");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(
      outcome.err,
      "p.st:5:15: error: Too many parameters, too few parameters, or no variables assigned to "
      "the IN_OUT in PRG 'LIMIT'; [0xC0040]\n"
      "\t(* \xC3\xA4 *)\tx := LIMIT(0, x, 9, 1);\n"
      "\t       \t     ^~~~~~~~~~~~~~~~~\n");
  // Columns of a file that is not UTF-8 count bytes, and so does the place of the caret.
  writeProgram("latin1.st", "x : INT;", "(* \xE4\x85 *) x := y;");
  const std::string err = velc("check latin1.st").err;
  EXPECT_EQ(err.substr(err.find('\n')),
            "\n(* \xE4\x85 *) x := y;\n" + std::string(14, ' ') + "^\n");

  const Outcome json = velc("check --diagnostics=json p.st");
  EXPECT_EQ(json.code, 1);
  const auto object = nlohmann::json::parse(json.err);
  EXPECT_EQ(object["file"], "p.st");
  EXPECT_EQ(object["line"], 5);
  EXPECT_EQ(object["column"], 15);
  EXPECT_EQ(object["endColumn"], 32);
  EXPECT_EQ(object["severity"], "error");
  EXPECT_EQ(object["code"], "0xC0040");
}

// Wide, combining and joined characters, tabs, ranges of two lines, and notes.
TEST_F(Velc, UnderlinesTheRangeAtFault) {
  const std::string family = "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9";
  const std::string lines[] = {"(* \xE6\x97\xA5\xE6\x9C\xAC *) x := '\xE6\x97\xA5\x65\xCC\x81';",
                               "(* e\xCC\x81 " + family + " *)\tx := ABS(x,", "\t1);",
                               "IF x > 0 THEN x := 1;"};
  writeProgram("p.st", "x : INT;", lines[0] + '\n' + lines[1] + '\n' + lines[2] + '\n' + lines[3]);
  std::string shown;
  std::istringstream err(velc("check p.st").err);
  for (std::string line; std::getline(err, line);) {
    const std::size_t text = line.find(": error");
    shown += (text == std::string::npos ? line : line.substr(0, text)) + '\n';
  }
  EXPECT_EQ(shown, "p.st:5:15\n" + lines[0] + "\n                ^~~~~\n" +  //
                       "p.st:6:19\n" + lines[1] + "\n          \t     ^~~~~~\n" +
                       "p.st:9:1\nEND_PROGRAM\n^~~~~~~~~~~\n"
                       "p.st:8:1: note: the IF stands here\n" +
                       lines[3] + "\n^~\n3 errors in 1 file\n");
}

TEST_F(Velc, ShowsTheWarningsThatAreWanted) {
  write(
      "p.st",
      "{nowarn conversions}\nFUNCTION f : INT VAR_INPUT d : DINT; END_VAR\nf := d;\nEND_FUNCTION\n"
      "PROGRAM p VAR i : INT; d : DINT; u : UINT; END_VAR\n"
      "i := d; (* x *) {nowarn conversions, 0xF9}\n{ NOWARN 0xc0197}\n\n// x\ni := d; u := i;\n"
      "i := d; {nowarn}\ni := d;\nEND_PROGRAM");
  write("e.st", "PROGRAM e VAR i : INT; d : DINT; END_VAR\ni := x; i := y;\ni := d; END_PROGRAM");
  const std::tuple<const char*, int, const char*> rows[] = {
      {"p.st", 0, "6:38 F00E0, 10:14 C0195, 12:6 C0197, "},
      {"p.st --no-warn 0xC0195,pragmas -W all", 0, "12:6 C0197, "},
      {"p.st --no-warn all --werror", 0, ""},
      {"p.st --werror --no-warn conversions", 1, "6:38 F00E0!, "},
      {"p.st --werror --max-errors 2", 1, "6:38 F00E0!, 10:14 C0195!, velc: 1 more error is"},
      {"e.st --max-errors 1", 1, "2:6 F0020!, velc: 1 more error and 1 more warning are"},
      {"e.st --max-errors 2", 1, "2:6 F0020!, 2:14 F0020!, velc: 1 more warning is"},
      {"e.st --max-errors 3", 1, "2:6 F0020!, 2:14 F0020!, 3:6 C0197, "},
      {"p.st --no-warn 0xC0040", 2, "velc: --no-warn: 0xC0040 is"},
  };
  for (const auto& [arguments, code, expected] : rows) {
    const Outcome outcome = velc(std::string("check ") + arguments);
    EXPECT_EQ(outcome.code, code) << arguments;
    std::string shown;
    std::istringstream err(outcome.err);
    for (std::string line; std::getline(err, line);) {
      if (line.rfind("velc: ", 0) == 0)
        shown += line.substr(0, std::string(expected).size() - shown.size());
      if (line.back() != ']') continue;
      const std::size_t text = line.find(": ", 5);
      const char* const mark = line[text + 2] == 'e' ? "!, " : ", ";
      shown += line.substr(5, text - 5) + ' ' + line.substr(line.size() - 6, 5) + mark;
    }
    EXPECT_EQ(shown, expected) << arguments;
  }
  EXPECT_EQ(velc("translate --werror p.st").out, "");
  const std::string json = velc("check --diagnostics=json --max-errors 1 e.st").err;
  EXPECT_EQ(nlohmann::json::parse(json.substr(json.find('\n')))["omittedWarnings"], 1);
  const auto log = nlohmann::json::parse(velc("check --diagnostics=sarif --max-errors 1 e.st").err);
  const auto& run = log["runs"][0];
  EXPECT_EQ(run["results"].size(), 1U);
  EXPECT_EQ(run["invocations"][0]["toolExecutionNotifications"].size(), 1U);
}

TEST_F(Velc, WritesOneLogForCodeScanning) {
  write("a b.st",
        "PROGRAM p VAR x, y : INT; z : DINT; END_VAR\nx := ABS();\ny := z; x := ABS();END_PROGRAM");
  write("good.st", "PROGRAM q END_PROGRAM");
  const auto log = nlohmann::json::parse(velc("check --diagnostics=sarif good.st ./'a b'.st").err);
  EXPECT_EQ(log["version"], "2.1.0");
  const auto& rules = log["runs"][0]["tool"]["driver"]["rules"];
  EXPECT_EQ(rules.size(), 2U) << "one for each code";
  EXPECT_EQ(rules[1]["shortDescription"]["text"], "Loss of information");
  const auto& results = log["runs"][0]["results"];
  ASSERT_EQ(results.size(), 3U);
  EXPECT_EQ(results[1]["ruleId"], "0xC0197");
  EXPECT_EQ(results[1]["level"], "warning");
  EXPECT_EQ(results[2]["ruleIndex"], 0);
  EXPECT_EQ(std::string(results[2]["message"]["text"]).substr(0, 20), "Too many parameters,");
  const auto& place = results[2]["locations"][0]["physicalLocation"];
  EXPECT_EQ(place["artifactLocation"]["uri"], "a%20b.st");
  EXPECT_EQ(
      place["region"],
      nlohmann::json({{"startLine", 3}, {"startColumn", 14}, {"endLine", 3}, {"endColumn", 19}}));
  const std::string help = rules[1]["helpUri"];
  EXPECT_EQ(help.substr(help.rfind('/')), "/reference.html#0xC0197");
  EXPECT_NE(results[0]["partialFingerprints"], results[2]["partialFingerprints"]);
  const auto none = nlohmann::json::parse(velc("check --diagnostics=sarif good.st").err);
  EXPECT_EQ(none["runs"][0]["results"], nlohmann::json::array());
}

TEST_F(Velc, SurvivesSourcesThatAreNoText) {
  write("bytes.st", std::string("PROGRAM p \xFF\x1B[2J\0 x := 'a", 24));
  const std::string message = "Syntax error: the file is not a text from here on;";
  EXPECT_EQ(velc("check bytes.st").err,
            "bytes.st:1:11: error: " + message +
                " [0xF0002]\nPROGRAM p \xFF [2J  x := 'a\n          ^\n");
  const auto json = nlohmann::json::parse(velc("check bytes.st --diagnostics=json").err);
  EXPECT_EQ(json["message"], message);
  const auto log = nlohmann::json::parse(velc("check bytes.st --diagnostics=sarif").err);
  EXPECT_EQ(log["runs"][0]["results"][0]["message"]["text"], message);
  EXPECT_EQ(velc("check bytes.st").code, 1);
}

TEST_F(Velc, ChecksAndRunsTheFillingStation) {
  EXPECT_EQ(velc("check " EXAMPLES "/filling_station.st").err, "");
  EXPECT_NE(velc("run " EXAMPLES "/filling_station.st --scans 30").out.find("display = 'holding'"),
            std::string::npos);
  // The other recipes than the one that the benchmarks run.
  for (const auto& [recipe, count] : {std::pair("2", "[3, 31, 5, 0]"), {"3", "[3, 24, 3, 0]"}}) {
    const std::string options = " --cycle T#100ms --scans 500 --set chosen=";
    EXPECT_NE(velc("run " EXAMPLES "/filling_line.st" + options + recipe).out.find(count),
              std::string::npos);
  }
  const Outcome faulty = velc("check " EXAMPLES "/filling_station_faulty.st");
  EXPECT_EQ(faulty.code, 1);
  for (const char* code : {"12:13: error", "[0xC0040]", "13:11: error", "[0xC0032]", "[0xC0197]"}) {
    EXPECT_NE(faulty.err.find(code), std::string::npos) << code;
  }
}

}  // namespace
}  // namespace velc
