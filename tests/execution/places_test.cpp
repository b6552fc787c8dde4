// Variables that stand for others: references, and arguments for parameters of every kind.
#include <gtest/gtest.h>

#include "tests/execution/program.h"

namespace execution {
namespace {

void expectIntegers(Program& program, const std::vector<std::pair<const char*, int>>& expected) {
  for (const auto& [name, number] : expected) {
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
  expectIntegers(program, {{"x", 116},
                           {"y", 6},
                           {"px", 4},
                           {"py", 114},
                           {"co", 226},
                           {"v", 78},
                           {"len", 5},
                           {"a1", 7},
                           {"a2", 12},
                           {"a3", 13},
                           {"sz", 10},
                           {"f1", 116},
                           {"f2", 15},
                           {"re", 4},
                           {"ak", 8},
                           {"i", 2000},
                           {"ref", 4}});
}

}  // namespace
}  // namespace execution
