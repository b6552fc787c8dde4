// Bad usage, inputs and surroundings: a clear message, the right exit code, nothing left behind.
#include <csignal>
#include <filesystem>
#include <set>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

struct Row {
  const char* before;
  const char* arguments;
  int code;
  const char* said;
};

// clang-format off
constexpr Row kRows[] = {
    {"", "", 2, "A command is required"},
    {"", "frob", 2, "unknown command 'frob'\nRun with"},
    {"", "check", 2, "FILE is required"},
    {"", "check p.st --diagnostics=xml", 2, "xml not in {text,json,sarif}"},
    {"", "run p.st --diagnostics=sarif", 2, "sarif not in {text,json}"},
    {"", "check p.st --notation=x", 2, "x not in {iec,letters}"},
    {"", "check missing.st", 2, "cannot read missing.st: No such file or directory"},
    {"", "check p.st --plugin ./no.so", 2, "no.so"},
    {"", "operators NO_OPERATOR", 2, "'NO_OPERATOR' is no operator"},
    {"", "explain NO_OPERATOR", 2, "'NO_OPERATOR' is neither a word of the language nor"},
    {"", "operators >/dev/full", 2, "cannot write standard output: No space left on device"},
    {"", "translate p.st -o p.st", 2, "p.st is a source"},
    {"", "translate p.st -o no/out.c", 2, "cannot write no/out.c: No such file or directory"},
    {"", "run p.st --scans=-1", 2, "--scans: Value -1 not in range"},
    {"", "run p.st --set x", 2, "'x' is not NAME=VALUE"},
    {"", "run p.st --set y=1", 2, "--set: there is no variable or device address 'y'"},
    {"", "run p.st --trace f.CU f.QQ", 2, "--trace: 'f' has no member 'QQ'; did you mean 'Q'?"},
    {"", "run p.st --trace x[1]", 2, "--trace: 'x' has no part '[1]'"},
    {"", "run p.st --show q.x", 2, "--show: there is no variable 'q.x'; did you mean 'p.x'?"},
    {"", "run p.st --trace x --show f.Q", 2, "--show and the trace cannot both go to standard output"},
    {"", "run p.st --trace x -o p.st", 2, "p.st is a source"},
    {"", "run p.st --trace x -o /dev/full", 2, "cannot write /dev/full: No space left on device"},
    {"", "run p.st --scans 99999 --trace x >/dev/full", 2, "cannot write standard output: No space"},
    {"((", "run p.st --trace x --scans 9999999; echo $? >code) | true; read c <code; rm code; exit $c)",
     2, "cannot write standard output: Broken pipe"},
    {"timeout --preserve-status -s INT 1 ", "run p.st --trace x -o t.csv --scans 999999999", 130, ""},
    {"", "run p.st --trace x --plot no/x.svg --scans 99999999999", 2, "cannot write no/x.svg: No such"},
    {"", "run p.st --trace x --plot -", 2, "--plot: goes to a file, not to standard output"},
    {"", "run p.st --set x=TRUE", 2, "'TRUE' is not a value of type INT"},
    {"", "run p.st --set x=32768", 2, "'32768' is not in the range -32768..32767 of INT"},
    {"", "run p.st --set r=1e39", 2, "'1e39' is out of the range of REAL"},
    {"", "run p.st --set 'x=); abort('", 2, "'); abort(' is not a literal"},
    {"", "run p.st --set f=1", 2, "--set: 'f' cannot be set"},
    {"", "run p.st --retain .", 2, "velc: cannot read .: Is a directory\n"},
    {"", "run p.st --retain p.st", 2, "p.st is a source"},
    {"", "run p.st --retain no/r.json", 2, "cannot write no/r.json: No such file or directory"},
    {"", "run p.st --compiler no-cc", 2, "cannot start 'no-cc': No such file or directory"},
    {"", "run p.st --compiler false", 2, "the C compiler 'false' failed with status 1"},
    {"", "check p.st './-;$(touch left)'", 2, "velc: there is no *.st in ./-;$(touch left)\n"},
    {"", "translate empty.st", 0, ""},
    {"", "run empty.st", 2, "velc: there is no PROGRAM to run\n"},
    {"", "check noise.st", 1, "noise.st:1:1: error: Syntax error: the file is not a text from here on;"},
    {"", "translate deep.st", 1, "deep.st:5:1006: error: Nested deeper than 1000 levels; [0xF0006]"},
    {"", "translate ifs.st", 1, "error: Nested deeper than 1000 levels; [0xF0006]"},
    {"", "translate long.st -o /sys/out.c", 2, "velc: cannot write /sys/out.c: "},
    {"", "translate long.st -o /dev/full", 2, "cannot write /dev/full: No space left on device"},
    {"ulimit -f 8; ", "translate long.st -o out.c", 2, "cannot write out.c: File too large"},
    {"ulimit -f 8; ", "run long.st", 2, "/program.c: File too large"},
    {"", "run './;$(touch left).st' >&-", 2, "cannot write standard output: Bad file descriptor"},
    {"((", "translate long.st; echo $? >code) | true; read c <code; rm code; exit $c)", 2,
     "cannot write standard output: Broken pipe"},
    {"(", "check noise.st 2>/dev/full)", 2, ""},
    {"", "run long.st --compiler true", 2, "the C compiler 'true' made no program"},
    {"", "translate p.st -o q.c --header /dev/full", 2, "cannot write /dev/full: No space left on device"},
    {"", "translate p.st -o q.c --depfile ./q.c", 2, "velc: ./q.c cannot be two outputs\n"},
    {"", "run p.st --trace x -o q.c --plot q.c", 2, "velc: q.c cannot be two outputs\n"},
    {"", "run p.st --trace x --plot q.png", 2,
     "velc: --plot: q.png would be an SVG all the same; rsvg-convert makes others of it\n"
     "Run with --help for more information.\n"},
    {"", "run p.st --timeout 1 --compiler ./slow", 2,
     "velc: the C compiler './slow' did not end within 1 s (--timeout)\n"},
    {"", "build p.st", 2, "--output is required"},
    {"", "build p.st -o p.st", 2, "p.st is a source"},
    {"", "build p.st -o no/program", 2, "cannot write no/program: No such file or directory"},
    {"", "build p.st -o program --compiler false", 2, "the C compiler 'false' failed with status 1"},
    {"", "build empty.st -o program", 2, "velc: there is no PROGRAM to build\n"},
    {"", "check '\x1B[2J;$(touch left).st'", 1, " [2J;$(touch left).st:1:11: error: Unknown"},
    {"TMPDIR='-;$(touch left)' ", "run './;$(touch left).st'", 0, ""},
    {"timeout --preserve-status -s INT 1 ", "run loop.st", 128 + SIGINT, ""},
    {"ulimit -c 0; timeout --preserve-status -s QUIT 1 ", "run loop.st", 128 + SIGQUIT, ""},
};
// clang-format on

