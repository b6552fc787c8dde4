// What users watch while a program runs, and the values that they give it meanwhile.
#include <sys/resource.h>

#include <cstdlib>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

class Watched : public Velc {
 protected:
  void SetUp() override {
    write(
        "p.st",
        "TYPE Color : (Red, Green); END_TYPE\n"
        "FUNCTION_BLOCK Half VAR_INPUT i : INT; END_VAR VAR_OUTPUT o : REAL; END_VAR\n"
        "VAR t : TON; END_VAR t(IN := TRUE, PT := T#1s); o := INT_TO_REAL(i) / 2.0; "
        "END_FUNCTION_BLOCK\n"
        "PROGRAM P VAR n : INT := -2; h : Half; c : Color; a : ARRAY[1..2] OF STRUCT b : BOOL; s "
        ":\n"
        "STRING[9]; END_STRUCT; q AT %QX0.1 : BOOL; r : POINTER TO INT; END_VAR\n"
        "VAR CONSTANT k : INT := 7; END_VAR n := n + 1; h(i := n); a[2].b := n > 0;\n"
        "IF n > 0 THEN c := Green; a[1].s := 'a, b'; END_IF g := g OR a[2].b; q := g; END_PROGRAM\n"
        "VAR_GLOBAL g : BOOL; END_VAR\n");
  }
};

TEST_F(Watched, WritesEveryForm) {
  struct Row {
    const char* options;
    const char* text;
  };
  for (const Row& row :
       {Row{"--scans 4 --trace n h.o 'a[2].b' %QX0.1 k",
            "time,n,h.o,a[2].b,%QX0.1,k\n0,-1,-0.5,FALSE,FALSE,7\n10,0,0.0,FALSE,FALSE,7\n"
            "20,1,0.5,TRUE,TRUE,7\n30,2,1.0,TRUE,TRUE,7\n"},
        {"--trace P.* --trace g n --scans 1",
         "time,n,h.i,h.o,h.t.IN,h.t.PT,h.t.Q,h.t.ET,c,a[1].b,a[1].s,a[2].b,a[2].s,q,g\n"
         "0,-1,-1,-0.5,TRUE,T#1000ms,FALSE,T#0ms,Red,FALSE,'',FALSE,'',FALSE,FALSE\n"},
        {"--scans 4 --trace c g --changes --cycle T#2ms", "time,c,g\n0,Red,FALSE\n4,Green,TRUE\n"},
        {"--trace 'a[2].b' a --trace %QX0.1 %qx0.1 --scans 1",
         "time,a[2].b,a[1].b,a[1].s,a[2].s,%QX0.1\n0,FALSE,FALSE,'','',FALSE\n"},
        {"--trace c 'a[1]' --trace-format json --scans 3 --changes",
         "{\"time\":0,\"c\":\"Red\",\"a[1].b\":false,\"a[1].s\":\"\"}\n"
         "{\"time\":20,\"c\":\"Green\",\"a[1].s\":\"a, b\"}\n"},
        {"--trace h.o h.t.PT --trace-format json --scans 1",
         "{\"time\":0,\"h.o\":-0.5,\"h.t.PT\":\"T#1000ms\"}\n"}}) {
    EXPECT_EQ(velc("run " + std::string(row.options) + " p.st").out, row.text);
  }
  EXPECT_EQ(
      velc("run p.st --format json --scans 3 --show g").out,
      "{\n  \"n\": 1,\n  \"c\": \"Green\",\n  \"a\": [{\"b\":false,\"s\":\"a, b\"},{\"b\":true,"
      "\"s\":\"\"}],\n  \"q\": true,\n  \"r\": \"NULL\",\n  \"k\": 7,\n  \"g\": true\n}\n");
}

