#include <csignal>
#include <filesystem>
#include <sstream>

#include "velc_fixture.h"

namespace velc {
namespace {

TEST_F(Velc, PrintsAndSetsValuesOfEveryType) {
  const char* const variables =
      "b : BOOL; si : SINT; us : USINT; i : INT; ui : UINT; di : DINT; ud : UDINT; li : LINT;"
      "ul : ULINT; y : BYTE; w : WORD; dw : DWORD; lw : LWORD; r : REAL; lr : LREAL; t : TIME;"
      "lt : LTIME; d : DATE; td : TOD; dt1 : DT; s : STRING[9]; ws : WSTRING[9];";
  const std::string values =
      "b = TRUE\nsi = -128\nus = 255\ni = -32768\nui = 65535\ndi = -2147483648\n"
      "ud = 4294967295\nli = -9223372036854775808\nul = 18446744073709551615\ny = 16#1F\n"
      "w = 16#A\ndw = 16#0\nlw = 16#FFFFFFFFFFFFFFFF\nr = 1.5e+20\nlr = -0.1\nt = T#1500ms\n"
      "lt = LTIME#20ns\nd = D#2026-11-21\ntd = TOD#12:30:15.250\ndt1 = DT#2026-11-21-12:30:15\n"
      "s = '$$ $L$'\xC3\xA4'\nws = \"$$ $L$\"\xC3\xA4\"\n";
  writeProgram("p.st", variables, ";");
  std::string settings;
  std::istringstream lines(values);
  for (std::string line; std::getline(lines, line);) {
    // As its value is printed it is set, whatever the case of the name.
    std::string quoted;
    for (const char c : line) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    settings += " --set '" + quoted + "'";
  }
  for (const char* compiler : {"gcc", "clang"}) {
    const Outcome outcome = velc("run p.st --compiler " + std::string(compiler) + settings);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out, values);
  }
  writeProgram("q.st", "us : USINT; i : INT; y : BYTE; r : REAL; t : TIME; lt : LTIME;", ";");
  EXPECT_EQ(velc("run q.st --set US=16#f_f --set I=INT#-5 --set y=BYTE#8#17 --set R=1e3 "
                 "--set t=TIME#1m2.5s --set lt=LTIME#1us")
                .out,
            "us = 255\ni = -5\ny = 16#F\nr = 1000.0\nt = T#62500ms\nlt = LTIME#1000ns\n");
}

TEST_F(Velc, PrintsAndSetsPartsOfValues) {
  writeProgram("p.st",
               "n : ARRAY[1..5] OF INT; a : ARRAY[1..2, -1..1] OF INT := [1, 2, 3, 4]; big : ARRAY[0..99999] OF BYTE;"
               "s : STRUCT x : REAL; t : ARRAY[0..1] OF STRING[3] := ['u']; inner : STRUCT e :"
               "(Off, On := 5) := On; f : R; END_STRUCT; END_STRUCT; l : ARRAY[3..4] OF STRUCT"
               " b : BOOL; c : SINT; END_STRUCT; e : (Red, Green); p : POINTER TO INT; f : R;",
               ";");
  write("q.st", read("p.st") + "FUNCTION_BLOCK R VAR x : INT; END_VAR END_FUNCTION_BLOCK");
  EXPECT_EQ(velc("run q.st --set e=green --set 'A[2, 0]=9' --set p.L[4].c=-1 --set s.T[1]=\\'ab\\'"
                 " --set s.inner.e=Off --set big[7]=16#FF")
                .out,
            "n = [5(0)]\na = [1, 2, 3, 4, 9, 0]\nbig = [7(16#0), 16#FF, 99992(16#0)]\n"
            "s = (x := 0.0, t := ['u', 'ab'], inner := (e := Off))\n"
            "l = [(b := FALSE, c := 0), (b := FALSE, c := -1)]\ne = Green\np = NULL\n");
  for (const char* const setting :
       {"a[3,0]=1", "a[1]=1", "a=1", "s.y=1", "e=Blue", "f.x=1", "f=1"}) {
    EXPECT_EQ(velc("run q.st --set " + std::string(setting)).code, 2) << setting;
  }
}

TEST_F(Velc, TellsProgramsApart) {
  write("two.st",
        "PROGRAM A VAR x : INT; END_VAR x := x + 1; END_PROGRAM\n"
        "PROGRAM B VAR x : REAL; END_VAR x := x + 0.5; END_PROGRAM\n");
  EXPECT_EQ(velc("run two.st --scans 3").out, "A.x = 3\nB.x = 1.5\n");
  EXPECT_EQ(velc("run two.st --scans 0 --set b.X=2.0").out, "A.x = 0\nB.x = 2.0\n");
  EXPECT_NE(velc("run two.st --set x=1").err.find("'x' is ambiguous"), std::string::npos);
}

TEST_F(Velc, EndsProgramsThatDoNotAndClearsUp) {
  writeProgram("p.st", "x : INT;", "WHILE TRUE DO x := x + 1; END_WHILE");
  const Outcome late = velc("run p.st --timeout 1");
  EXPECT_EQ(late.code, 1);
  EXPECT_NE(late.err.find("did not end within 1 s"), std::string::npos);
  EXPECT_EQ(velc("run p.st & sleep 0.5; kill $!; wait $!").code, 128 + SIGTERM);
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    EXPECT_FALSE(entry.is_directory()) << entry.path();
  }
}

}  // namespace
}  // namespace velc