std::string repeated(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

std::set<std::filesystem::path> everythingIn(const std::filesystem::path& folder) {
  using Entries = std::filesystem::recursive_directory_iterator;
  return {begin(Entries(folder)), end(Entries())};
}

TEST_F(Velc, WithstandsBadUsageInputsAndSurroundings) {
  write("stderr", "");
  write("empty.st", "");
  write("noise.st", std::string("\xFF\x80\0\x1B\xC3", 5) + repeated(9999, "\xA7;"));
  const std::string variables = "x : INT; s : STRING;";
  writeProgram("p.st", "x : INT; f : CTU; r : REAL;", "x := 1;");
  write("slow", "#!/bin/sh\nsleep 30 & sleep 30\n");
  std::filesystem::permissions(folder.path() / "slow", std::filesystem::perms::owner_all);
  writeProgram("deep.st", variables, "x := " + repeated(100000, "(") + '1' + repeated(100000, ")"));
  writeProgram("ifs.st", variables, repeated(10000, "IF x = 0 THEN ") + repeated(10000, "END_IF;"));
  writeProgram("long.st", variables, repeated(6000, "x := x + 1;\n"));
  writeProgram("loop.st", variables, "WHILE TRUE DO x := x + 1; END_WHILE");
  writeProgram(";$(touch left).st", variables,
               "(* */ `touch left` *) s := '`touch left`\"$$(id)';");
  write("\x1B[2J;$(touch left).st", "PROGRAM p x := 1; END_PROGRAM");
  std::filesystem::create_directory(folder.path() / "-;$(touch left)");
  const auto entries = everythingIn(folder.path());
  for (const Row& row : kRows) {
    const Outcome outcome = velc(row.arguments, row.before);
    EXPECT_EQ(row.code, outcome.code) << row.arguments << outcome.err;
    EXPECT_TRUE(row.code != 2 || outcome.out.empty()) << row.arguments << outcome.out;
    EXPECT_NE(std::string::npos, outcome.err.find(row.said)) << row.arguments << outcome.err;
    EXPECT_EQ(entries, everythingIn(folder.path())) << row.arguments;
  }
}

}  // namespace
}  // namespace velc
