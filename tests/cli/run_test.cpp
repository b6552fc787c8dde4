#include <csignal>
#include <filesystem>
#include <regex>
#include <sstream>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

TEST_F(Velc, PrintsAndSetsValuesOfEveryType) {
  const char* const variables =
      "b : BOOL; si : SINT; us : USINT; i : INT; ui : UINT; di : DINT; ud : UDINT; li : LINT;"
      "ul : ULINT; y : BYTE; w : WORD; dw : DWORD; lw : LWORD; r : REAL; lr : LREAL; t : TIME;"
      "lt : LTIME; d : DATE; td : TOD; dt1 : DT; s : STRING[19]; ws : WSTRING[19]; e : (Off, On);"
      "nan, inf : REAL; low : LREAL;";
  const std::string values =
      "b = TRUE\nsi = -128\nus = 255\ni = -32768\nui = 65535\ndi = -2147483648\n"
      "ud = 4294967295\nli = -9223372036854775808\nul = 18446744073709551615\ny = 16#1F\n"
      "w = 16#A\ndw = 16#0\nlw = 16#FFFFFFFFFFFFFFFF\nr = 1.5e+20\nlr = -0.1\nt = T#1500ms\n"
      "lt = LTIME#20ns\nd = D#2026-11-21\ntd = TOD#12:30:15.250\ndt1 = DT#2026-11-21-12:30:15\n"
      "s = '$$ , \"$L$'\xC3\xA4$FF'\nws = \"$$ , '$L$\"\xC3\xA4$D83D\"\ne = On\nnan = NaN\ninf = "
      "Inf\n"
      "low = -Inf\n";
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
  // As it is traced it is read.
  velc("run p.st --scans 2 --trace '*' -o t.csv" + settings);
  EXPECT_EQ(velc("run p.st --stimulus t.csv").out, values) << read("t.csv");
  writeProgram("q.st", "us : USINT; i : INT; y : BYTE; r : REAL; t : TIME; lt : LTIME;", ";");
  EXPECT_EQ(velc("run q.st --set US=16#f_f --set I=INT#-5 --set y=BYTE#8#17 --set R=1e3 "
                 "--set t=TIME#1m2.5s --set lt=T#1ms")
                .out,
            "us = 255\ni = -5\ny = 16#F\nr = 1000.0\nt = T#62500ms\nlt = LTIME#1000000ns\n");
}

TEST_F(Velc, TakesNamesThatAreReservedInC) {
  const char* const names =
      "_Bool _Complex _Imaginary _Atomic _Generic _Noreturn _Static_assert _Thread_local _Pragma "
      "_Alignas auto char const inline restrict signed static typedef union unsigned "
      "volatile bool true1 nullptr constexpr thread_local typeof asm unix linux i386 errno NULL1 "
      "u8 f32 _m gbit vgbit self vel_t1 VEL_MEM main malloc sqrtf INT32_MAX size_t __LINE__ "
      "uVarParam edge_0 _x int1 longs UINT8_MIN X_MAX p_data p_scan";
  std::string units;
  std::string variables;
  std::string calls;
  std::istringstream list(names);
  for (std::string name; list >> name;) {
    units += "FUNCTION F" + name + " : INT VAR_INPUT " + name + " : INT; END_VAR F" + name +
             " := " + name + "; END_FUNCTION TYPE T" + name + " : STRUCT " + name +
             " : INT; END_STRUCT END_TYPE FUNCTION " + name + "_ : INT " + name +
             "_ := 1; END_FUNCTION\n";
    variables += name + " : T" + name + "; ";
    calls +=
        name + '.' + name + " := " + name + "." + name + " + F" + name + "(1) + " + name + "_();";
  }
  writeProgram("p.st", variables, calls);
  write("p.st", units + read("p.st"));
  for (const char* compiler : {"gcc", "clang"}) {
    const Outcome outcome = velc("run p.st --compiler " + std::string(compiler));
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out.find(":= 1)"), std::string::npos) << outcome.out;
  }
  std::string sum = "0";
  std::string functions;
  for (const char* const name : {"isnan", "sinf", "gbitx", "VEL_X", "double", "floor"}) {
    functions += std::string("FUNCTION ") + name + " : INT " + name + " := 1; END_FUNCTION\n";
    sum += std::string(" + ") + name + "()";
  }
  writeProgram("q.st", "x : INT; r : LREAL;", "x := " + sum + "; r := LN(EXP(r)) ** r;");
  write("q.st", functions + read("q.st"));
  EXPECT_EQ(velc("run q.st").out, "x = 6\nr = 1.0\n");
  EXPECT_FALSE(std::regex_search(velc("translate q.st").out,
                                 std::regex("i16 (isnan|sinf|gbitx|VEL_X|double|floor)\\(")));
}

