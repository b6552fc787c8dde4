#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <tuple>
#include <utility>

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

// The files that messages are about, and the last line if it is none of an excerpt.
std::string filesIn(const std::string& diagnostics) {
  std::string files;
  std::istringstream lines(diagnostics);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t message = line.find(":1:");
    const bool other = line.find_first_of("^~=") == std::string::npos;
    if (message != std::string::npos || other) files += line.substr(0, message) + ' ';
  }
  return files;
}

TEST_F(Velc, FindsItsSources) {
  namespace fs = std::filesystem;
  for (const char* name : {"src/sub", "src/.git", "empty"}) {
    fs::create_directories(folder.path() / name);
  }
  fs::create_directory_symlink("..", folder.path() / "src/sub/loop");
  ASSERT_EQ(mkfifo((folder.path() / "src/pipe.st").c_str(), 0600), 0);
  for (const char* name : {"src/b.st", "src/a b.ST", "src/sub/c.st", "src/.git/d.st", "src/.e.st",
                           "src/notes.txt", "-"}) {
    write(name, "PROGRAM P VAR x : INT; END_VAR x := y; END_PROGRAM");
  }
  write("good.st", "PROGRAM Q END_PROGRAM");
  const std::string all = "src/a b.ST src/b.st src/b.st src/sub/c.st ";
  const std::tuple<const char*, int, std::string> rows[] = {
      {"check --each src", 1, "src/a b.ST src/b.st src/sub/c.st 3 errors in 3 files "},
      {"check --each src/sub src/b.st ./src src/sub/../b.st good.st", 1,
       "src/sub/c.st src/b.st ./src/a b.ST 3 errors in 3 of 4 files "},
      {"check src/sub --diagnostics=json", 1, "{\"file\":\"src/sub/c.st\",\"line\""},
      {"check src/sub", 1, "src/sub/c.st "},
      {"check --each .", 1, "src/a b.ST src/b.st src/sub/c.st 3 errors in 3 of 4 files "},
      {"check good.st", 0, ""},
      {"check - good.st <src/b.st", 1, "<stdin> 1 error in 1 of 2 files "},
      {"check ./-", 1, "./- "},
      {"check - good.st -", 2, "velc: standard input (-) can be read only once "},
      {"check good.st empty", 2, "velc: there is no *.st in empty "},
      {"check --each none.st src/sub good.st", 2,
       "velc: cannot read none.st: No such file or directory src/sub/c.st 1 error in 1 of 2 "
       "files "},
      {"run --each good.st --realtime", 2, "velc: --realtime is for one program, not for --each "},
      {"run --each src/b.st b.st --retain x.json", 2, "velc: x-b.json cannot be two outputs "},
  };
  for (const auto& [arguments, code, files] : rows) {
    const Outcome outcome = velc(arguments);
    EXPECT_EQ(outcome.code, code) << arguments;
    const bool json = outcome.err[0] == '{';
    EXPECT_EQ(json ? outcome.err.substr(0, files.size()) : filesIn(outcome.err), files)
        << arguments;
    EXPECT_FALSE(json && outcome.err.find("in 1 file") != std::string::npos) << arguments;
  }
  const auto log = nlohmann::json::parse(velc("check --each src good.st --diagnostics=sarif").err);
  EXPECT_EQ(log["runs"].size(), 4U);
  write("other.st", "PROGRAM Q VAR x : INT := 5; END_VAR END_PROGRAM");
  write("none.st", "FUNCTION f END_FUNCTION");
  const Outcome each = velc("run --each good.st none.st - <other.st");
  EXPECT_EQ(each.out, "==> good.st <==\n\n==> none.st <==\n\n==> <stdin> <==\nx = 5\n");
  EXPECT_EQ(each.err, "velc: none.st: there is no PROGRAM to run\n");
  EXPECT_EQ(each.code, 2);
  write("q.st", "PROGRAM Q VAR RETAIN x : INT; END_VAR x := x + 1; END_PROGRAM");
  const std::tuple<const char*, const char*, const char*> runs[] = {
      {"--format json", "",
       "{\n  \"q.st\": {\n    \"x\": 2\n  },\n  \"other.st\": {\n    \"x\": 5\n  }\n}\n"},
      {"--show %QB0 --set x=1", "",
       "==> q.st <==\nx = 3\n%QB0 = 16#0\n\n==> other.st <==\nx = 1\n%QB0 = 16#0\n"},
      {"--retain r", "r-q", "==> q.st <==\nx = 2\n\n==> other.st <==\nx = 5\n"},
      {"--trace x", "", "==> q.st <==\ntime,x\n0,1\n10,2\n\n==> other.st <==\ntime,x\n0,5\n10,5\n"},
      {"--trace x -o t.csv --plot t.svg", "t-q.csv",
       "==> q.st <==\nx = 2\n\n==> other.st <==\nx = 5\n"},
      {"--stimulus t-q.csv", "t-other.svg", "==> q.st <==\nx = 2\n\n==> other.st <==\nx = 2\n"}};
  for (const auto& [options, file, out] : runs) {
    const Outcome run = velc("run --each q.st other.st none.st --scans 2 " + std::string(options));
    EXPECT_EQ(run.out.substr(0, run.out.find("\n==> none.st")), out);
    EXPECT_EQ(run.err, "velc: none.st: there is no PROGRAM to run\n");
    EXPECT_TRUE(fs::exists(folder.path() / file)) << file;
  }
}

