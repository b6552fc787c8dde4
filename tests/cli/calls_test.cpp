// What calls give, take and change, run as programs.
#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

class Calls : public Velc {
 protected:
  void expectValues(const std::string& units, const std::string& variables, const std::string& body,
                    const std::string& values) const {
    write("p.st", units + "PROGRAM P VAR " + variables + " END_VAR\n" + body + "\nEND_PROGRAM\n");
    const Outcome outcome = velc("run p.st --scans 2");
    EXPECT_EQ(values, outcome.out) << outcome.err;
  }
};

TEST_F(Calls, InstancesKeepWhatACallLeavesOut) {
  expectValues(
      "FUNCTION_BLOCK B VAR_INPUT a : INT := 5; b : INT; END_VAR\n"
      "VAR_OUTPUT o : INT; q : BOOL; w : BYTE; END_VAR VAR_IN_OUT io : INT; END_VAR\n"
      "o := o + a + b; io := io + 1; q := b > 0; w := 16#0F; END_FUNCTION_BLOCK\n"
      "FUNCTION Start VAR_IN_OUT t : TON; c : B; END_VAR VAR_INPUT n : INT; END_VAR\n"
      "t(IN := TRUE, PT := T#1s); c.a := n; END_FUNCTION\n"
      "FUNCTION_BLOCK Outer VAR_IN_OUT t : TON; END_VAR VAR_OUTPUT et : TIME; END_VAR\n"
      "t(); et := t.ET; END_FUNCTION_BLOCK\n",
      "c : B; i, j : INT; nq : BOOL; w : BYTE; t : TON; o : Outer; et : TIME;",
      "c(b := 2, io := i, o => j, NOT q => nq, NOT w => w);\n"
      "c(io := i); c.b := 7; c(3, io := i);\n"
      "Start(t := t, c := c, n := 4); o(t := t); et := o.et;",
      "i = 6\nj = 30\nnq = FALSE\nw = 16#F0\net = T#10ms\n");
}

TEST_F(Calls, FunctionsTakeDefaultsAndGiveOutputs) {
  expectValues(
      "FUNCTION K : INT VAR CONSTANT c : INT := 7; END_VAR\n"
      "VAR_INPUT a : INT := c; b : INT := 3; s : STRING[4] := 'def'; END_VAR\n"
      "VAR_OUTPUT neg : BOOL; t : STRING[6]; END_VAR\n"
      "K := a * 100 + b; neg := a < 0; t := CONCAT(s, 'xyz'); END_FUNCTION\n"
      "FUNCTION A : INT VAR_INPUT p : ARRAY[1..3] OF INT := [4, 2(c)]; n : INT := 1;\n"
      "q : STRUCT x, y : INT := 7; END_STRUCT; END_VAR VAR CONSTANT c : INT := 6; END_VAR\n"
      "A := p[1] * 1000 + p[3] * 100 + q.y * 10 + n; END_FUNCTION\n"
      "FUNCTION Double VAR_IN_OUT s : STRING[6]; END_VAR s := CONCAT(s, s); END_FUNCTION\n"
      "FUNCTION Fac : LINT VAR_INPUT n : LINT; END_VAR\n"
      "IF n <= 1 THEN Fac := 1; ELSE Fac := n * Fac(n - 1); END_IF; END_FUNCTION\n"
      // The program's own function takes the place of the standard's.
      "FUNCTION LEN : INT VAR_INPUT s : STRING; END_VAR LEN := -1; END_FUNCTION\n",
      "a, b, c, d : INT; pos, neg : BOOL; t : STRING[3]; u : STRING[6]; f : LINT;",
      "a := K(); b := K(b := 1, NOT neg => pos, t => t); c := K(-1, s := t, neg => neg, t => u);\n"
      "Double(s := u); K(1, 2); f := Fac(10) + LEN('abc'); d := MAX(A(n := 2), A());",
      "a = 703\nb = 701\nc = -97\nd = 4672\npos = TRUE\nneg = TRUE\nt = 'def'\nu = 'defxyz'\nf = "
      "3628799\n");
}

