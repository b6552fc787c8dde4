#include "tests/refhost/translation.h"

namespace refhost {
namespace {

struct Broken {
  std::string source;
  std::string errors;  // where each message stands
};

std::string places(const std::string& source) {
  std::string text;
  for (const std::string& line : said(*analysed(source))) {
    text += (text.empty() ? "" : " ") + line.substr(0, line.find(' '));
  }
  return text;
}

// One mistake, one place or a few, and none in what follows.
TEST(BrokenPrograms, AreNotFlooded) {
  const Broken bodies[] = {
      {"a := 1;\nIF c THEN\na := 2;\n", "7:1"},
      {"a := b + 1);\nb := 2;", "3:11"},
      {"IF c THEN a := 1; ESLE a := 2; END_IF;\nb := 2;", "3:19"},
      {"IF c THEN a := 1; END IF;\nb := 2;", "3:19"},
      {"ENDIF;\nb := 1;", "3:1"},
      {"b := 1;\nESLE;\nb := 1;\nEND_FR;\nc := %MX1.;", "4:1 6:1 7:6"},
      {"FOR i := 1 TO 10 DO a := i; END FOR;\nb := 1;", "3:29"},
      {"CASE a OF 1: b := 1; 2 b := 2; END_CASE;", "3:24"},
      {"CASE a OF 1: b := 1; ELSE: b := 2; END_CASE;", "3:26"},
      {"CASE a 1: b := 1; END_CASE;", "3:8"},
      {"5 := a;\nb := 1;", "3:1"},
      {"a := b == 1;", "3:9"},
      {"c := a != b;", "3:8"},
      {"c := a && d;", "3:8"},
      {"a += 1;\nb := 2;", "3:3"},
      {"a : = 1;\nb := 2;", "3:3"},
      {"IF THEN a := 1; END_IF;", "3:4"},
      {"if (a = 1) { b := 2; }\nb := 3;", "4:1"},
      {"MAX(a, b)\nb := 1;", "4:1"},
      {"a := undefined1 + undefined1;\nb := undefined1;\nundefined2(a := 1);undefined2();",
       "3:6 5:1"},
      {"a := LIMIT(0, undefined1, 100) + 1;", "3:15"},
      {"BEGIN\na := 1;\nEND", "4:1 6:1"},
      {"a := 1;\nVAR x : INT; END_VAR\na := 2;", "4:1"},
      {"a := NOT;\nb := 1;", "3:9"},
      {"IF c THEN; ELSIF THEN a := 1; END_IF;", "3:18"},
      {"IF c THEN a := 1; ELSEIF d THEN a := 2; END_IF;\nb := 1;", "3:19"},
      {"a := 1; *)\nb := 2;", "3:9"},
      {"IF c THEN a := 1 END_IF;\nb := 2;", "3:18"},
      {"goto x;\nb := 1;", "3:6"},
      {"IF c THEN EXITT; END_IF;\nc := a.%Q1; c := a.%X; a := -INT#-5;", "3:16 4:8 4:20 4:29"},
      {"CASE a OF\n0: IF c THEN b := 1; EEND_IF\n1: b := 2;\nEND_CASE;", "4:22"},
      {")) a := 1;\nb := 2;", "3:1"}};
  for (const Broken& row : bodies) {
    const std::string variables = "VAR a, b, i : INT; c, d : BOOL; s : STRING; END_VAR\n";
    EXPECT_EQ(places("PROGRAM p\n" + variables + row.source + "\nEND_PROGRAM"), row.errors)
        << row.source;
  }
  const Broken files[] = {
      {"PROGRAM p\nVAR a : INT := 5, b : INT; END_VAR\na := b;\nEND_PROGRAM", "2:21"},
      {"PROGRAM p\nEND_PROGRAM\nTYPE s : STRUCT k k : INT; END_STRUCT; END_TYPE", "3:19"},
      {"TYPE h : (up, down); END_TYPE\nPROGRAM p\nVAR up AT %QX0.0 : BOOL\ndown AT %QX0.1 : "
       "BOOL; END_VAR\ndown := NOT down;\nEND_PROGRAM",
       "4:1"},
      {"FUNCTION_BLOCK f\nVAR_OUTPUT CONSTANT k : INT := 2; END_VAR VAR_IN_OUT c : INT; END_VAR\n"
       "k := 1; c := c;\nEND_FUNCTION_BLOCK\nPROGRAM p\nVAR i : f; a : INT; END_VAR\ni := i; "
       "i(k => a, a);\nEND_PROGRAM",
       "2:12 3:9 7:1 7:19"},
      {"PROGRAM p\nVAR a AT %Q* : BOL;\nb, lamp AT %Q* : BOOL;\nc AT %ZQ* : BOOL;\nd AT %Q* : "
       "BOOL; END_VAR\nEND_PROGRAM\nVAR_CONFIG p.a AT %QX0.0 : BOOL;\np.b AT %QX0.1 : BOL;\np.c "
       "AT %QX0.2 : BOOL;\np.lmp AT %QX0.3 : BOOL; END_VAR",
       "2:16 4:6 5:1 8:17 10:1"},
      {"PROGRAM p\nEND_PROGRAM\nCONFIGURATION c\nRESOURCE r ON d PROGRAM a : p; END_RESOURCE\n"
       "RESOURCE r ON d PROGRAM a : p; END_RESOURCE\nEND_CONFIGURATION",
       "5:10"},
      {"PROGRAM p\nVAR a INT; b : INT; END_VAR\na := b;\nEND_PROGRAM", "2:7"},
      {"PROGRAM p\nVAR a : INTT; b : INTT; c : INT; END_VAR\na := b; a := c;\nc := a + b; IF a "
       "THEN a := 1; END_IF; a(x := 1);\nEND_PROGRAM",
       "2:9"},
      {"PROGRAM p\nVAR a ; b : INT; END_VAR\na := b;\nEND_PROGRAM", "2:7"},
      {"PROGRAM\nVAR a : INT; END_VAR\na := 1;\nEND_PROGRAM", "2:1"},
      {"a := 1;\nPROGRAM p\nEND_PROGRAM", "1:1"},
      {"PROGRAM p END_PROGRAM\nx := 1; y := 2;\nPROGRAM q END_PROGRAM", "2:1"},
      {"FUNCTION f INT\nf := 1;\nEND_FUNCTION\nPROGRAM p VAR a : INT; END_VAR a := f(); "
       "END_PROGRAM",
       "1:12"},
      {"FUNCTION f : INT END_FUNCTON\nPROGRAM p VAR a : INT; END_VAR a := f(); END_PROGRAM",
       "1:18"},
      {"FUNCTION f :\nVAR_INPUT a : INT; END_VAR\nf := 1;\nEND_FUNCTION\nPROGRAM p VAR a : INT; "
       "END_VAR a := f(1); END_PROGRAM",
       "2:1"},
      {"FUNCTON f : INT\nf := 1;\nEND_FUNCTION\nPROGRAM p END_PROGRAM", "1:1"},
      {"FUNCTION_BLOCK fb\nVAR_INPUT x : INT; END_VAR\nEND_FUNCTIONBLOCK\nPROGRAM p VAR f : fb; "
       "END_VAR f(x := 1); END_PROGRAM",
       "3:1"},
      {"PROGRAM p\nVAR_INPTU a : INT; END_VAR\na := 1;\nEND_PROGRAM", "2:1"},
      {"PROGRAM p\nVAR a : ARRAY[1.5] OF INT; b : INT; END_VAR\nb := 1;\nEND_PROGRAM", "2:18"},
      {"PROGRAM p\nVAR a : ARRAY[1..5 OF INT; b : INT; END_VAR\nb := 1;\nEND_PROGRAM", "2:20"},
      {"TYPE t : STRUCT a : INT; b INT; END_STRUCT END_TYPE\nPROGRAM p VAR x : t; END_VAR x.a := "
       "1; END_PROGRAM",
       "1:28"},
      {"TYPE t STRUCT a : INT; END_STRUCT END_TYPE\nPROGRAM p VAR x : t; END_VAR x.a := 1; "
       "END_PROGRAM",
       "1:8"},
      {"TYPE t : (A,, B); END_TYPE\nTYPE u : STRUCT a : ARRAY[1..] OF INT; END_STRUCT END_TYPE\n"
       "PROGRAM p VAR x : t; y : u; i : INT; END_VAR i := y.a[1] + SHL(x, 1);\n"
       "i := LEN(x) + LEN(LEFT(x, 1)) + LIMIT(0, x, 1); END_PROGRAM",
       "1:13 2:30"},
      {"TYPE t : (A, B C); END_TYPE\nPROGRAM p END_PROGRAM", "1:16"},
      {"VAR_GLOBAL g : INT;\nPROGRAM p g := 1; END_PROGRAM", "2:1"},
      {"PROGRAM p\nVAR a AT %QX : INT; b : INT; END_VAR\nb := a;\nEND_PROGRAM", "2:10"},
      {"PROGRAM p VAR a : INT := 5 b : INT; END_VAR\na := b;\nEND_PROGRAM", "1:28"},
      {"CONFIGURATION c\nRESOURCE r ON x\nTASK t(INTERVAL = T#1s);\nPROGRAM a WITH t : "
       "p;\nEND_RESOURCE\nEND_CONFIGURATION\nPROGRAM p END_PROGRAM",
       "3:8"},
      {"PROGRAM p.q\nEND_PROGRAM", "1:10"},
  };
  for (const Broken& row : files) EXPECT_EQ(places(row.source), row.errors) << row.source;
}

}  // namespace
}  // namespace refhost
