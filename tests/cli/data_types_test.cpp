// What programs do with data types of their own.
#include <fmt/format.h>

#include "velc_fixture.h"

namespace velc {
namespace {

// Each row is a PROGRAM with all the variables.
TEST_F(Velc, ComputesWithDataTypes) {
  const char* const types =
      "TYPE Table : ARRAY[0..Last, -1..1] OF INT := [1, 2, 3, 2(9)];\n"
      "Index : (First, Last := Top); Level : INT(-10..10); Ramp : INT := 15; END_TYPE\n"
      "TYPE Node : STRUCT next : POINTER TO Node; value : INT := 4; END_STRUCT END_TYPE\n"
      "TYPE Point : STRUCT x, y : INT := 3; tag : STRING[8] := 'pt'; END_STRUCT;\n"
      "Line : STRUCT a, b : Point := (x := 7); n : ARRAY[1..3] OF Ramp; END_STRUCT END_TYPE\n"
      "FUNCTION_BLOCK Counter VAR_INPUT inc : INT := 1; p : POINTER TO INT; END_VAR\n"
      "VAR_OUTPUT total : INT; END_VAR total := total + inc; p^ := total; END_FUNCTION_BLOCK\n"
      "FUNCTION sum : INT VAR_INPUT p : POINTER TO ARRAY[0..32000] OF BYTE; n : INT; END_VAR\n"
      "VAR i : INT; END_VAR FOR i := 0 TO n - 1 DO sum := sum + p^[i]; END_FOR END_FUNCTION\n"
      "FUNCTION mirror : Point VAR_INPUT q : Point; END_VAR VAR_IN_OUT t : Table; END_VAR\n"
      "mirror := q; mirror.x := -q.x; t[Last, 0] := 77; END_FUNCTION\n"
      "FUNCTION ends : STRING[5] VAR_INPUT s : STRING[5]; END_VAR VAR_OUTPUT tail : STRING[5];\n"
      "END_VAR VAR p : POINTER TO BYTE; END_VAR ends := 'xb'; p := ADR(ends); p^ := 65;\n"
      "tail := s; p := ADR(tail); p^ := 90; tail := CONCAT(tail, s); END_FUNCTION\n"
      "VAR_GLOBAL CONSTANT Top : INT := 3; END_VAR VAR_GLOBAL values : ARRAY[1..16] OF INT; "
      "END_VAR\n";
  const char* const variables =
      "VAR a : ARRAY[1..N] OF INT := [1, 2(5), 8];\n"
      "old : ARRAY[1..3] OF INT := 1, 2(4); t : Table; l : Line := (a := (y := 2), n := [1(6)]);\n"
      "lv : Level; st : (Idle, Run, Stop); fbs : ARRAY[0..1] OF Counter := [(inc := 10)];\n"
      "i, s : INT; pi : POINTER TO INT; r : REF_TO INT; w : DWORD := 16#01020304; m : Point;\n"
      "node, other : Node; pn : POINTER TO Node; texts : ARRAY[0..2] OF STRING[5] := ['a', 'b'];\n"
      "f : REAL := 1.0; pd : POINTER TO DWORD; pt : POINTER TO STRING[5]; pc : POINTER TO BYTE; "
      "rep : ARRAY[1..4] OF INT := [N(6)];\n"
      "anon : STRUCT q : ARRAY[0..1] OF STRUCT z : INT := N; END_STRUCT; END_STRUCT;\n"
      "big : ARRAY[1..2000] OF INT := [1000(7), 1000(0)]; rs : ARRAY[0..1] OF Line;\n"
      "END_VAR VAR CONSTANT N : INT := 4; END_VAR VAR_OUTPUT ";
  // Statements, and the value that `v` has after them.
  const std::pair<const char*, const char*> rows[] = {
      {"m.tag := ends(texts[0], tail => texts[1]);\n"
       "IF m.tag = 'Ab' AND texts[1] = 'Za' THEN v := 1; END_IF",
       "1"},
      {"pt := ADR(texts[1]); pc := ADR(pt^); pc^ := 67; pc := ADR(pt^) + 1; pc^ := 68; v := 1; "
       "IF pt^ = 'CD' AND pt[-1] = 'a' THEN pt[1] := 'x'; pc := ADR(pt[1]); v := pc^; END_IF",
       "120"},
      {"v := t[0, 1] + t[1, -1] * 10 + t[1, 1] * 100 + t[Last, 1];", "93"},
      {"v := l.n[1] + l.n[2] + rs[1].n[3] + rs[1].b.x;", "43"},
      {"v := anon.q[1].z + rep[4] + big[1000] + big[1001];", "17"},
      {"i := 9; a[i] := 50; i := -5; a[i] := 60; v := a[4] + a[1];", "110"},
      {"i := 1; fbs[0](p := ADR(s)); fbs[i](p := ADR(s), inc := 5); v := fbs[0].total + s;", "15"},
      {"pi := ADR(a[2]); pi := pi + SIZEOF(INT); pi^ := 70; v := a[3] + pi[-1]; ", "75"},
      {"r := REF(l.a.x); r^ := 21; IF r <> NULL THEN v := l.a.x + 1; END_IF", "22"},
      {"v := sum(ADR(w), 4);", "10"},
      {"node.next := ADR(other); pn := ADR(node); v := pn^.next^.value; IF pn^.next^.next = NULL "
       "THEN v := v + 1; END_IF",
       "5"},
      {"m := mirror(l.a, t); v := m.x + m.y + t[3, 0];", "72"},
      {"pd := ADR(f); IF pd^ = 16#3F800000 THEN v := ADR(a[3]) - ADR(a[1]); END_IF", "4"},
      {"rs[0] := l; rs[0].a.tag := texts[1]; IF rs[0].a.tag = 'b' THEN v := rs[0].a.y; END_IF",
       "2"},
      {"v := SIZEOF(a) * 1000 + SIZEOF(texts[1]) * 100 + SIZEOF(l.n) + SIZEOF(t);", "8630"},
      {"m := SEL(TRUE, l.b, l.a); v := m.y; m := MOVE(l.b); v := v * 10 + m.y;", "23"},
  };
  std::string text = types;
  std::string expected;
  int number = 0;
  for (const auto& [statements, value] : rows) {
    text += fmt::format("PROGRAM R{0} {1}v : INT; END_VAR\n{2}\nvalues[{0}] := v; END_PROGRAM\n",
                        ++number, variables, statements);
    expected += (expected.empty() ? "values = [" : ", ") + std::string(value);
  }
  write("types.st", text);
  for (const char* const compiler : {"gcc", "clang"}) {
    const Outcome outcome = velc(fmt::format("run types.st --show values --compiler {}", compiler));
    ASSERT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out.substr(outcome.out.rfind("values = ")), expected + "]\n") << compiler;
  }
}

TEST_F(Velc, PrintsAndSetsPartsOfValues) {
  writeProgram("p.st",
               "a : ARRAY[1..2, -1..1] OF INT := [1, 2, 3, 4]; big : ARRAY[0..99999] OF BYTE;"
               "s : STRUCT x : REAL; t : ARRAY[0..1] OF STRING[3] := ['u']; inner : STRUCT e :"
               "(Off, On := 5) := On; f : R; END_STRUCT; END_STRUCT; l : ARRAY[3..4] OF STRUCT"
               " b : BOOL; c : SINT; END_STRUCT; e : (Red, Green); p : POINTER TO INT; f : R;",
               ";");
  write("q.st", read("p.st") + "FUNCTION_BLOCK R VAR x : INT; END_VAR END_FUNCTION_BLOCK");
  EXPECT_EQ(velc("run q.st --set e=green --set 'A[2, 0]=9' --set p.L[4].c=-1 --set s.T[1]=\\'ab\\'"
                 " --set s.inner.e=Off --set big[7]=16#FF")
                .out,
            "a = [1, 2, 3, 4, 9, 0]\nbig = [7(16#0), 16#FF, 99992(16#0)]\n"
            "s = (x := 0.0, t := ['u', 'ab'], inner := (e := Off))\n"
            "l = [(b := FALSE, c := 0), (b := FALSE, c := -1)]\ne = Green\np = NULL\n");
  for (const char* const setting :
       {"a[3,0]=1", "a[1]=1", "a=1", "s.y=1", "e=Blue", "f.x=1", "f=1"}) {
    EXPECT_EQ(velc("run q.st --set " + std::string(setting)).code, 2) << setting;
  }
}

}  // namespace
}  // namespace velc
