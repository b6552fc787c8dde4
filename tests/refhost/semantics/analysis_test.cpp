#include "tests/refhost/translation.h"

namespace refhost {
namespace {

using Rows = std::vector<std::pair<const char*, const char*>>;

void expectBrief(const std::string& declarations, const Rows& rows) {
  for (const auto& [statements, expected] : rows) {
    EXPECT_EQ(expected, brief(*analysed(declarations + "\n" + statements + "\nEND_PROGRAM\n")))
        << statements;
  }
}

TEST(Analysis, AssignmentsAreJudgedLikeTheOperatorsDo) {
  expectBrief(
      "PROGRAM P VAR b: BOOL; bt: BYTE; si: SINT; i: INT; d: DINT; l: LINT; u: UINT; r: REAL; lr: "
      "LREAL; t: TIME; lt: LTIME; s: STRING; w: WSTRING; END_VAR",
      {{"i := si; l := u; r := i; lr := d; lt := t; r := 1; si := -128; bt := 16#FF; u := i; i := "
        "u; r := d; r := lr; i := d; si := bt; si := 300; i := r; b := 1; b := 0; b := 2; s := w; "
        "s := MAX(s, 'a');",
        "82 ~C0195 INT, UINT; 90 ~C0196 UINT, INT; 98 ~C0197 DINT, REAL; 106 ~C0197 LREAL, REAL; "
        "115 ~C0197 DINT, INT; 124 ~C0196 BYTE, SINT; 134 C0001 300, INT; 144 C0032 REAL, INT; 168 "
        "C0032 2, BOOL; 176 C0032 WSTRING, STRING; 188 F002C MAX, STRING"},
       {"s := SEL(b, s, w); s := SEL(b, 'a', s); s := SEL(b, s, x); t := lt; r := MOVE(lr); r := "
        "REAL_TO_LREAL(lr); si := ((i)); i := 32767 + 1; si := 100 + 20; i := 100 + 100; s := "
        "SEL(b, i + 1, i);",
        "16 C0032 WSTRING, STRING; 56 F0020 x; 65 C0032 LTIME, TIME; 79 ~C0197 LREAL, REAL; 89 "
        "~C0197 LREAL, REAL; 114 ~C0197 INT, SINT; 126 ~C0197 DINT, INT; 174 C0032 INT, STRING"},
       {"s := SEL(b, i + 1, i) * 2; s := SEL(b, MOVE(w), w); b := SEL(b, i + 1, i) = 'x'; s := "
        "TO_STRING(SEL(b, i + 1, i)); i := SEL(b, MOVE(s), s); si := LIMIT(0, d, 100); si := "
        "SEL(b, d + 1, l);",
        "6 C0032 INT, STRING; 33 C0032 WSTRING, STRING; 58 F002B =, INT, STRING; 121 C0032 STRING, "
        "INT; 147 ~C0197 DINT, SINT; 171 ~C0197 LINT, SINT"},
       {"bt := SEL(b, 0, bt); u := LIMIT(1, u, 7); bt := MAX(1, bt); u := MUX(i, 0, u, 300); bt := "
        "MOVE(0); bt := MIN(1, 2); bt := MAX(bt, -1); bt := MIN(bt, 300); u := LIMIT(0, i, 9); i "
        ":= "
        "SEL(b, 0, i); u := SEL(b, 5, bt) * 2;",
        "123 ~C0195 INT, BYTE; 142 ~C0195 INT, BYTE; 161 ~C0195 INT, UINT"},
       {"i := MAX(0, d); i := MIN(0, -d); si := MAX(1, i); si := MAX(1, bt); i := MAX(1, 70000); i "
        ":= MAX(0, r); i := MAX(0, b); d := MAX(u, b); i := LIMIT(0, i, 5.5); i := LIMIT(0, i, "
        "TRUE); i := LIMIT(i, 0, b); i := LIMIT(0, b, 5); b := LIMIT(0, b, 1); r := MAX(0, d);",
        "6 ~C0197 DINT, INT; 22 ~C0197 DINT, INT; 40 ~C0197 INT, SINT; 57 ~C0196 BYTE, SINT; 74 "
        "~C0197 DINT, INT; 94 C0032 REAL, INT; 110 C0032 BOOL, INT; 133 F002B MAX, UINT, BOOL; 142 "
        "C0032 REAL, INT; 177 C0032 BOOL, INT; 201 C0032 BOOL, INT; 219 F002B LIMIT, BOOL, 0; 252 "
        "~C0197 DINT, REAL"}});
}

TEST(Analysis, OperatorCallsAreChecked) {
  expectBrief(
      "PROGRAM P VAR g: BOOL; x, y: INT; d: DINT; u: UDINT; r: REAL; s: STRING; e: (red, green); "
      "pt: POINTER TO INT;a: ARRAY[0..1] OF BOOL; END_VAR VAR CONSTANT c: ARRAY[0..1] OF BOOL := "
      "[TRUE, TRUE]; END_VAR",
      {{"y := limit(0, x); y := int_to_dint(x, x); y := 1 + MAX(x); y := SEL(1, x, y); y := "
        "LIMIT(MN := 0, MX := 100, IN := x); y := LIMIT(MN := 0, XX := 1, IN := x); y := "
        "MOVE(nowhere); u := ADR(nowhere);",
        "6 C0040 limit; 24 C0040 INT_TO_DINT; 52 C0040 MAX; 65 C0032 1, BOOL; 140 F0027 LIMIT, XX; "
        "169 F0020 nowhere; 188 F0020 nowhere"},
       {"u := ADR(P); u := SIZEOF(nowhere); r := EXPT(r, 'x'); g := TO_BOOL(e); IRDBIT(%IX0.0, "
        "a[1]); g := TO_BOOL(a); x := TO_INT(SEL(g, a[0], g)); x := TO_INT(a); s := TO_STRING(pt); "
        "IRDBIT(%IX0.0, c[1]);",
        "10 F003A P; 19 C0046 nowhere; 49 C0032 STRING, REAL; 107 F002C TO_BOOL, ARRAY[0..1] OF "
        "BOOL; 153 F002C TO_INT, ARRAY[0..1] OF BOOL; 172 F002C TO_STRING, POINTER TO INT; 177 "
        "F0023 c[1]"},
       {"g := _READIDIRECT(nowhere); ZRST(%MX99999.0, M0); g := IWRBIT(%QX0.0, g); IF ZSET(%MX0.0, "
        "%MX0.1) THEN END_IF; d := MOVE(SEL(g, x + 1, y));",
        "19 C0221 nowhere; 34 C0221 %MX99999.0; 46 C0220; 56 F0026 IWRBIT; 78 F0026 ZSET"}});
}

TEST(Analysis, CallsOfUnitsAreChecked) {
  expectBrief(
      "FUNCTION F : INT VAR_INPUT a, b: INT; END_VAR VAR_IN_OUT io: INT; END_VAR VAR_OUTPUT q: "
      "DINT; END_VAR F := a; END_FUNCTION FUNCTION_BLOCK B VAR_INPUT i: INT; END_VAR VAR_OUTPUT o: "
      "INT; END_VAR VAR v: INT; END_VAR END_FUNCTION_BLOCK PROGRAM P VAR x: INT; d: DINT; fb: B; "
      "END_VAR",
      {{"x := ABS(SEL(x > 1, -x, x)); x := MIN(SEL(x > 1, x - 1, x), 3) + MOVE(MUX(x, x + 1, d)); "
        "IF SEL(x > 1, x, 2) THEN END_IF; x := ABS(nosuch) + MAX(x, nosuch + 1);",
        "35 ~C0197 DINT, INT; 93 F002D BOOL, INT; 132 F0020 nosuch"},
       {"x := F(1, 2, x); x := F(a := 1, io := x, q => d); fb(i := 3, o => x); x := fb.o; x := "
        "F(1, 2, x, 4); x := F(a := 1, a := 2, io := x); x := F(1, io := x, 2); x := F(1, 2); x := "
        "F(1, 2, d);",
        "98 F0023 4; 117 F002A a; 154 F003B F; 163 F0028 io, F; 185 F0039 d, io, INT"},
       {"x := F(1, 2, 3); x := F(a := 1, q := d, io := x); x := F(d, 2, x) + d; x := F(1.5, 2, x); "
        "x := fb(i := 1); x := fb.v; fb.o := 1;",
        "14 F0039 3, io, INT; 33 F0027 F, q; 56 ~C0197 DINT, INT; 58 ~C0197 DINT, INT; 79 C0032 "
        "1.5, INT; 96 F0026 fb; 116 F0024 fb, v; 119 F0023 fb.o"},
       {"x := UDINT_TO_INT(SIZEOF(fb.o) + SIZEOF(B) + ADR(fb.o) + SIZEOF(STRING[3])); d := "
        "SIZEOF(WSTRING[0]); x := F(STRING); B(i := 1);",
        "83 ~C0196 UDINT, DINT; 98 F0036 0; 110 F003A STRING; 119 F0025 B"}});
}

}  // namespace
}  // namespace refhost
