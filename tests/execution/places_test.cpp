// Variables that stand for others: references, and arguments for parameters of every kind.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/execution/program.h"

namespace execution {
namespace {

// Runs it; `expected` are INT variables with their values, as "x=1 y=2".
void expectIntegers(Program& program, const std::string& expected) {
  std::istringstream all(expected);
  int number = 0;
  for (std::string name; std::getline(all >> std::ws, name, '=') && all >> number;) {
    program.expectVariable(name, value("INT", number));
  }
  program.run();
}

TEST(References, StandForTheVariablesToWhichTheyAreBound) {
  Program program;
  program.units =
      "TYPE Pt : STRUCT x, y : INT; END_STRUCT; H : STRUCT r : REFERENCE TO INT := g;\n"
      "s : REFERENCE TO STRING[5]; next : REFERENCE TO H; END_STRUCT; END_TYPE\n"
      "VAR_GLOBAL g : INT := 3; gr : REFERENCE TO INT REF= g;\n"
      "arr : ARRAY[1..3] OF INT := [7, 8, 9]; pt, qt : Pt; t : STRING[5] := 'abc';\n"
      "h, h2 : H := (s := t); END_VAR\n"
      "FUNCTION_BLOCK A VAR_IN_OUT b : B; END_VAR VAR_OUTPUT n : INT; END_VAR n := b.k;\n"
      "END_FUNCTION_BLOCK\n"
      "FUNCTION_BLOCK B VAR a : A; END_VAR VAR_OUTPUT k : INT := 8; END_VAR END_FUNCTION_BLOCK\n"
      "FUNCTION_BLOCK C VAR_INPUT r : REFERENCE TO INT; END_VAR VAR_OUTPUT o : INT; END_VAR\n"
      "IF __ISVALIDREF(r) THEN r := r + 1; o := r * 2; END_IF END_FUNCTION_BLOCK\n"
      "FUNCTION F : INT VAR_INPUT r : REFERENCE TO INT := g; s : REFERENCE TO STRING[5]; END_VAR\n"
      "VAR l : REFERENCE TO INT; END_VAR l REF= r; l := l + 10;\n"
      "IF __ISVALIDREF(s) THEN s := 'done'; END_IF F := r; END_FUNCTION\n"
      "FUNCTION Inc : INT VAR_IN_OUT i : INT; END_VAR i := i + 1; Inc := i; END_FUNCTION\n";
  program.variables =
      "x : INT := 1; y, re, v, f1, f2, i : INT; r : REFERENCE TO INT := x; p : POINTER TO INT;\n"
      "a1, a2, a3, px, py, reference, ref, len : INT;\n"
      "rp : REFERENCE TO Pt; c : C; rc : REFERENCE TO C; s : REFERENCE TO STRING[5] REF= t;\n"
      "ra : REFERENCE TO ARRAY[1..3] OF INT; a : A; b : B; w : WORD;\n"
      "rw : REFERENCE TO WORD; co, sz, ak : INT; real : REAL; rr : REFERENCE TO INT;\n";
  program.body =
      "reference := 2; ref := reference + 1; IF ref=3 THEN ref := 4; END_IF\n"
      "r := 5; y := r + 1; p := ADR(r); p^ := p^ + 1;\n"
      "r REF= arr[3]; r := 90; r REF= p^; r := r + 100;\n"
      "rp REF= pt; rp.x := 4; rp.y := rp.x + r; qt := rp; px := qt.x; r REF= rp.y;\n"
      "c(r := r); c(); rc REF= c; rc(); c.r := c.r + 1; co := rc.o; py := pt.y;\n"
      "h.r := h.r + 1; h2.r REF= v; h2.r := 77; h.next REF= h2; h.next.r := h.next.r + 1;\n"
      "h.s := CONCAT(h.s, 'xy'); s := CONCAT(h2.s, 'z'); len := LEN(s);\n"
      "ra REF= arr; ra[2] := 12; ra[co] := 13; a1 := arr[1]; a2 := arr[2]; a3 := arr[3];\n"
      "sz := TO_INT(SIZEOF(ra) + SIZEOF(rp)); gr := gr + 1; f1 := F(r := x, s := s); f2 := F();\n"
      "r REF= 0; IF NOT __ISVALIDREF(r) THEN r REF= re; END_IF; r := 6; r := Inc(r) + r;\n"
      "a(b := b); ak := a.n; rw REF= w; rw.3 := TRUE; i := TO_INT(w); FOR r := 1 TO 3 DO ;\n"
      "END_FOR; real := 1.99999; p := ADR(real); rr REF= p^; rr := 0; i := i + TO_INT(real * "
      "1000);\n";
  expectIntegers(program,
                 "x=116 y=6 px=4 py=114 co=226 v=78 len=5 a1=7 a2=12 a3=13 sz=10 f1=116 f2=15 re=4 "
                 "ak=8 i=2000 ref=4");
}

TEST(Places, AreEvaluatedBeforeWhatFollowsThem) {
  Program program;
  program.units =
      "TYPE R : STRUCT r : REFERENCE TO INT; END_STRUCT; END_TYPE VAR_GLOBAL rs : ARRAY[1..3] OF "
      "R;\n"
      "g : INT := 1; gp : POINTER TO INT; one, two : INT;\n"
      "a : ARRAY[0..3] OF INT := [10, 11, 12, 13]; m : ARRAY[0..2, 0..2] OF INT;\n"
      "s : ARRAY[0..3] OF STRING[3]; w : ARRAY[0..3] OF WORD; END_VAR\n"
      "FUNCTION F : INT g := g + 1; gp := ADR(two); F := 50; END_FUNCTION\n"
      "FUNCTION S : STRING[3] g := g + 1; S := 'x'; END_FUNCTION\n"
      "FUNCTION H : INT VAR_IN_OUT c : INT; END_VAR c := c + 1; H := c; END_FUNCTION\n"
      "FUNCTION Io : INT VAR_IN_OUT a : INT; END_VAR VAR_INPUT b : INT; END_VAR\n"
      "VAR_OUTPUT o : INT; END_VAR Io := a; a := b; o := 9; g := 3; END_FUNCTION\n"
      "FUNCTION_BLOCK B VAR_OUTPUT i, o : INT; END_VAR i := 3; o := 70; END_FUNCTION_BLOCK\n";
  program.variables =
      "k, r, x, y, z, v, n, m20, m02, a1, a2, a3, m2, len, w2, d, loops, up : INT; fb : B; small : "
      "USINT;\n"
      "neg : SINT := -1; far : UINT := 40000; ul : ULINT; li : LINT;\n"
      "big : ULINT := 16#FFFFFFFFFFFFFFFF;\n";
  program.body =
      "a[g] := F(); a1 := a[1]; r := Io(a[k], H(k), o => a[g]); a2 := a[2]; d := a[0];\n"
      "gp := ADR(one); gp^ := F(); d := d + one; m[H(x), H(x)] := H(x); m2 := m[1, 2]; g := 1; "
      "rs[H(z)].r REF= m[H(z), 0]; rs[1].r := 44; m20 := m[2, 0]; gp := ADR(m[H(v) - 1, H(v)]); "
      "gp^ := 45; m02 := m[0, 2]; "
      "s[g] := S();\n"
      "len := LEN(s[1]); w[H(y)].%B1 := INT_TO_BYTE(H(y)); w2 := TO_INT(w[1]);\n"
      "n := 1; fb(i => n, o => a[n]); a3 := a[1];\n"
      "FOR small := 5 TO neg BY -1 DO loops := loops + 1; END_FOR;\n"
      "FOR up := 32766 TO far DO loops := loops + 10; END_FOR;\n"
      "FOR ul := 2 TO neg BY -1 DO loops := loops + 100; END_FOR;\n"
      "FOR ul := 2 TO neg DO loops := -1; END_FOR;\n"
      "FOR li := 9223372036854775806 TO big DO loops := loops + 1000; END_FOR;\n";
  expectIntegers(program, "a1=50 r=10 a2=9 d=51 m2=3 m20=44 m02=45 len=1 w2=512 a3=70 loops=2326");
}

TEST(OpenArrays, TakeArraysOfAnyBounds) {
  Program program;
  program.units =
      "TYPE R3 : ARRAY[1..3] OF INT; END_TYPE VAR_GLOBAL a : R3; b : ARRAY[-2..2] OF INT;\n"
      "g : ARRAY[0..1, 2..4, -1..0] OF INT; t : ARRAY[5..6] OF STRING[4] := ['ab', 'cd'];\n"
      "r : ARRAY[0..1] OF R3; END_VAR VAR_GLOBAL CONSTANT k : ARRAY[1..2] OF INT := [4, 5]; "
      "END_VAR\n"
      "FUNCTION Sum : INT VAR_INPUT a : ARRAY[*] OF INT; END_VAR VAR i : DINT; END_VAR FOR i :=\n"
      "LOWER_BOUND(a, 1) TO UPPER_BOUND(a, 1) DO Sum := Sum + a[i]; END_FOR END_FUNCTION\n"
      "FUNCTION Fill VAR_IN_OUT a : ARRAY[*] OF INT; END_VAR VAR_INPUT v : INT; END_VAR VAR i :\n"
      "DINT; END_VAR FOR i := LOWER_BOUND(a, 1) TO UPPER_BOUND(a, 1) DO a[i] := v + TO_INT(i);\n"
      "END_FOR a[1000] := a[1000] + 100; a[-5] := a[-5] + 200; END_FUNCTION\n"
      "FUNCTION Pass : INT VAR_IN_OUT a : ARRAY[*] OF INT; END_VAR Fill(a, 10); Fill(a := a, v :=\n"
      "1); Pass := Sum(a); END_FUNCTION FUNCTION Grid : INT VAR_IN_OUT g : ARRAY[*, *, *] OF INT;\n"
      "END_VAR VAR i, j, k : DINT; d : INT; END_VAR\n"
      "FOR i := LOWER_BOUND(g, 1) TO UPPER_BOUND(g, 1) DO FOR j := LOWER_BOUND(g, 2) TO\n"
      "UPPER_BOUND(g, 2) DO FOR k := LOWER_BOUND(g, 3) TO UPPER_BOUND(g, 3) DO g[i, j, k] :=\n"
      "TO_INT(i * 100 + j * 10 + k); END_FOR END_FOR END_FOR FOR d := 1 TO 4 DO Grid := Grid * 10 "
      "+\n"
      "TO_INT(UPPER_BOUND(g, d) - LOWER_BOUND(ARR := g, DIM := d)); END_FOR END_FUNCTION\n"
      "FUNCTION_BLOCK FB VAR_IN_OUT s : ARRAY[*] OF STRING[4]; r : ARRAY[*] OF R3; END_VAR\n"
      "VAR_OUTPUT n : INT; END_VAR s[LOWER_BOUND(s, 1)] := CONCAT(s[UPPER_BOUND(s, 1)], 'x');\n"
      "n := TO_INT(UPPER_BOUND(r, 1)); r[n][2] := 77; r[n - 1] := r[n]; END_FUNCTION_BLOCK\n"
      "FUNCTION Inc : INT VAR_IN_OUT i : INT; END_VAR i := i + 1; Inc := i; END_FUNCTION\n"
      "FUNCTION One : INT VAR_IN_OUT a : ARRAY[*] OF INT; END_VAR One := Inc(a[2]) + MAX(a[2], "
      "3);\n"
      "a[2].3 := TRUE; END_FUNCTION\n";
  program.variables =
      "x, y, z, w, o, q, g1, g12, a2, n, r2, ts : INT; f : FB; pa : POINTER TO R3; u : ULINT;\n"
      "ra : REFERENCE TO R3; c : INT(LOWER_BOUND(b, 1)..UPPER_BOUND(b, 1));\n";
  program.body =
      "x := Pass(a); y := Pass(b); z := Grid(g); f(s := t, r := r); pa := ADR(a); ra REF= a;\n"
      "w := Sum(pa^) + Sum(k) + Sum(r[1]) + Sum(ra); o := One(a); n := 2; u := NOT ULINT#0;\n"
      "q := TO_INT(LOWER_BOUND(b, 1)) * 100 + TO_INT(LOWER_BOUND(g, n) * 10 + UPPER_BOUND(g, u));\n"
      "g1 := g[0, 2, -1]; g12 := g[1, 4, 0]; a2 := a[2]; r2 := r[0][2]; ts := LEN(t[5]);\n";
  expectIntegers(program,
                 "x=309 y=305 z=1211 w=704 o=8 q=-180 g1=19 g12=140 a2=12 r2=77 ts=3 c=-2");
}

}  // namespace
}  // namespace execution