// GTKWave's own tools read the dump and write what they have read.
TEST_F(Watched, WritesWhatWaveformViewersRead) {
  velc("run p.st --scans 4 --trace n h.o c 'a[1].s' 'a[2].b' %QX0.1 --trace-format vcd -o t.vcd");
  ASSERT_EQ(std::system(("cd " + folder.path().native() +
                         " && vcd2fst t.vcd t.fst && fst2vcd t.fst | sed 1,/ms/d >back.vcd")
                            .c_str()),
            0);
  EXPECT_EQ(read("back.vcd"),
            "$end\n$scope module P $end\n$var integer 16 ! n $end\n$scope module h $end\n"
            "$var real 64 \" o $end\n$upscope $end\n$var string 0 # c $end\n"
            "$scope module a(1) $end\n$var string 0 $ s $end\n$upscope $end\n"
            "$scope module a(2) $end\n$var wire 1 % b $end\n$upscope $end\n$upscope $end\n"
            "$var wire 1 & %QX0_1 $end\n$enddefinitions $end\n#0\n$dumpvars\n0&\n0%\ns $\nsRed #\n"
            "r-0.5 \"\nb1111111111111111 !\n$end\n#10\nb0000000000000000 !\nr0 \"\n#20\n"
            "r0.5 \"\nb0000000000000001 !\nsGreen #\nsa,\\040b $\n1%\n1&\n#30\n"
            "b0000000000000010 !\nr1 \"\n#40\n");
}

TEST_F(Watched, TakesStimuliAndTheirTraces) {
  struct Row {
    const char* file;
    const char* text;
  };
  for (const Row& row :
       {// Values hold between rows, whatever the program does, and an empty field changes none.
        Row{"time,n,c\n0,5,Green\n \t\nT#15ms,,red\r\n40, 16#9 ,\"Color#Green\"",
            "time,n,c,g\n0,5,Green,TRUE\n10,5,Green,TRUE\n20,5,Red,TRUE\n30,5,Red,TRUE\n"
            "40,9,Green,TRUE\n"},
        {"\xEF\xBB\xBFn,scan,P.c\n3,2,Green\n", "time,n,c,g\n0,-1,Red,FALSE\n10,3,Green,TRUE\n"}}) {
    write("s.csv", row.file);
    EXPECT_EQ(velc("run p.st --stimulus s.csv --trace n c g").out, row.text);
  }
  for (const Row& row :
       {Row{"time,n\n0,5\n10,x\n", "s.csv:3:4: 'x' is not a literal"},
        {"time,n\n0,40000\n", "s.csv:2:3: '40000' is not in the range -32768..32767 of INT"},
        {"time,\"a[1].s\",c\n0,\"'\n'\",Blue\n",
         "s.csv:2:3: '' '' is not a literal; a STRING stands in quotes, 'a'"},
        {"time;n\n0;1\n", "s.csv:1:1: commas must separate the columns"},
        {"time,n,\n0,1,\n", "s.csv:1:8: the column has no name"},
        {"time,a[1,0]\n", "s.csv:1:6: 'a[1' has no ']'; a name with a comma stands in quotes"},
        {"time,c\n0,Blue\n", "s.csv:2:3: 'Blue' is not a literal and no value of Color"},
        {"time,n\n0,5,6\n", "s.csv:2:5: the row has 3 fields, and the header 2"},
        {"time,n\n0\n", "s.csv:2:1: the row has 1 field, and the header 2"},
        {"time,n\n9,1\n9,2\n", "s.csv:3:1: the time must be greater than that of the row before"},
        {"scan,n\n0,1\n", "s.csv:2:1: '0' is no number of a scan, of which the first is 1"},
        {"time,n\n-1,1\n", "s.csv:2:1: '-1' is no time in milliseconds, and no TIME"},
        {"time,\xC3\xA4,m\n0,1\n", "s.csv:1:6: there is no variable or device address '\xC3\xA4'"},
        {"time,k\n", "s.csv:1:6: 'k' cannot be set"},
        {"time,n,P.N\n", "s.csv:1:8: 'n' and 'P.N' are the same variable"},
        {"time,q,%qb0\n0,TRUE,\n1,,16#FD",
         "s.csv:3:4: 'q' and '%qb0' share storage and get different values"},
        {"time,\"a[1].s\"\n0,\"'\n",
         "s.csv:2:3: the quote at the beginning of the field is not closed"},
        {"", "s.csv:1:1: there is no header"}}) {
    write("s.csv", row.file);
    const Outcome outcome = velc("run p.st --stimulus s.csv");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.err, "velc: " + std::string(row.text) + "\n");
  }
  const std::string lift = "run " EXAMPLES
                           "/lift.st --cycle T#100ms --localio "
                           "'I:131072-131088;Q:139264-139280;' --trace '*' %IB0 ";
  velc(lift + "--scans 200 --set %IX0.2=TRUE -o lift.csv");
  EXPECT_EQ(velc(lift + "--stimulus lift.csv").out, read("lift.csv"));
}