// C functions and objects whose names the program does not contain.
TEST_F(Velc, KeepsLocalVariablesFromHidingNamesOfC) {
  write("p.st",
        "VAR_GLOBAL g : INT; END_VAR\n"
        "FUNCTION_BLOCK B VAR_OUTPUT o : INT; END_VAR VAR_TEMP C_body : INT; c : C; END_VAR\n"
        "C_body := 3; c(); o := C_body + F(5, 7) + c.o; END_FUNCTION_BLOCK\n"
        "FUNCTION F : INT VAR_INPUT C_body, globals_data : INT; END_VAR\n"
        "VAR c : C; main_, C_init : INT := 2; END_VAR\n"
        "c(); g := 4; F := C_body + globals_data + main_ + main() + c.o + C_init; END_FUNCTION\n"
        "FUNCTION_BLOCK C VAR_OUTPUT o : INT := 1; END_VAR o := o + 2; END_FUNCTION_BLOCK\n"
        "FUNCTION main : INT main := 2; END_FUNCTION\n"
        "PROGRAM P VAR b : B; x : INT; END_VAR b(); x := b.o; END_PROGRAM");
  EXPECT_EQ(velc("run p.st --show g").out, "x = 27\ng = 4\n");
}

TEST_F(Velc, PrintsAndSetsPartsOfValues) {
  writeProgram("p.st",
               "n : ARRAY[1..5] OF INT; a : ARRAY[1..2, -1..1] OF INT := [1, 2, 3, 4]; big : "
               "ARRAY[0..99999] OF BYTE;"
               "s : STRUCT x : REAL; t : ARRAY[0..1] OF STRING[3] := ['u']; inner : STRUCT e :"
               "(Off, On := 5) := On; f : R; END_STRUCT; END_STRUCT; l : ARRAY[3..4] OF STRUCT"
               " b : BOOL; c : SINT; END_STRUCT; e : (Red, Green); p : POINTER TO INT; f : R;"
               "g : INT(0..10); d AT %MW10 : ARRAY[1..2] OF STRUCT x : BYTE; y : INT; END_STRUCT;",
               ";");
  write("q.st", read("p.st") + "FUNCTION_BLOCK R VAR x : INT; END_VAR END_FUNCTION_BLOCK");
  EXPECT_EQ(
      velc("run q.st --set e=green --set 'A[ 2 , 0 ]=9' --set 'p . L[4].c=-1' --set s.T[1]=\\'ab\\'"
           " --set s.inner.e=Off --set big[7]=16#FF")
          .out,
      "n = [5(0)]\na = [1, 2, 3, 4, 9, 0]\nbig = [7(16#0), 16#FF, 99992(16#0)]\n"
      "s = (x := 0.0, t := ['u', 'ab'], inner := (e := Off))\n"
      "l = [(b := FALSE, c := 0), (b := FALSE, c := -1)]\ne = Green\np = NULL\n"
      "g = 0\nd = [(x := 16#0, y := 0), (x := 16#0, y := 0)]\n");
  struct Row {
    const char* setting;
    const char* error;
  };
  for (const Row& row : {Row{"a[3,0]=1", ": 'a' has no element [3,0]"},
                         {"a[1]=1", ": 'a' has no element [1]"},
                         {"n[1=1", ": 'n[1' has no ']'"},
                         {"a=1", ": 'a' cannot be set"},
                         {"s.y=1", ": 's' has no member 'y'"},
                         {"e=2", " e=2: '2' is no value of enumeration (Red, Green)"},
                         {"f=1", ": 'f' cannot be set"},
                         {"p=NULL", ": 'p' cannot be set"},
                         {"g=11", " g=11: '11' is not in the range 0..10 of INT"},
                         {"n[1]=4E9", " n[1]=4E9: '4E9' is not a value of type INT"},
                         {"s.t[0]=\\'abcd\\'", " s.t[0]='abcd': 'abcd' is longer than STRING[3]"},
                         {"g=1 --set P.G=2", ": 'g' and 'P.G' share storage"},
                         {"d[2].y=1 --set %MX27.7=TRUE", ": 'd[2].y' and '%MX27.7' share storage"},
                         {"%QX0.1=TRUE --set %qb0=3", ": '%QX0.1' and '%qb0' share storage"}}) {
    EXPECT_EQ(velc("run q.st --set " + std::string(row.setting)).err,
              "velc: --set" + std::string(row.error) + "\n");
  }
  EXPECT_EQ(velc("run q.st --set d[2].y=1 --set %MB25=1 --set %MB28=1").code, 0);
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
  writeProgram("p.st", "x, i : INT;", "WHILE i < 10 DO x := x + 1; END_WHILE");
  // Compilers may assume that such a loop ends.
  for (const char* compiler : {"gcc", "clang"}) {
    const Outcome late = velc(std::string("run p.st --timeout 1 --compiler ") + compiler);
    EXPECT_EQ(late.code, 1) << compiler;
    EXPECT_NE(late.err.find("did not end within 1 s (--timeout) at p.st:5, in PROGRAM"),
              std::string::npos)
        << compiler << late.err;
  }
  EXPECT_EQ(velc("run p.st & sleep 0.5; kill $!; wait $!").code, 128 + SIGTERM);
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    EXPECT_FALSE(entry.is_directory()) << entry.path();
  }
}