TEST_F(Velc, TellsWhatIsMisspeltAndWhatThereIs) {
  const std::pair<const char*, const char*> rows[] = {
      {"chek x.st", "unknown command 'chek', did you mean 'check'?"},
      {"help trnslate", "unknown command 'trnslate', did you mean 'translate'?"},
      {"nothing", "unknown command 'nothing'"},
      {"check --diagnostic=json", "unknown option '--diagnostic', did you mean '--diagnostics'?"},
      {"--plugn x operators", "unknown option '--plugn', did you mean '--plugin'?"},
      {"run x.st -z", "unknown option '-z'"},
      {"help check run", "'run' is more than 'help' takes"},
      {"check --", "FILE is required: there is no velops.json in this folder or above it"},
      {"memory %MX0.0", "'%MX0.0' is neither an input nor an output"},
      {"memory %IX0.8", "'%IX0.8' is no device address"},
      {"memory --memory-inputs 8 %IX8.0",
       "'%IX8.0' is outside of its area; 'velc memory' shows the areas"},
      {"memory X5", "'X5' is an address of --notation letters"},
      {"memory %IX0.0 --notation letters", "'%IX0.0' is an address of --notation iec"},
      {"check no.st --localio 'I:0-8;Q:0-8'",
       "--localio: 'I:0-8;Q:0-8' does not have the form I:131072-131088;Q:139264-139280;"},
      {"check no.st --localio 'I:0-8;Q:0-x;'",
       "--localio: 'I:0-8;Q:0-x;' does not have the form I:131072-131088;Q:139264-139280;"},
      {"check no.st --localio 'I: 0-8 ;  0-0;'", "cannot read no.st: No such file or directory"},
      {"explain TON --plugin no.so",
       "./no.so: cannot open shared object file: No such file or directory"},
      {"build x.st -o -", "a program goes to a file, not to standard output"},
      {"explain TONN",
       "'TONN' is neither a word of the language nor an operator, a message or a "
       "group of warnings, did you mean 'TON'?"},
  };
  for (const auto& [arguments, message] : rows) {
    const Outcome outcome = velc(arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_EQ(outcome.err.substr(6, outcome.err.find('\n') - 6), message) << arguments;
  }
  EXPECT_EQ(velc("help").out, velc("--help").out);
  EXPECT_EQ(velc("help check").out, velc("check --help").out);
  EXPECT_EQ(velc("-V").out, velc("--version").out);
  // A word with two sections.
  const std::string text = velc("explain else").out;
  EXPECT_NE(text.find("ELSE, END_IF: conditions\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\n\n## CASE, OF, ELSE, "), std::string::npos) << text;
}

TEST_F(Velc, ShowsDeviceMemoryAndDerivesLocalIo) {
  EXPECT_EQ(velc("memory --memory-markers 128 --memory-inputs 64").out,
            "Area  Addresses           Bytes of _m     Bits of _m\n"
            "%M    %MB0..%MB127        0..127          0..1023\n"
            "%I    %IB0..%IB63         128..191        1024..1535\n"
            "%Q    %QB0..%QB1023       192..1215       1536..9727\n");
  EXPECT_NE(velc("memory --notation letters")
                .out.find("\nD     D0..D4095           3072..11263     24576..90111\n"),
            std::string::npos);
  EXPECT_EQ(velc("memory %QX1.7 %IW0 %QB0 %IX1.0").out, "I:131072-131088;Q:139264-139280;\n");
  EXPECT_EQ(velc("memory X9 X2 --notation letters").out, "X:131074-131082;Y:139264-139264;\n");
  // The text is what the operators take: only the last output is outside of it.
  writeProgram("p.st", "b : BOOL;", "IRDBIT(%IX0.2, b);\nIWRBIT(%QX3.0, b);\nIWRBIT(%QX3.1, b);");
  const std::string err = velc("check p.st --memory-inputs 64 --localio \"$(" VELC
                               " memory --memory-inputs 64 %IX0.2 %QX3.0)\"")
                              .err;
  EXPECT_EQ(err.substr(0, err.find('\n')),
            "p.st:7:8: warning: This address(%QX3.1) is overflow the local address; [0xC0221]");
}

}  // namespace
}  // namespace velc
