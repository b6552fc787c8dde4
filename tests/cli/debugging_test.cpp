// Lines of Structured Text in crashes.
#include <filesystem>

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
        "END_FUNCTION\n");
  std::filesystem::create_directory(folder.path() / "a b");
  write(
      "a b/\"\\\xC3\xA9?.st",
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
        "  END_CASE\n"
        "END_PROGRAM\n");
  const std::string fault = "velc: the program was ended by signal 11 (Segmentation fault)";
  const std::pair<const char*, std::string> rows[] = {
      {"0", fault + " at poke.st:2, in FUNCTION Poke\n  p^ := 4;\n"
                    "  called at a b/\"\\\xC3\xA9?.st:4, in FUNCTION_BLOCK Caller\n"
                    "  called at main.st:4, in PROGRAM Main\n"},
      {"1", fault + " at ./poke.st:6, in FUNCTION Deep\n  Deep := Deep(n + 1) + 1;\n"},
      {"2", fault + " at main.st:6, in PROGRAM Main\n  2: t := CONCAT(s^, 'b');\n"},
      {"4", fault + " at main.st:9, in PROGRAM Main\n  4: r :=\n"},
  };
  for (const char* const compiler : {"gcc", "clang"}) {
    for (const auto& [which, said] : rows) {
      const char* const poke = *which == '1' ? "./poke.st" : "poke.st";
      const Outcome outcome = velc(std::string("run --no-warn all main.st 'a b'/* ") + poke +
                                       " --compiler " + compiler + " --set which=" + which,
                                   "ulimit -c 0; ");
      EXPECT_EQ(1, outcome.code);
      EXPECT_EQ(said, outcome.err) << compiler << ' ' << which;
    }
  }
}

}  // namespace
}  // namespace velc