TEST_F(Velc, SharesGlobalVariablesBetweenFiles) {
  write("use.st",
        "PROGRAM A VAR_EXTERNAL total : INT; name : Name; END_VAR\n"
        "VAR t : STRING[N + 1]; END_VAR\n"
        "total := total + Step(); shared(d := N); t := name; %QB5 := %QB5 + 1; END_PROGRAM;\n"
        "PROGRAM B VAR total : INT := 5; END_VAR VAR_OUTPUT sum : INT; END_VAR\n"
        "total := total + 1; sum := shared.sum; END_PROGRAM\n"
        "FUNCTION Step : INT; Step := N; END_FUNCTION\n"
        "FUNCTION_BLOCK Acc VAR_INPUT d : INT; END_VAR VAR_OUTPUT sum : INT := N; END_VAR\n"
        "sum := sum + d; END_FUNCTION_BLOCK\n");
  write(
      "declare.st",
      "VAR_GLOBAL RETAIN shared : Acc; total AT %MW3 : INT := 10; AT %QB5 : USINT := 7; END_VAR\n"
      "CONFIGURATION Plant RESOURCE Cpu ON Soft VAR_GLOBAL name : STRING[N] := 'abcdef'; END_VAR\n"
      "TASK fast(INTERVAL := T#10ms, PRIORITY := 1); PROGRAM first WITH fast : A;\n"
      "PROGRAM second : B(sum => total, x WITH fast); END_RESOURCE\n"
      "VAR_ACCESS a : Cpu.total : INT READ_ONLY; END_VAR END_CONFIGURATION\n"
      "TYPE Name : STRING[N]; END_TYPE\n"
      "VAR_GLOBAL CONSTANT N : INT := M + 1; M : INT := 2; END_VAR\n");
  const std::string shown = " --scans 2 --show TOTAL --show n --show %QB5";
  const std::string values = "second.total = 7\nsecond.sum = 9\ntotal = 9\nN = 3\n%QB5 = 9\n";
  EXPECT_EQ(velc("run use.st declare.st" + shown).out, "first.t = 'abc'\n" + values);
  EXPECT_EQ(velc("run declare.st use.st --set name=\"'xy'\"" + shown).out,
            "first.t = 'xy'\n" + values);
  EXPECT_EQ(velc("run use.st declare.st --show shared --set shared.sum=1 --show shared.SUM").out,
            "first.t = 'abc'\nsecond.total = 6\nsecond.sum = 4\nshared = (d := 3, sum := 4)\n"
            "shared.sum = 4\n");
}

