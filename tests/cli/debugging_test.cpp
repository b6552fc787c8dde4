// Lines of Structured Text in crashes and in gdb.
#include <filesystem>
#include <regex>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

TEST_F(Velc, NamesTheLineOfACrash) {
  write("poke.st",
        "FUNCTION Poke : INT VAR_INPUT p : POINTER TO INT; END_VAR\n"
        "  p^ := 4;\n"
        "END_FUNCTION\n"
        "FUNCTION Deep : DINT VAR_INPUT n : DINT; END_VAR\n\n"
        "  Deep := Deep(n + 1) + 1;\n"
        "END_FUNCTION\n"
        "FUNCTION Get : INT VAR_INPUT p : POINTER TO INT; END_VAR\n"
        "  Get := p^;\n"
        "END_FUNCTION\n");
  std::filesystem::create_directory(folder.path() / "a b");
  write(
      "a b/\"\\\xC3\xA9?\n:7.st",
      "FUNCTION_BLOCK Caller VAR_INPUT p : POINTER TO INT; END_VAR VAR x : INT; t : TON; END_VAR\n"
      "  t(IN := TRUE);\n"
      "  IF x = 0 THEN\n"
      "    x := Poke(p); END_IF\n"
      "END_FUNCTION_BLOCK\n");
  write("main.st",
        "PROGRAM Main VAR which : INT; c : Caller; s : POINTER TO STRING; r : REFERENCE TO INT;\n"
        "  t : STRING; a : ARRAY[0..2] OF DINT; END_VAR\n"
        "  CASE which OF\n"
        "    0: c();\n"
        "    1: a[2] := Deep(1);\n"
        "    2: t := CONCAT(s^, 'b');\n"
        "    3: WHILE a[0] < 9 DO a[0] := 1;\n"
        "         a[1] := 2; END_WHILE\n"
        "    4: r :=\n"
        "         3;\n"
        "    5: which := Get(NULL);\n"
        "         which := which + 1;\n"
        "  END_CASE\n"
        "END_PROGRAM\n");
  const std::string fault = "velc: the program was ended by signal 11 (Segmentation fault)";
  const std::pair<const char*, std::string> rows[] = {
      {"0", fault + " at poke.st:2, in FUNCTION Poke\n  p^ := 4;\n"
                    "  called at a b/\"\\\xC3\xA9? :7.st:4, in FUNCTION_BLOCK Caller\n"
                    "  called at main.st:4, in PROGRAM Main\n"},
      // The stack ends where the function is entered or where it calls itself.
      {"1", fault + " at ./poke.st:"},
      {"2", fault + " at main.st:6, in PROGRAM Main\n  2: t := CONCAT(s^, 'b');\n"},
      {"4", fault + " at main.st:9, in PROGRAM Main\n  4: r :=\n"},
      // Optimised, the function has no place of its own, and nothing needs what it reads.
      {"5", fault + " at poke.st:9, in FUNCTION Get\n  Get := p^;\n"
                    "  called at main.st:11, in PROGRAM Main\n"},
  };
  for (const char* const compiler : {"gcc", "clang"}) {
    for (const auto& [which, said] : rows) {
      const char* const poke = *which == '1' ? "./poke.st" : "poke.st";
      const Outcome outcome = velc(std::string("run --no-warn all main.st 'a b'/* ") + poke +
                                       " --compiler " + compiler + " --set which=" + which,
                                   "ulimit -c 0; ");
      EXPECT_EQ(1, outcome.code);
      const bool whole = said.back() == '\n';
      EXPECT_EQ(said, whole ? outcome.err : outcome.err.substr(0, said.size()))
          << compiler << ' ' << which;
      // Beside many calls the first ones are named.
      EXPECT_EQ("in PROGRAM Main", *which == '1' ? outcome.err.substr(outcome.err.size() - 16, 15)
                                                 : "in PROGRAM Main");
    }
  }
}