TEST_F(Calls, OperandsAreEvaluatedOnceFromTheLeft) {
  const char* const grow =
      "FUNCTION G : INT VAR_IN_OUT x : INT; END_VAR x := x * 2 + 1; G := x; END_FUNCTION\n"
      "FUNCTION H : INT VAR_IN_OUT x : INT; END_VAR H := -G(x); END_FUNCTION\n"
      "FUNCTION T : STRING VAR_IN_OUT x : INT; END_VAR x := x + 1; T := INT_TO_STRING(x);\n"
      "END_FUNCTION\n"
      "FUNCTION M : INT VAR_INPUT d : INT; END_VAR %MW0 := %MW0 + d; M := %MW0; END_FUNCTION\n"
      "FUNCTION V : INT VAR_INPUT d : INT; END_VAR V := M(d); END_FUNCTION\n"
      "FUNCTION L : INT VAR_INPUT a, b, c : INT; END_VAR L := a * 100 + b * 10 + c; END_FUNCTION\n";
  expectValues(
      grow, "n, a, b, c, d, e, f, g, h, loops : INT; less : BOOL; s : STRING;",
      "n := 1; a := L(G(n), n, G(n));\n"
      "n := 1; b := n + G(n) * 10 + n * 100;\n"
      "n := 1; c := LIMIT(0, G(n), 100) * 10 + n;\n"
      "n := 1; d := L(c := H(n), a := n, b := n);\n"
      "n := 1; e := MAX(n, MIN(G(n), G(n)));\n"
      "n := 1; less := n < G(n) AND G(n) = n;\n"
      "n := 1; s := CONCAT(T(n), T(n), INT_TO_STRING(n));\n"
      "n := 1; IF n > 1 AND_THEN G(n) > 0 OR_ELSE G(n) = 3 OR_ELSE G(n) > 0 THEN h := n; END_IF;\n"
      "g := L(V(1), %MW0, V(1));\n"
      "n := 0; WHILE G(n) < 20 DO loops := loops + 1; END_WHILE;\n"
      "n := 0; IF n > 0 THEN f := 1; ELSIF G(n) > 0 THEN f := n; END_IF;",
      "n = 1\na = 337\nb = 331\nc = 33\nd = 327\ne = 3\nf = 1\ng = 334\nh = 3\nloops = 8\nless = "
      "TRUE\n"
      "s = '233'\n");
}

TEST_F(Calls, AreMadeWhereEnIsTrue) {
  expectValues(
      "FUNCTION N : INT VAR_IN_OUT x : INT; END_VAR x := x + 1; N := x; END_FUNCTION\n"
      "FUNCTION S : STRING VAR_INPUT v : STRING; END_VAR S := v; END_FUNCTION\n"
      "FUNCTION_BLOCK Own VAR_INPUT EN : INT; END_VAR VAR_OUTPUT ENO : INT; END_VAR\n"
      "ENO := EN + 1; END_FUNCTION_BLOCK\n",
      "n, a, b, c, d, e : INT := 5; s, t : STRING := 'x'; k : CTU; o : Own; p, q, r : BOOL;",
      // What n exceeds is so in the second scan only.
      "a := N(EN := n > 6, x := n, ENO => p);\n"
      "n := n + INT#1; N(x := n, EN := TRUE, NOT ENO => r);\n"
      "b := LIMIT(EN := p, MN := 0, IN := N(n), MX := 99);\n"
      "c := n + 10 * ADD(EN := n > 8, IN1 := N(n), IN2 := 1) + n;\n"
      "k(EN := n > 8, CU := TRUE, PV := 1, ENO => q);\n"
      "o(EN := n, ENO => d); e := N(x := n, EN := n < 0, ENO => p) + BOOL_TO_INT(p);\n"
      "s := CONCAT(S(EN := q, 'y'), S(s, ENO => q)); t := S(EN := n < 0, 'z');",
      "n = 12\na = 8\nb = 11\nc = 153\nd = 13\ne = 0\ns = 'yx'\nt = 'x'\n"
      "p = FALSE\nq = TRUE\nr = FALSE\n");
}

TEST_F(Calls, TextsMayBeMadeOfThemselves) {
  expectValues(
      "FUNCTION_BLOCK B VAR_OUTPUT s : STRING := 'b'; END_VAR s := CONCAT('<', whole.s, '>');\n"
      "END_FUNCTION_BLOCK\n"
      "FUNCTION Wrap VAR_IN_OUT a : STRING; END_VAR\n"
      "g := CONCAT('<', a); a := CONCAT('[', g); END_FUNCTION\n"
      "VAR_GLOBAL whole : B; g : STRING := 'g'; END_VAR\n",
      "s, t, u, v, w : STRING := 'abc'; p : POINTER TO STRING;",
      "p := ADR(t); s := CONCAT('<', s); t := INSERT('()', p^, 1);\n"
      "p := ADR(u); u := CONCAT('<', p[0]); Wrap(g); v := g; whole(); w := whole.s; p := NULL;",
      "s = '<<abc'\nt = '((abc))'\nu = '<<abc'\nv = '[<[<g'\nw = '<<b>>'\np = NULL\n");
}

TEST_F(Calls, InputsNestNoDeeperThanOtherExpressions) {
  std::string inputs = "i";
  for (int i = 0; i < 500; ++i) inputs += ", i";
  writeProgram("p.st", "i : INT;", "i := ADD(" + inputs + ", ADD(" + inputs + "));");
  const Outcome outcome = velc("check p.st");
  EXPECT_EQ(1, outcome.code);
  EXPECT_NE(std::string::npos, outcome.err.find("Nested deeper than 1000 levels")) << outcome.err;
}

}  // namespace
}  // namespace velc