TEST_F(Watched, DrawsEveryKindOfVariable) {
  velc("run p.st --scans 4 --trace n c g --plot p.svg");
  const std::string svg = read("p.svg");
  for (const char* const part :
       {"x=\"14\" y=\"66\">n</text>", ">INT</text>", "d=\"M102 116H319.5V84H537V52H754.5V20H972\"",
        "d=\"M102 148L106 136H533L537 148L533 160H106Z\"/>", "y=\"152\">Green</text>",
        "d=\"M102 202H537V180H972\"", ">time in ms</text>", "prefers-color-scheme: dark"}) {
    EXPECT_NE(svg.find(part), std::string::npos) << part << svg;
  }
  writeProgram("i.st", "r : LREAL := 1.0;", "r := r * -1E200;");
  velc("run i.st --scans 4 --trace r --plot i.svg");
  for (const char* const part :
       {"d=\"M319.5 29L323.5 20H533L537 29L533 38H323.5Z\"", "x=\"645.8\" y=\"111\">-Inf<"}) {
    EXPECT_NE(read("i.svg").find(part), std::string::npos) << part << read("i.svg");
  }
}

// 200,000 scans of 2 kB.
TEST_F(Watched, NeedsNoMoreMemoryForManyScans) {
  writeProgram("w.st", "n : DINT; r : REAL; b : BOOL; s : ARRAY[0..24] OF STRING[80];",
               "n := n + 1; r := SIN(r) + 1.0; b := NOT b;");
  std::string stimulus = "scan,s[0]\n";
  for (int scan = 1; scan < 200000; scan += 5) stimulus += std::to_string(scan) + ",'x'\n";
  write("s.csv", stimulus);
  // A sanitizer keeps what has been freed.
  const Outcome outcome = velc(
      "run w.st --scans 200000 --stimulus s.csv --trace '*' -o t.vcd --trace-format vcd --plot "
      "w.svg",
      "export ASAN_OPTIONS=$ASAN_OPTIONS:quarantine_size_mb=16; ");
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_NE(read("t.vcd").find("\n#1999990\n"), std::string::npos);
  EXPECT_LT(read("w.svg").size(), 500'000U);
  rusage used{};
  getrusage(RUSAGE_CHILDREN, &used);
  EXPECT_LT(used.ru_maxrss, 300'000) << "kB";
}

TEST_F(Watched, KeepsTheTraceOfAProgramThatCrashes) {
  writeProgram("crash.st", "n : INT; p : POINTER TO INT;",
               "n := n + 1; IF n = 3 THEN p^ := 1; END_IF");
  for (const char* const target : {"-o t.csv", "--changes > t.csv"}) {
    EXPECT_EQ(velc("run crash.st --scans 9 --trace n " + std::string(target), "ulimit -c 0; ").code,
              1);
    EXPECT_EQ(read("t.csv"), "time,n\n0,1\n10,2\n");
  }
}

TEST_F(Watched, RunsByTheClockUntilItIsAskedToEnd) {
  const Outcome timed = velc("run p.st --scans 6 --cycle T#100ms --realtime");
  EXPECT_EQ(timed.err.find("velc: 6 scans in real time, on average "), 0U) << timed.err;
  const Outcome ended = velc(
      "run p.st --realtime --format json --trace n -o f 2>e & { read a; read b; kill -TERM $!; "
      "cat; } "
      "<f >t.csv; wait $!",
      "mkfifo f; ");
  EXPECT_EQ(ended.code, 0) << read("e");
  EXPECT_EQ(ended.out.find("{\n  \"n\": "), 0U) << ended.out;
}

}  // namespace
}  // namespace velc