// The lines at which gdb stops and the values that it prints, with '@' for addresses and folders.
std::string told(const std::string& output) {
  static const std::regex wanted("(^|\n)((\\d+\t|\\$\\d+ = |#\\d).*)");
  std::string text;
  for (std::sregex_iterator line(output.begin(), output.end(), wanted), end; line != end; ++line) {
    text += (*line)[2].str() + '\n';
  }
  static const std::regex changing("0x[0-9a-f]+|/[^ ]*/");
  return std::regex_replace(text, changing, "@");
}

TEST_F(Velc, BuildsProgramsForDebuggers) {
  std::filesystem::create_directory(folder.path() / "lib");
  write("lib/ramp.st",
        "FUNCTION_BLOCK Ramp\n"
        "VAR_INPUT target : INT; END_VAR\n"
        "VAR_OUTPUT value : INT; END_VAR\n"
        "  IF value < target THEN\n"
        "    value := value + 1;\n"
        "  END_IF\n"
        "END_FUNCTION_BLOCK\n");
  write("pump.st",
        "PROGRAM Pump\n"
        "VAR level : INT; ramp : Ramp; name : STRING := 'p1'; a : ARRAY[1..3] OF INT := [3(5)];"
        "  w : WSTRING[4] := \"ab\"; on : BOOL := TRUE; n : ARRAY[0..1] OF STRING[3] := ['c'];\n"
        "END_VAR\n"
        "  level := level + 2;\n"
        "  ramp(target := 10);\n"
        "  CASE level OF\n"
        "    2: IF on THEN a[1] := 7; END_IF\n"
        "    4: a[2] :=\n"
        "         8;\n"
        "  END_CASE\n"
        "END_PROGRAM\n");
  write("session",
        "set debuginfod enabled off\nset disable-randomization off\n"
        "break pump.st:5\nrun --cycle T#7ms --scans 3\nprint Pump_data.level\nstep\nnext\nprint "
        "self->value\n"
        "next\nnext\nnext\nnext\ndelete\n"
        "break pump.st:8\ncontinue\nprint Pump_data.a\nprint (unsigned)vel_scan_time\nnext\n"
        "source " EXAMPLES
        "/../runtime/velops_gdb.py\nprint Pump_data\n"
        "tbreak Ramp_body\ncontinue\nwatch self->value\ncontinue\nbacktrace 2\n");
  for (const char* const compiler : {"gcc", "clang"}) {
    const Outcome outcome = velc(std::string("build -g lib/ramp.st pump.st -o pump --compiler ") +
                                 compiler + " && gdb -nx -q -batch -x session ./pump");
    EXPECT_EQ(
        "5\t  ramp(target := 10);\n"
        "$1 = 2\n"
        "4\t  IF value < target THEN\n"
        "5\t    value := value + 1;\n"
        "$2 = 0\n"
        "7\tEND_FUNCTION_BLOCK\n"
        "6\t  CASE level OF\n"
        "7\t    2: IF on THEN a[1] := 7; END_IF\n"
        "11\tEND_PROGRAM\n"
        "8\t    4: a[2] :=\n"
        "$3 = {a = {7, 5, 5}}\n"
        "$4 = 7\n"
        "11\tEND_PROGRAM\n"
        "$5 = {level = 4, ramp = {target = 10, value = 2}, name = \"p1\", a = {7, 8, 5}, "
        "w = \"ab\", on = 1, n = {\"c\", \"\"}}\n"
        "4\t  IF value < target THEN\n"
        "7\tEND_FUNCTION_BLOCK\n"
        "#0  Ramp_body (self=@ <Pump_data+2>) at lib/ramp.st:7\n"
        "#1  @ in Pump_scan () at @pump.st:5\n",
        told(outcome.out))
        << compiler << outcome.out << outcome.err;
  }
}

}  // namespace
}  // namespace velc
