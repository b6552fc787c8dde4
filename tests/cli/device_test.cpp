// Device memory and direct I/O, run in both notations.
#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

constexpr const char* kRefreshes =
    "UPDATEINPUT = 1, 1\nUPDATEINPUT = 2, 1\nUPDATEINPUT = 2, 1\n"
    "UPDATEOUTPUT = 1, 1\nUPDATEOUTPUT = 0, 1\nUPDATEOUTPUT = 8, 4\n";
constexpr const char* kLocalIo = " --localio 'X:131072-131088;Y:139264-139280;' --trace-io ";

TEST_F(Velc, RunsDirectIoInBothNotations) {
  const std::string values =
      "open_button = TRUE\nopened = FALSE\nclosed = FALSE\nmotor_up = TRUE\nmotor_down = FALSE\n"
      "runs = 1\n";
  const Outcome iec = velc("run " EXAMPLES
                           "/gate_iec.st --set %IX0.0=TRUE --show %QB1 --show "
                           "%mx0.0" +
                           std::string(kLocalIo));
  EXPECT_EQ(kRefreshes + values + "%QB1 = 16#F\n%mx0.0 = FALSE\n", iec.out) << iec.err;
  const Outcome letters = velc("run " EXAMPLES
                               "/gate_letters.st --notation letters --set X0=TRUE "
                               "--show D10 --show D11.0" +
                               std::string(kLocalIo));
  EXPECT_EQ(kRefreshes + values + "D10 = 16#1\nD11.0 = TRUE\n", letters.out) << letters.err;
  // Without local I/O nothing is refreshed, and opened is read through the macro.
  const Outcome opened =
      velc("run " EXAMPLES "/gate_iec.st --trace-io --set %IX0.1=TRUE --show %QB0");
  EXPECT_EQ(0U, opened.out.find("open_button = FALSE\nopened = TRUE\n")) << opened.out;
  EXPECT_NE(std::string::npos, opened.out.find("%QB0 = 16#2\n")) << opened.out;
}

// What operators look for in a text, what a bit's value may change, what has few bits, and what
// is evaluated once.
TEST_F(Velc, BitsGoWhereTheyBelong) {
  write("bits.st",
        "FUNCTION F : BOOL VAR_IN_OUT w : WORD; END_VAR w := w OR 16#F0; F := TRUE; END_FUNCTION\n"
        "FUNCTION G : BOOL VAR_IN_OUT {bitparam} b : BOOL; {bitparam} ab : STRING[20]; END_VAR\n"
        "VAR _WRITEODIRECT : BOOL; END_VAR SETBITOFPARAM(b, 3, TRUE); SETBITOFPARAM(b, 0, TRUE);\n"
        "IWRBIT(%QX0.0, b); G := b = TRUE AND GETBITOFPARAM(ab, 72) AND NOT _WRITEODIRECT;\n"
        "END_FUNCTION\n"
        "FUNCTION Step : INT VAR_IN_OUT n : INT; END_VAR n := n + 1; Step := n; END_FUNCTION\n"
        "PROGRAM P VAR n, m : INT; a : ARRAY[1..3] OF WORD; gbitx, g, b : BOOL; x : WORD; s : "
        "STRING[20] := 'AAAAAAAAAAAAAAA'; END_VAR\n"
        "a[Step(n)].2 := TRUE; m := MUX(1, ABS(Step(n)), 7);\n"
        "IRDBIT(%IX0.0, gbitx); x.3 := F(x); g := G(b, s); END_PROGRAM\n");
  for (const char* const compiler : {"gcc", "clang"}) {
    EXPECT_EQ(
        "n = 2\nm = 7\na = [16#4, 16#0, 16#0]\ngbitx = TRUE\ng = TRUE\nb = TRUE\nx = 16#F8\ns = "
        "'AAAAAAAAAAAAAAA'\n%QX0.0 = TRUE\n",
        velc(std::string("run bits.st --set %IX0.0=TRUE --show %QX0.0 --compiler ") + compiler)
            .out);
  }
}

TEST_F(Velc, AddressesOfEveryTypeShareTheMemory) {
  writeProgram(
      "types.st",
      "r AT %MD0 : REAL := 1.5; d AT %MD0 : DINT; lr AT %ML1 : LREAL := -2.0; si AT %MB15 : "
      "SINT; w AT %MW100 : WORD; t AT %MD51 : TIME; x : WORD;",
      "%MW101 := 16#1234; w.3 := %MX202.4; t := T#5s; x := 0; x.15 := w.3; %MX300.0 := x.15;");
  EXPECT_EQ(
      "r = 1.5\nd = 1069547520\nlr = -2.0\nsi = -64\nw = 16#8\nt = T#5000ms\nx = 16#8000\n"
      "%MB300 = 16#1\n",
      velc("run types.st --show %MB300").out);
  EXPECT_EQ(2, velc("run types.st --show %MB16384").code);
  EXPECT_EQ(0, velc("run types.st --show %MB16384 --memory-markers 16392").code);
}

}  // namespace
}  // namespace velc