// Two instances of one PROGRAM share addresses and global variables only. Tasks are due by the
// simulated time: `slow` in the scans at 0, 30 and 50 ms, `edge` in every second one.
TEST_F(Velc, RunsTheInstancesOfAConfiguration) {
  write(
      "plant.st",
      "FUNCTION_BLOCK Count VAR_INPUT u : BOOL R_EDGE; END_VAR VAR_OUTPUT n : INT; END_VAR\n"
      "IF u THEN n := n + 1; END_IF END_FUNCTION_BLOCK\n"
      "PROGRAM Line VAR_INPUT go : BOOL R_EDGE; {bitparam} w : WORD; k : INT := 9; z AT %IW4 :\n"
      "INT; END_VAR VAR_OUTPUT sum : INT; END_VAR VAR c : Count; n, o : INT; here AT %MW6 : INT;\n"
      "END_VAR n := n + 1; here := here + 1; c(u := flip); o := c.n;\n"
      "IF go THEN n := n + 100; END_IF IF MEP(flip) OR GETBITOFPARAM(w, 2) THEN sum := sum + 1;\n"
      "END_IF order := order * 10 + k; END_PROGRAM\n"
      "PROGRAM Toggle VAR_IN_OUT what : BOOL; END_VAR what := NOT what; END_PROGRAM\n"
      "CONFIGURATION Plant\n"
      "  VAR_GLOBAL flip, lit : BOOL; order : LINT; first : LREAL; bits : WORD; END_VAR\n"
      "  RESOURCE Cpu ON Soft\n"
      "    TASK slow(INTERVAL := T#25ms, PRIORITY := 2); TASK edge(SINGLE := flip, PRIORITY := "
      "3);\n"
      "    TASK fast(INTERVAL := T#5ms, PRIORITY := 1);\n"
      "    PROGRAM a WITH slow : Line(go := lit, k := 1, w := bits, sum => first);\n"
      "    PROGRAM b WITH fast : Line(k := 2, z := 77);\n"
      "    PROGRAM e WITH edge : Line;\n"
      "    PROGRAM t : Toggle(flip);\n"
      "  END_RESOURCE\nEND_CONFIGURATION\n");
  EXPECT_EQ(
      velc("run plant.st --scans 7 --set lit=TRUE --set bits=4 --show first --show order").out,
      "a.go = TRUE\na.w = 16#4\na.k = 1\na.z = 77\na.sum = 3\na.n = 103\na.o = 1\n"
      "a.here = 13\nb.go = FALSE\nb.w = 16#0\nb.k = 2\nb.z = 77\nb.sum = 3\nb.n = 7\n"
      "b.o = 3\nb.here = 13\ne.go = FALSE\ne.w = 16#0\ne.k = 9\ne.z = 77\ne.sum = 1\n"
      "e.n = 3\ne.o = 1\ne.here = 13\nfirst = 3.0\norder = 2129221922192\n");
  write(
      "two.st",
      "PROGRAM P VAR n : INT; END_VAR n := n + 1; g := g * 10 + n; END_PROGRAM\n"
      "VAR_GLOBAL g : LINT; f : BOOL; END_VAR\n"
      "CONFIGURATION C RESOURCE A ON X TASK t(INTERVAL := T#10ms, SINGLE := f, PRIORITY := 9);\n"
      "PROGRAM p WITH t : P; END_RESOURCE RESOURCE B ON X TASK t(INTERVAL := T#20ms);\n"
      "PROGRAM p WITH t : P; END_RESOURCE PROGRAM p : N; END_CONFIGURATION PROGRAM N VAR m : INT; "
      "END_VAR m := m + 1; END_PROGRAM");
  EXPECT_EQ(velc("run two.st --cycle T#7ms --scans 5 --set b.p.n=5 --show g").out,
            "A.p.n = 3\nB.p.n = 7\np.m = 5\ng = 16237\n");
  EXPECT_EQ(velc("run two.st --scans 5 --set f=TRUE --set a.p.n=2").out,
            "A.p.n = 3\nB.p.n = 3\np.m = 5\n");
}

