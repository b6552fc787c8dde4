#include "tests/refhost/translation.h"

namespace refhost {
namespace {

struct Row {
  const char* statement;
  std::string expected;  // a line for each message
};

std::string saidOf(const std::string& source) {
  return fmt::format("{}", fmt::join(said(*analysed(source)), "\n"));
}

void expectSaid(const char* variables, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(row.expected, saidOf(program(variables, row.statement))) << row.statement;
  }
}

std::string mayChange(const char* at, const char* code, const char* from, const char* to) {
  return fmt::format(
      "{} warning {} Implicit conversion from type '{}' to type '{}' : may change the symbol", at,
      code, from, to);
}
std::string loses(const char* at, const char* from, const char* to) {
  return fmt::format(
      "{} warning C0197 Implicit conversion from type '{}' to type '{}' : Possible loss of "
      "information;",
      at, from, to);
}
std::string refuses(const char* at, const char* from, const char* to) {
  return fmt::format("{} error C0032 '{}' cannot convert to '{}' type;", at, from, to);
}

TEST(Analysis, AssignmentsAreJudgedLikeTheOperatorsDo) {
  const char* const all =
      "b: BOOL; bt: BYTE; si: SINT; i: INT; d: DINT; l: LINT; u: UINT; r: REAL; lr: LREAL; t: "
      "TIME; "
      "lt: LTIME; s: STRING; w: WSTRING;";
  expectSaid(
      all,
      {
          {"i := si; l := u; r := i; lr := d; lt := t; r := 1; si := -128; bt := 16#FF;", ""},
          {"u := i;", mayChange("2:6", "C0195", "INT", "UINT")},
          {"i := u;", mayChange("2:6", "C0196", "UINT", "INT")},
          {"r := d;", mayChange("2:6", "C0197", "DINT", "REAL")},
          {"r := lr;", loses("2:6", "LREAL", "REAL")},
          {"i := d;", loses("2:6", "DINT", "INT")},
          {"si := bt;", mayChange("2:7", "C0196", "BYTE", "SINT")},
          {"si := 300;", "2:7 error C0001 The constant '300' is too large for data type 'INT';"},
          {"i := r;", refuses("2:6", "REAL", "INT")},
          {"b := 1; b := 0;", ""},
          {"b := 2;", refuses("2:6", "SINT", "BOOL")},
          {"s := w;", refuses("2:6", "WSTRING", "STRING")},
          {"s := MAX(s, 'a');",
           "2:10 error F002C The operator 'MAX' cannot be applied to 'STRING';"},
          {"s := SEL(b, s, w); s := SEL(b, 'a', s); s := SEL(b, s, x);",
           "2:16 error F002C The operator 'SEL' cannot be applied to 'WSTRING';\n"
           "2:56 error F0020 Unknown identifier 'x';"},
          {"t := lt;", refuses("2:6", "LTIME", "TIME")},
          // The operator has said so already, in the same words.
          {"r := MOVE(lr);", loses("2:11", "LREAL", "REAL")},
          // It has said so of its parameter, not of the assignment.
          {"r := REAL_TO_LREAL(lr);",
           loses("2:6", "LREAL", "REAL") + "\n" + loses("2:6", "LREAL", "REAL")},
          {"si := ((i));", loses("2:7", "INT", "SINT")},
          {"i := 32767 + 1; si := 100 + 20; i := 100 + 100;", loses("2:6", "DINT", "INT")},
          {"s := SEL(b, i + 1, i);", refuses("2:6", "INT", "STRING")},
          {"s := SEL(b, i + 1, i) * 2;", refuses("2:6", "INT", "STRING")},
          {"s := SEL(b, MOVE(w), w);", refuses("2:6", "WSTRING", "STRING")},
          {"b := SEL(b, i + 1, i) = 'x';",
           "2:6 error F002B The operator '=' cannot be applied to 'INVALID' and 'STRING';"},
          {"s := TO_STRING(SEL(b, i + 1, i));",
           "2:16 error F002C The operator 'TO_STRING' cannot be applied to 'INVALID';"},
          {"i := SEL(b, MOVE(s), s);", refuses("2:6", "STRING", "INT")},
          // The result type is that of IN; the host judges what the operator has not.
          {"si := LIMIT(0, d, 100);", loses("2:7", "DINT", "SINT")},
          // IN0 is no variable, so that SEL has no result type and nothing is judged.
          {"si := SEL(b, d + 1, l);", ""},
      });
}

TEST(Analysis, OperatorCallsAreChecked) {
  const char* const all =
      "g: BOOL; x, y: INT; d: DINT; u: UDINT; r: REAL; s: STRING; e: (red, green); pt: POINTER TO "
      "INT;"
      "a: ARRAY[0..1] OF BOOL; END_VAR VAR CONSTANT c: ARRAY[0..1] OF BOOL := [TRUE, TRUE];";
  const std::string count =
      "Too many parameters, too few parameters, or no variables assigned to the IN_OUT in PRG ";
  const std::string no = " error F002C The operator ";
  expectSaid(
      all,
      {
          {"y := limit(0, x);", "2:6 error C0040 " + count + "'limit';"},
          {"y := int_to_dint(x, x);", "2:6 error C0040 " + count + "'INT_TO_DINT';"},
          {"y := 1 + MAX(x);", "2:10 error C0040 " + count + "'MAX';"},
          {"y := SEL(1, x, y);", "2:6 error C0032 '1' expect 'BOOL' type;"},
          {"y := LIMIT(MN := 0, MX := 100, IN := x);", ""},
          {"y := LIMIT(MN := 0, XX := 1, IN := x);",
           "2:21 error F0027 'LIMIT' has no parameter 'XX' to be given here;"},
          {"y := MOVE(nowhere);", "2:11 error F0020 Unknown identifier 'nowhere';"},
          {"u := ADR(nowhere);", "2:10 error F0020 Unknown identifier 'nowhere';"},
          {"u := ADR(P);", "2:10 error F003A 'P' is not a value;"},
          {"u := SIZEOF(nowhere);", "2:6 error C0046 Identifier 'nowhere' is not defined;"},
          {"r := EXPT(r, 'x');",
           "2:14 error F002C The operator 'EXPT' cannot be applied to 'STRING';"},
          {"g := TO_BOOL(e); IRDBIT(%IX0.0, a[1]);", ""},
          {"g := TO_BOOL(a);",
           "2:14" + no + "'TO_BOOL' cannot be applied to 'ARRAY[0..1] OF BOOL';"},
          {"x := TO_INT(SEL(g, a[0], g));",
           "2:13" + no + "'TO_INT' cannot be applied to 'INVALID';"},
          {"x := TO_INT(a);", "2:13" + no + "'TO_INT' cannot be applied to 'ARRAY[0..1] OF BOOL';"},
          {"s := TO_STRING(pt);",
           "2:16" + no + "'TO_STRING' cannot be applied to 'POINTER TO INT';"},
          {"IRDBIT(%IX0.0, c[1]);", "2:1 error F0023 'c[1]' cannot be written;"},
          {"g := _READIDIRECT(nowhere);", "2:19 error C0221 Address 'nowhere' is not valid;"},
          {"ZRST(%MX99999.0, M0);",
           "2:6 error C0221 Address '%MX99999.0' is not valid;\n"
           "2:18 error C0220 This address(M0) is not supported;"},
          {"g := IWRBIT(%QX0.0, g);", "2:6 error F0026 The call of 'IWRBIT' has no result;"},
          {"IF ZSET(%MX0.0, %MX0.1) THEN END_IF;",
           "2:4 error F0026 The call of 'ZSET' has no result;"},
          // MOVE refuses what has no type without a word.
          {"d := MOVE(SEL(g, x + 1, y));", "2:6 error F0001 The call of 'MOVE' is not accepted;"},
      });
}

TEST(Analysis, TheHostNamesWhatItRefuses) {
  const char* const all =
      "b: BOOL; x: INT; r: REAL; t: TIME; s: STRING; END_VAR VAR CONSTANT k: INT := 5;";
  expectSaid(
      all,
      {
          {"nope := 1;", "2:1 error F0020 Unknown identifier 'nope';"},
          {"k := 1;", "2:1 error F0023 'k' cannot be written;"},
          {"x := b + 1;",
           "2:6 error F002B The operator '+' cannot be applied to 'BOOL' and 'SINT';"},
          {"x := x MOD r;",
           "2:6 error F002B The operator 'MOD' cannot be applied to 'INT' and 'REAL';"},
          {"b := s = x;",
           "2:6 error F002B The operator '=' cannot be applied to 'STRING' and 'INT';"},
          {"b := NOT t;", "2:10 error F002C The operator 'NOT' cannot be applied to 'TIME';"},
          {"IF x THEN END_IF;", "2:4 error F002D A condition must be of type 'BOOL', not 'INT';"},
          {"CASE r OF 1: ; END_CASE;",
           "2:6 error F002E A CASE selector must be of an integer type, not 'REAL';"},
          {"CASE x OF x: ; k + 1, 9..3: ; END_CASE;",
           "2:11 error F002F 'x' is not a constant integer;\n"
           "2:23 warning F003D The range '9..3' is empty;"},
          {"FOR r := 1 TO 2 DO END_FOR;",
           "2:5 error F0030 The control variable 'r' must be of an integer type;"},
          {"FOR x := 1 TO 2 BY 0 DO END_FOR;",
           "2:20 error F0031 The step of a FOR loop must not be 0;"},
          {"EXIT; WHILE b DO EXIT; END_WHILE; CONTINUE;",
           "2:1 error F0032 'EXIT' outside of a loop;\n"
           "2:35 error F0032 'CONTINUE' outside of a loop;"},
          {"b := x.%X3 AND_THEN b OR_ELSE x; x.%B1 := x.%W0;",
           "2:6 error F002B The operator 'OR_ELSE' cannot be applied to 'BOOL' and 'INT';\n"
           "2:34 error F0007 Parts of a value other than its bits (%X) are not supported;\n"
           "2:43 error F0007 Parts of a value other than its bits (%X) are not supported;"},
          {"x.16 := TRUE; b := x.15;", "2:1 error F0038 Bit 16 is outside of type 'INT';"},
          {"nope(1);", "2:1 error F0020 Unknown identifier 'nope';"},
          {"x(1);", "2:1 error F0025 'x' cannot be called;"},
          {"x := P;", "2:6 error F003A 'P' is not a value;"},
          {"%MX99999.0 := b;", "2:1 error F0033 Address '%MX99999.0' is not valid;"},
      });
  EXPECT_EQ(
      "1:20 error F0034 Address '%MW0' does not fit type 'DINT';\n"
      "1:32 error F0021 'a' is already declared;\n"
      "1:43 error F0022 Unknown type 'NoType';\n"
      "1:61 error F0036 '0' is not a string length from 1 to 32767;",
      saidOf(program("a AT %MW0: DINT; a: INT; z: NoType; q: STRING[0];", "")));
  EXPECT_EQ("1:18 error F0007 The type 'LTOD' is not supported;",
            saidOf(program("a: LTOD; b: Ltod;", "a := b;")));
}

TEST(Analysis, CallsOfUnitsAreChecked) {
  const std::string units =
      "FUNCTION F : INT VAR_INPUT a, b: INT; END_VAR VAR_IN_OUT io: INT; END_VAR "
      "VAR_OUTPUT q: DINT; END_VAR F := a; END_FUNCTION "
      "FUNCTION_BLOCK B VAR_INPUT i: INT; END_VAR VAR_OUTPUT o: INT; END_VAR VAR v: INT; END_VAR "
      "END_FUNCTION_BLOCK PROGRAM P VAR x: INT; d: DINT; fb: B; END_VAR\n";
  const Row rows[] = {
      {"x := F(1, 2, x); x := F(a := 1, io := x, q => d); fb(i := 3, o => x); x := fb.o;", ""},
      {"x := F(1, 2, x, 4);", "2:17 error F0029 Too many parameters in the call of 'F';"},
      {"x := F(a := 1, a := 2, io := x);", "2:16 error F002A The parameter 'a' is given twice;"},
      {"x := F(1, io := x, 2);",
       "2:20 error F003B A positional parameter follows a named one in the call of 'F';"},
      {"x := F(1, 2);", "2:6 error F0028 The in-out parameter 'io' of 'F' is not assigned;"},
      {"x := F(1, 2, d);",
       "2:14 error F0039 'd' cannot be passed to the in-out parameter 'io' of type 'INT';"},
      {"x := F(1, 2, 3);",
       "2:14 error F0039 '3' cannot be passed to the in-out parameter 'io' of type 'INT';"},
      {"x := F(a := 1, q := d, io := x);",
       "2:16 error F0027 'F' has no parameter 'q' to be given here;"},
      {"x := F(d, 2, x) + d;", loses("2:8", "DINT", "INT") + "\n" + loses("2:6", "DINT", "INT")},
      {"x := F(1.5, 2, x);", refuses("2:8", "REAL", "INT")},
      {"x := fb(i := 1);", "2:6 error F0026 The call of 'fb' has no result;"},
      {"x := fb.v;", "2:9 error F0024 'fb' has no member 'v';"},
      {"fb.o := 1;", "2:1 error F0023 'fb.o' cannot be written;"},
      {"x := UDINT_TO_INT(SIZEOF(fb.o) + SIZEOF(B) + ADR(fb.o) + SIZEOF(STRING[3]));", ""},
      {"d := SIZEOF(WSTRING[0]);",
       "2:21 error F0036 '0' is not a string length from 1 to 32767;\n" +
           mayChange("2:6", "C0196", "UDINT", "DINT")},
      {"x := F(STRING);", "2:8 error F003A 'STRING' is not a value;"},
      {"B(i := 1);", "2:1 error F0025 'B' cannot be called;"},
  };
  for (const auto& [statement, expected] : rows) {
    EXPECT_EQ(expected, saidOf(units + statement + "\nEND_PROGRAM")) << statement;
  }
  EXPECT_EQ(
      "1:33 error F003E The parameter 'a' cannot have an address: it stands for what a call gives "
      "it;",
      saidOf("FUNCTION F : INT VAR_INPUT a AT %MW0: INT; END_VAR F := a; END_FUNCTION"));
  EXPECT_EQ("1:14 error F0022 Unknown type 'INTT';",
            saidOf("FUNCTION F : INTT END_FUNCTION " + program("x: INT;", "x := F() + ABS(F());")));
  EXPECT_EQ("1:10 error F0021 'MAX' is already declared;",
            saidOf("FUNCTION MAX : INT MAX := 1; END_FUNCTION"));
  EXPECT_EQ("1:16 error F0035 The function block 'A' contains itself;",
            saidOf("FUNCTION_BLOCK A VAR b: B; END_VAR END_FUNCTION_BLOCK "
                   "FUNCTION_BLOCK B VAR a: A; END_VAR END_FUNCTION_BLOCK"));
}

}  // namespace
}  // namespace refhost