TEST_F(Velc, ContinuesWithRetainedVariables) {
  write("p.st",
        "FUNCTION_BLOCK B VAR_OUTPUT n : INT; END_VAR VAR_INPUT u : BOOL R_EDGE; END_VAR\n"
        "VAR t : TON; END_VAR IF u OR MEP(n > 2) THEN n := n + 100; END_IF n := n + 1;\n"
        "t(IN := TRUE, PT := T#35ms); IF t.Q THEN n := n + 1000; END_IF END_FUNCTION_BLOCK\n"
        "PROGRAM P VAR_INPUT u : BOOL R_EDGE; END_VAR VAR k, l : INT; b : ARRAY[1..2] OF B; s :\n"
        "STRUCT r : REAL; w : WSTRING[3] := \"$D83Dx\"; p : POINTER TO INT; e : (Off, On); "
        "END_STRUCT;"
        "t : STRING[4]; bit AT %MX1.2 : BOOL; i, nan : REAL := -0.0; d : DT; END_VAR\n"
        "VAR CONSTANT one : LREAL := 1.0; END_VAR IF u THEN k := k + 10; END_IF k := k + 1;\n"
        "b[2](u := TRUE); l := b[2].n; g := g + LTIME#1ns; bit := NOT bit; s.r := s.r + 0.1;\n"
        "IF k = 12 THEN t := '$FF$'$$'; i := -1.0 / i; nan := i - i; s.e := On; END_IF\n"
        "d := d + T#1s; END_PROGRAM VAR_GLOBAL PERSISTENT g : LTIME; END_VAR\n"
        "CONFIGURATION C PROGRAM RETAIN p : P(u := TRUE); END_CONFIGURATION\n");
  EXPECT_EQ(velc("run p.st --retain r.json --scans 3").err, "");
  const Outcome second = velc("run p.st --retain r.json --scans 2 --show g");
  EXPECT_EQ(second.out + second.err, velc("run p.st --scans 5 --show g").out);
}

TEST_F(Velc, TellsWhichRetainedVariablesAreLeftOut) {
  const std::string block =
      "FUNCTION_BLOCK B VAR RETAIN x : INT; END_VAR VAR NON_RETAIN y : INT; END_VAR VAR z : INT; "
      "END_VAR x := x + 1 + y + z; END_FUNCTION_BLOCK\n";
  write("old.st",
        block +
            "PROGRAM P VAR RETAIN a : STRING[3] := 'x'; c : (U, V) := V; gone : BOOL; f : "
            "B; n : INT; END_VAR VAR g : B; END_VAR VAR NON_RETAIN h : B; END_VAR g(); "
            "END_PROGRAM");
  velc("run old.st --retain r.json");
  const auto entry = [](const char* name, const char* type, const char* value) {
    return std::string("    \"P.") + name + "\": {\n      \"type\": \"" + type +
           "\",\n      \"value\": " + value + "\n    }";
  };
  EXPECT_EQ(read("r.json"),
            "{\n  \"velc-retain\": 1,\n  \"clock\": 10,\n  \"variables\": {\n" +
                entry("a", "STRING[3]", "\"'x'\"") + ",\n" + entry("c", "ENUM", "\"V\"") + ",\n" +
                entry("gone", "BOOL", "\"FALSE\"") + ",\n" +
                entry("f", "STRUCT(x : INT; z : INT)",
                      "{\n        \"x\": \"0\",\n        \"z\": \"0\"\n      }") +
                ",\n" + entry("n", "INT", "\"0\"") + ",\n" +
                entry("g", "STRUCT(x : INT)", "{\n        \"x\": \"1\"\n      }") + "\n  }\n}\n");
  write("new.st",
        block +
            "PROGRAM P VAR RETAIN a : STRING[4]; c : (V, U); f : ARRAY[1..2] OF B; n : INT(0..9) "
            ":= 5; more : INT; g : INT; END_VAR END_PROGRAM");
  std::string text = read("r.json");
  text.replace(text.find("\"INT\",\n      \"value\": \"0\"") + 23, 1, "10");
  write("r.json", text);
  const Outcome outcome = velc("run new.st --retain r.json");
  EXPECT_EQ(outcome.out, "a = ''\nc = V\nn = 5\nmore = 0\ng = 0\n");
  EXPECT_EQ(
      outcome.err,
      "velc: r.json: 'P.a' is left out: it is of type STRING[4], not STRING[3]\n"
      "velc: r.json: 'P.f' is left out: it is of type ARRAY[1..2] OF STRUCT(x : INT; z : INT), "
      "not STRUCT(x : INT; z : INT)\n"
      "velc: r.json: 'P.n' is left out: its value does not fit its type\n"
      "velc: r.json: 'P.more' is left out: the file has no value for it\n"
      "velc: r.json: 'P.g' is left out: it is of type INT, not STRUCT(x : INT)\n"
      "velc: r.json: 'P.gone' is left out: the program has no such retained variable\n");
  write("deep.json",
        R"({"velc-retain": 1, "clock": 1, "variables": {"P.a": {"type": "INT", "value": )" +
            std::string(100000, '[') + std::string(100000, ']') + "}}}");
  EXPECT_EQ(velc("run new.st --retain deep.json").code, 0);
  const std::string kept = read("r.json");
  write("loop.st", "PROGRAM P WHILE TRUE DO END_WHILE END_PROGRAM");
  EXPECT_EQ(velc("run loop.st --timeout 1 --retain r.json").code, 1);
  EXPECT_EQ(read("r.json"), kept);
  for (const char* const noise :
       {"", "{}", "[[", "\xFF", "{\"velc-retain\":2,\"clock\":5,\"variables\":{}}",
        "{\"velc-retain\":1,\"clock\":5000000000,\"variables\":{}}"}) {
    write("r.json", noise);
    const Outcome refused = velc("run new.st --retain r.json");
    EXPECT_EQ(refused.err, "velc: r.json is not a file of retained variables\n");
    EXPECT_EQ(refused.code, 2);
    EXPECT_EQ(read("r.json"), noise);
  }
}

// Device memory and direct I/O, run in both notations.

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
  EXPECT_EQ(kRefreshes + values + "%QB1 = 16#F\n%MX0.0 = FALSE\n", iec.out) << iec.err;
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
  writeProgram("types.st",
               "r AT %MD0 : REAL := 1.5; d AT %MD0 : DINT; lr AT %ML1 : LREAL := -2.0; si AT %MB15 "
               ": SINT; w AT %MW100 : WORD; x : WORD;",
               "%MW101 := 16#1234; w.3 := %MX202.4; x.15 := w.3; %MX300.0 := x.15;");
  EXPECT_EQ("r = 1.5\nd = 1069547520\nlr = -2.0\nsi = -64\nw = 16#8\nx = 16#8000\n%MB300 = 16#1\n",
            velc("run types.st --show %MB300").out);
  EXPECT_EQ(2, velc("run types.st --show %MB16384").code);
  EXPECT_EQ(0, velc("run types.st --show %MB16384 --memory-markers 16392").code);
}

}  // namespace
}  // namespace velc
