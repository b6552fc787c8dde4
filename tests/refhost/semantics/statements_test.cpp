#include "tests/refhost/translation.h"

namespace refhost {
namespace {

TEST(Statements, AreJudgedInEveryPart) {
  const std::pair<const char*, const char*> rows[] = {
      {"c := Red; c := Color#Blue; c := Color.Green; i := c; si := Red; lv := 10; lv := -10; lv := "
       "i; pt := qt; a[1] := a[3]; i := a[i];",
       ""},
      {"b := 16#1; b := 1 = b; b := 0 <> b XOR 1; b := MOVE(1); b := SEL(b, 0, 1); b := MUX(i, b, "
       "0); i.3 := 1; IF 1 THEN ; END_IF; fb(io := i, EN := 0); %MX0.0 := 1; b := GT(b, 0); b := "
       "((0)); b := MOVE(SEL(b, 1, MOVE(0)));",
       ""},
      {"b := 2; b := INT#1; b := k; b := 1 - 1; b := NOT 1; b := SEL(1, b, b); b := b <> 2; b := "
       "i; i := b; b := BOOL_TO_INT(1) = 1;",
       "6 C0032 2, BOOL; 14 C0032 INT, BOOL; 26 C0032 INT, BOOL; 34 C0032 1 - 1, BOOL; 46 C0032 "
       "SINT, BOOL; 58 C0032 1, BOOL; 77 F002B <>, BOOL, 2; 90 C0032 INT, BOOL; 98 C0032 BOOL, "
       "INT; 106 C0032 BOOL_TO_INT, 1, SINT"},
      {"d := SEL(b, 1, 30000); i := -SEL(b, 0, 300); l := SEL(b, l, 7); r := SEL(b, 1, r); si := "
       "SEL(b, si, 5); lr := SEL(b, 1, 2.5); c := SEL(b, c, Red); d := SEL(b, i + 1, d);",
       ""},
      {"b := SEL(b, TRUE, i); b := SEL(b, b, 7); b := SEL(b, i + 5, TRUE); r := SEL(b, l, 1.5); t "
       ":= SEL(b, t, LTIME#1s); td := SEL(b, td, da); c := SEL(b, c, 77); i := SEL(b, i, 40000); d "
       ":= SEL(b, i, d); d := SEL(b, d, ud);",
       "19 C0032 INT, BOOL; 38 C0032 7, BOOL; 54 C0032 INT, BOOL; 83 C0032 1.5, LINT; 104 C0032 "
       "LTIME, TIME; 132 C0032 DATE, TOD; 152 ~F007D Color; 172 C0001 40000, DINT; 195 ~C0197 "
       "DINT, INT; 214 ~C0196 UDINT, DINT"},
      {"c := 2; c := j;", "6 ~F007D Color; 14 ~F007D Color"},
      {"c := Light#On; CASE c OF Red: ; On: ; Light#On: ; END_CASE; i := LEN; i := SEMA;",
       "6 C0032 Light, Color; 33 C0032 Light, Color; 39 C0032 Light, Color; 66 F003A LEN; 76 F003A "
       "SEMA"},
      {"c := Color#On; c := Red.x;", "12 F0024 Color, On; 25 F0024 Red, x"},
      {"si := c; r := c; u := c; s := c; i := pt;",
       "7 ~C0197 INT, SINT; 23 ~C0195 INT, UINT; 31 C0032 Color, STRING; 39 C0032 Pt, INT"},
      {"lv := 11; lv := -11; lv := c; lv := 5 + 6;", "7 F007C 11; 17 F007C -11; 37 F007C 11"},
      {"i := pt.z; pt.x.y := 1; pt := i; i := Pt;",
       "9 F0024 pt, z; 17 F0024 pt.x, y; 31 C0032 INT, Pt; 39 C0032 Pt, INT"},
      {"a[4] := 1; a[0] := i; a[-1] := i; a2[0, 2] := b; a2[2, 1] := b; a2[0, -1] := b;",
       "3 F0079 4; 14 F0079 0; 25 F0079 -1; 41 F0079 2; 53 F0079 2"},
      {"a[1, 2] := i; a2[1] := b; a[r] := 1; a[b] := 1; i[1] := i; i^ := 1; ip[1, 2] := 1; rf[1] "
       ":= 1; ip[j] := rf^;",
       "1 F0077 a; 15 F0077 a2; 29 F0078 REAL; 40 F0078 BOOL; 49 F0076 i, INT; 60 F007A i, INT; 69 "
       "F0076 ip, POINTER TO INT; 84 F0076 rf, REF_TO INT"},
      {"ip := ADR(i); ip := ADR(r); ip := REF(i); ip := NULL; ip := 0; ip := l; ip := ul; l := ip; "
       "ul := ip; ud := ADR(i); ip := ip + 2; ip := ADR(a2) - 1; ip := ADR(pt) + 8;",
       ""},
      {"ip := rp; ip := d; ip := 4; rf := 0; rf := ip; rf := SEL(b, rf, ip); rf := rf + 2; rf := "
       "REF(r); rf := ADR(i); i := ip; r := "
       "ip; ip := r; b := ip; ud := ip; ud := ADR(i) + 1; ip := i; ip := t;",
       "7 ~F007E POINTER TO REAL, POINTER TO INT; 17 ~F007E DINT, POINTER TO INT; 26 ~F007E 4, "
       "POINTER TO INT; 35 C0032 0, REF_TO INT; 44 C0032 POINTER TO INT, REF_TO INT; 54 C0032 "
       "POINTER TO INT, REF_TO INT; 76 C0032 POINTER TO INT, REF_TO INT; 90 C0032 REF_TO REAL, "
       "REF_TO INT; 117 C0032 POINTER TO INT, INT; 126 C0032 POINTER TO INT, REAL; 136 C0032 REAL, "
       "POINTER TO INT; 144 C0032 POINTER TO INT, BOOL; 154 ~F007F UDINT; 182 ~F007E INT, POINTER "
       "TO INT; 191 C0032 TIME, POINTER TO INT"},
      {"rf := REF(); rf := REF(i, i); rf := REF(1); rf := REF(k); rf := REF(i.3); rf := REF(i + "
       "1); rf := REF(nope);",
       "7 F0060 REF; 27 F0029 REF; 41 F007B 1; 55 F007B k; 69 F007B i.3; 85 F007B i + 1; 103 F0020 "
       "nope"},
      {"b := ip = rp; b := ip < 0; d := ip - rp; ip := 2 + ip; ip := 2 - ip; ip := ip + ip; ip := "
       "ip * 2; b := ip = r; b := ip AND b;",
       "62 F002B -, 2, POINTER TO INT; 76 F002B +, POINTER TO INT, POINTER TO INT; 91 F002B *, "
       "POINTER TO INT, 2; 104 F002B =, POINTER TO INT, REAL; 117 F002B AND, POINTER TO INT, BOOL"},
      {"b := c = Red; b := i = NULL; b := c = 1; b := c = li; b := c AND 1; i := c + li; i := c + "
       "1;",
       "20 F002B =, INT, NULL; 47 F002B =, Color, Light; 60 C0032 INT, BOOL; 74 F002B +, Color, "
       "Light"},
      {"t := t + lt; lt := lt - t; t := t * 2; t := 2 * t; t := 2 / t; t := t / 1.5; t := t * t; b "
       ":= t > lt; td := td + t; td := td - lt; td := t + td; da := da + t; t := da - da; t := td "
       "- dt1; b := da = td; b := td = td; dt1 := dt1 - t; t := dt1 - dt1; i := t MOD 2;",
       "6 C0032 LTIME, TIME; 57 F002B /, 2, TIME; 83 F002B *, TIME, TIME; 138 F002B +, TIME, TOD; "
       "152 F002B +, DATE, TIME; 179 F002B -, TOD, DT; 194 F002B =, DATE, TOD; 254 F002B MOD, "
       "TIME, 2"},
      {"i := i ** 2; lr := i ** 2; r := r ** 2; lr := lr MOD 2.0; r := r AND r; i := i AND 3; bt "
       ":= bt OR w; bt := bt XOR bt; w := NOT bt; b := NOT c; i := -b; i := -u; d := -ud; t := -t; "
       "r := -s;",
       "6 C0032 LREAL, INT; 47 F002B MOD, LREAL, 2.0; 64 F002B AND, REAL, REAL; 93 ~C0197 WORD, "
       "BYTE; 137 C0032 INT, BOOL; 150 F002C -, BOOL; 158 ~C0197 DINT, INT; 167 ~C0197 LINT, "
       "DINT; 187 F002C -, STRING"},
      {"b := s = ws; b := i <> s; b := i <= s; b := i >= s; b := r XOR i; b := s < 'a'; s := s + "
       "'a'; b := ws = \"x\"; b := b AND s; b := s = 1;",
       "6 F002B =, STRING, WSTRING; 19 F002B <>, INT, STRING; 32 F002B <=, INT, STRING; 45 F002B "
       ">=, INT, STRING; 58 F002B XOR, REAL, INT; 86 F002B +, STRING, STRING; 115 F002B AND, BOOL, "
       "STRING; 129 F002B =, STRING, 1"},
      {"i REF= j; xr REF= r; xr REF= i.3; xr REF= k; xr REF= 1; xr REF= %MX0.0; xr REF= nope; xr "
       "REF= i + 1; xr^ := 1; b := __ISVALIDREF(rf); xr[1] := 1; b := __ISVALIDREF(); xs REF= x2; "
       "xr REF= c; xr REF= fb.o; nope REF= 1; pt.x REF= i; xr := s; xr REF= NULL;",
       "1 F00B0 i; 19 F00B1 xr, r, INT; 30 F00B1 xr, i.3, INT; 43 F00B1 xr, k, INT; 54 F00B1 xr, "
       "1, INT; 65 F00B1 xr, %MX0.0, INT; 81 F0020 nope; 95 F00B1 xr, i + 1, INT; 102 F007A xr, "
       "INT; 130 F00B0 rf; 135 F0076 xr, INT; 152 F0060 __ISVALIDREF; 176 F00B1 xs, x2, STRING; "
       "188 F00B1 xr, c, INT; 199 F00B1 xr, fb.o, INT; 218 F00B0 pt.x; 237 C0032 STRING, INT"},
      {"i := F(1); i := F(1, 2); i := F(1, 2, 3); i := F(); i := F(a := 1, b := 2, q => j); N(1); "
       "i := N(1); N(q => i); i := F(1, 2, s, 4); fb(1, s, i);",
       "39 F0023 3; 96 F0026 N; 104 F0027 N, q; 129 F0029 F; 139 C0032 INT, STRING"},
      {"fb(io := i); fa[0](io := i); fa[2](io := i); fb(1, 2); fb(1, i); fb.io := 1; i := fb.io; i "
       ":= fb.o; fb.o := 1; fb := fb; fa := fa; fb.i := 3;",
       "33 F0079 2; 52 F0039 2, io, INT; 69 F0024 fb, io; 101 F0023 fb.o; 112 F0023 fb; 122 ~F00EB "
       "fa"},
      {"fb(io := i, NOT o => b); fb(io := i, o => 5); fb(io := k); fb(io := i + 1); fb(io := "
       "a[1]); fb(io := pt.x); fb(io := ip^); fb(io := i.3); fb(io := lv); fb(io := %MW0); fb(io "
       ":= %MX0.0); fb(io := P); fb(io := Red);",
       "22 C0032 INT, BOOL; 43 F0002 5; 56 F0039 k, io, INT; 69 F0039 i + 1, io, INT; 133 F0039 "
       "i.3, io, INT; 162 F0039 %MW0, io, INT; 178 F0039 %MX0.0, io, INT; 196 F003A P; 209 F0039 "
       "Red, io, INT"},
      {"IF r THEN ; ELSIF i THEN ; END_IF; WHILE i DO ; END_WHILE; REPEAT ; UNTIL i END_REPEAT;",
       "4 F002D BOOL, REAL; 19 F002D BOOL, INT; 42 F002D BOOL, INT; 75 F002D BOOL, INT"},
      {"FOR i := 1 TO 3 BY r DO ; END_FOR; FOR si := 1 TO 300 DO ; END_FOR; FOR k := 1 TO 2 DO ; "
       "END_FOR; FOR i := r TO 2 DO EXIT; CONTINUE; END_FOR; FOR i := 1 TO 2 BY 1 - 1 DO ; "
       "END_FOR;",
       "20 C0032 REAL, INT; 51 C0001 300, INT; 73 F0023 k; 108 C0032 REAL, INT; 124 ~F00E3 EXIT; "
       "162 F0031"},
      {"CASE i OF 1, 2: ; 2..4, 9: ; 5..8: ; 7..8, 3: ; 0: ; ELSE EXIT; END_CASE;",
       "19 ~F0096 2..4; 38 ~F0096 7..8; 44 ~F0096 3; 59 F0032 EXIT"},
      {"CASE ul OF -1: ; 18446744073709551615: ; -2..3: ; 3: ; END_CASE; CASE l OF "
       "18446744073709551615: ; END_CASE;",
       "12 ~F00E2 ul = -1, ULINT; 51 ~F0096 3; 76 C0001 18446744073709551615, LINT"},
      {"CASE c OF Red: ; Blue..Green: ; END_CASE; CASE s OF 1: ; END_CASE; CASE nope OF 1: ; "
       "END_CASE; CASE i OF k, lo: ; r: ; 1.5: ; END_CASE;",
       "18 ~F003D Blue..Green; 48 F002E STRING; 73 F0020 nope; 109 ~F00E2 i = lo, INT; 115 F002F "
       "r; 120 F002F 1.5"},
      {"i := ADD(i, j, 2); i := ADD(i); i := SUB(i, j, 2); b := GT(3, i, j); b := GT(3, F(i), 1); "
       "b := GT(F(i), i, F(i)); b := GT(i, s); r := MUL_TIME(t, 2); t := TIME(); t := TIME(1); i "
       ":= AND(i, r);",
       "25 F0060 ADD; 48 F0029 SUB; 81 F0007; 120 F002B >, INT, STRING; 135 C0032 TIME, REAL; 174 "
       "F0029 TIME; 183 F002B AND, INT, REAL"},
      {"i := LEN(s, s); i := LEN(i); i := LEN(); s := LEFT(s, r); s := MID(s, 1); s := CONCAT(s, "
       "ws); s := CONCAT(s); s := INSERT(s, 'a', s); i := FIND(s, nope); s := LEFT(L := 1, IN := "
       "s); s := LEFT(M := 1, IN := s); s := LEFT(s, L := 1); s := LEFT(IN := s, IN := s); s := "
       "LEFT(IN => s, L := 1); i := LEN(STRING);",
       "13 F0029 LEN; 26 C0032 INT, STRING; 35 F0060 LEN; 55 C0032 REAL, INT; 64 F0060 MID; 90 "
       "F002B CONCAT, STRING, WSTRING; 100 F0060 CONCAT; 131 C0032 STRING, INT; 148 F0020 nope; "
       "193 F0027 LEFT, M; 252 F002A IN; 272 F0027 LEFT, IN; 299 F003A STRING"},
      {"i := MUX(K := 1, IN0 := i, IN1 := 3); i := MUX(IN1 := 3, IN0 := i, K := 0); i := MUX(K := "
       "1, IN0 := i, IN2 := 3); i := LIMIT(IN => i, MN := 0, MX := 1); i := LIMIT(0, MX := 1, IN "
       ":= 2); i := LIMIT(MN := 0, MN := 0, MX := 1);",
       "104 F0027 MUX, IN2; 126 F0027 LIMIT, IN; 207 F002A MN"},
      {"pt := SEL(b, pt, qt); pt := MAX(pt, qt); pt := SEL(b, pt, i); c := MAX(c, c); c := SEL(b, "
       "c, li); i := MAX(c, li); ip := SEL(b, ip, ip); ip := MUX(i, ip, rp); pt := MOVE(pt); s := "
       "MUX(i, s, s); i := MOVE(pt);",
       "33 F002C MAX, Pt; 48 F002B SEL, Pt, INT; 84 F002B SEL, Color, Light; 104 F002B MAX, Color, "
       "Light; 151 C0131 ip, MUX; 188 C0131 s, MUX; 205 C0032 Pt, INT"},
      {"ul := TO_ULINT(ip); ul := TO_ULINT(pt); s := TO_STRING(c); b := TO_BOOL(pt); b := "
       "TO_BOOL(ip); i := ABS(c); r := SQRT(ip); r := EXPT(r, b); i := TO_INT(fb);",
       "36 F002C TO_ULINT, Pt; 56 F002C TO_STRING, Color; 73 F002C TO_BOOL, Pt; 105 F002C ABS, "
       "Color; 119 F002C SQRT, POINTER TO INT; 137 C0032 BOOL, REAL; 153 F002C TO_INT, B"},
      {"b := MEP(b); b := MEP(i); b := MEF(b) OR MEP(NOT b); i := ADR(i); ip := ADR(nope); ud := "
       "ADR(P); ud := ADR(%MW0); ud := SIZEOF(Pt); ud := SIZEOF(nope); ud := SIZEOF(a[1]); ud := "
       "SIZEOF(INT); ud := SIZEOF(F); ud := SIZEOF(TON); b := GETBITOFPARAM(nope, 1);",
       "19 C0131 i, MEP; 59 C0032 POINTER TO INT, INT; 77 F0020 nope; 94 F003A P; 139 C0046 nope; "
       "205 F003A F; 233 C0131 NOPE, GETBITOFPARAM"},
      {"i := F(EN := b, a := 1, ENO => b); i := F(EN := i, a := 1); i := F(EN := b, EN := b, a := "
       "1); i := F(a := 1, ENO => i); i := F(a := 1, ENO => k); i := ADD(EN := b, IN1 := 1, IN2 := "
       "2); i := LIMIT(EN := b, MN := 0, IN := 3, MX := 2, ENO => b); i := LEN(EN := b, IN := s); "
       "fb(EN := b, io := i);",
       "49 C0032 INT, BOOL; 77 F002A EN; 117 C0032 BOOL, INT; 143 F0023 k"},
      {"b := NOT t; CONTINUE; b := i.%X3 AND_THEN b OR_ELSE i; i.%B1 := i.%W0; si := "
       "i.%B2.1 OR r.%B0 OR l.%D2; i.%Q0 := 1; FOR w.%B0 := 1 TO 2 DO ; END_FOR; ip := REF(i.%W0); "
       "fb(io := w.%W0); ud := ADR(w.%B1); k.%B0 := 3; ip := REF(%MX0.1);",
       "10 F002C NOT, TIME; 13 F0032 CONTINUE; 28 F002B OR_ELSE, BOOL, INT; 65 ~C0197 WORD, BYTE; "
       "78 F00D0 %B2, INT; 89 F00D0 %B0, REAL; 98 F00D0 %D2, LINT; 107 F0002 %Q0; 121 F0030 w.%B0; "
       "161 F007B i.%W0; 178 F0039 w.%W0, io, INT; 196 C0131 w.%B1, ADR; 204 F0023 k.%B0; 226 "
       "F007B %MX0.1"},
      {"nope(1); i(1); Pt(1); Color(1); F := 1; P(1); i := P; i := F; i := nope; i := nope; "
       "nope2.x := 1; %MX0.0 := b; %MB99999 := bt; %MW0 := i; %MD3 := d; %MD3 := i; %MX0.0.1 := b; "
       "i.16 := b; r.1 := b; b.0 := b; bt.7 := b; bt.8 := b; pt.1 := b;",
       "1 F0020 nope; 10 F0025 i; 16 F0025 Pt; 23 F0025 Color; 33 F003A F; 41 F0025 P; 85 F0020 "
       "nope2; 112 F00D4 %MB99999; 136 ~C0195 INT, WORD; 147 ~C0195 DINT, DWORD; 158 ~C0195 INT, "
       "DWORD; 176 F0038 INT; 187 F0038 REAL; 197 F0038 BOOL; 218 F0038 BYTE; 229 F0038 Pt"},
      {"i := LIMIT('a', i, 5); b := LIMIT(0, 1, i); i := 1 + LIMIT(0, i, s); FOR i := 1 TO 5 BY "
       "'a' DO ; END_FOR; c := Color.Nope; ip := REF(x := i); ip := REF(INT);",
       "12 C0032 STRING, INT; 29 C0032 INT, BOOL; 66 C0032 STRING, INT; 89 C0032 STRING, INT; 118 "
       "F0024 Color, Nope; 134 F0027 REF, x; 153 F003A INT"},
      {"i := lo; i := k; k := 1; i := 10000000000; si := 128; si := -129; u := -1; bt := 256; b := "
       "2; b := 1; b := INT#1; r := 1; r := 16777217; lr := 1.0e300; r := 1.0e39; t := 1; i := "
       "T#1s; s := 'toolong'; s := \"x\"; ws := 'x';",
       "6 ~C0197 LINT, INT; 18 F0023 k; 31 C0001 10000000000, LINT; 50 C0001 128, INT; 61 C0001 "
       "-129, INT; 72 C0001 -1, SINT; 82 C0001 256, INT; 92 C0032 2, BOOL; 108 C0032 INT, BOOL; "
       "158 ~C0197 LREAL, REAL; 171 C0032 1, TIME; 179 C0032 TIME, INT; 206 C0032 WSTRING, STRING; "
       "217 C0032 STRING, WSTRING"},
  };
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(expected, brief(*analysed(withEverything(source)))) << source;
  }
}

// Warnings of what is right but hardly meant, those that are hidden by default as well.
TEST(Statements, AreDoubted) {
  const std::pair<const char*, const char*> rows[] = {
      {"i := 7 / 0; i := j MOD (k - 5); r := r / 0; t := t / 0; lr := 1 / 0.0; i := DIV(i, 0); i "
       ":= j "
       "/ k; CASE i OF 5 / 0: ; END_CASE; nope := nope / 0; r := 1.0 / r; r := INT_TO_REAL(i / 0, "
       "3); i := REAL_TO_INT(32767.5); i := TO_INT(-32768.4); u := TO_UINT(-(0.5)); "
       "d := TRUNC(2147483647.9);",
       "10 ~F00E1 0; 25 ~F00E1 k - 5; 42 ~F00E1 0; 54 ~F00E1 0; 67 ~F00E1 0.0; 84 ~F00E1 0; 110 "
       "F002F 5 / 0; 129 F0020 nope; 166 C0040 INT_TO_REAL; 206 ~F00F0 INT, 32767.5; 252 ~F00F0 "
       "UINT, -(0.5)"},
      {"b := u < 0; b := 0 <= u; b := si > 127; b := si > 126; b := 128 <> si; b := u = -1; b := "
       "ul >= "
       "0; b := lv > 10; b := bt <= 255; b := 256 > bt; b := c = Red; b := k > 4; b := 0 > d; b := "
       "si "
       "= 127; b := ul = -1; b := lo > i;",
       "6 ~F00E2 u < 0, UINT; 18 ~F00E2 0 <= u, UINT; 31 ~F00E2 si > 127, SINT; 61 ~F00E2 128 <> "
       "si, SINT; 77 ~F00E2 u = -1, UINT; 90 ~F00E2 ul >= 0, ULINT; 118 ~F00E2 bt <= 255, BYTE; "
       "134 ~F00E2 256 > bt, BYTE; 216 ~F00E2 lo > i, INT"},
      {"FOR i := 1 TO k - 5 DO ; END_FOR; FOR i := 1 TO 5 BY -1 DO ; END_FOR; FOR i := 5 TO 5 DO ; "
       "END_FOR; FOR i := 5 TO 1 BY j DO ; END_FOR; i := I; pt.x := pt.y; a[1] := A[ 1]; a[F(1)] "
       ":= "
       "a[F(1)]; ip^ := ip^; i.3 := i.4; i.%B1 := i.%B1;",
       "15 ~F00E4; 49 ~F00E4; 136 ~F00EB i; 158 ~F00EB a[1]; 193 ~F00EB ip^; 217 ~F00EB i.%B1"},
      {"IF b THEN RETURN; ; END_IF; WHILE b DO EXIT; i := d; i := 1 / 0; j := nope; END_WHILE; "
       "RETURN; "
       "i := d;",
       "46 ~F00E3 EXIT; 71 F0020 nope; 96 ~F00E3 RETURN"},
      {"b := r = lr; b := r <> 0; b := 0.0 = lr; b := r < lr; r := 4 / 2; r := i / 2; r := (i + j) "
       "/ 2 * 1.5; "
       "lr := "
       "INT_TO_REAL(i / j); r := 4 + i; r := i; lr := SEL(b, r, i / j);",
       "6 ~F00EC r = lr; 72 ~F00ED i / 2, REAL; 84 ~F00ED (i + j) / 2, REAL; 121 ~F00ED i / j, "
       "REAL; 165 ~F00ED i / j, REAL"},
      {"b := TO_BOOL(s); b := TO_BOOL(i); r := TIME_TO_REAL(t); lt := TIME_TO_LTIME(t); td := "
       "DT_TO_TOD(dt1); da := DT_TO_DATE(dt1); dt1 := DATE_TO_DT(da); td := TIME_TO_TOD(t); t := "
       "TO_TIME(r); t := REAL_TO_TIME(r); d := LTIME_TO_DINT(t); b := TIME_TO_BOOL(t);",
       "6 ~F00EE TO_BOOL; 40 ~F00EE TIME_TO_REAL; 63 ~F00EE TIME_TO_LTIME; 87 ~F00EE DT_TO_TOD; "
       "109 ~F00EE DT_TO_DATE; 176 ~F00EE TO_TIME; 193 ~F00EE REAL_TO_TIME; 215 ~F00EE "
       "LTIME_TO_DINT"},
      {"i := LIMIT(5, i, k); i := LIMIT(6, i, k); i := MUX(2, i, j); i := MUX(1, i, j); w := "
       "SHL(w, 16); "
       "w := SHR(w, 15); si := SHL(5, 2); b := MEP(b); b := MEF(b); IF MEP(b) THEN ; END_IF;",
       "27 ~F00EE LIMIT; 52 ~F00EE MUX; 93 ~F00EE SHL; 125 ~F00EE SHL; 161 ~F00EE MEP"},
      {"b := _ReadIDirect(%IX0.0); irdbit(%IX0.0, b); IWRBIT(%QX0.0, b); iwrbit(%QX0.0, b); "
       "izset(%QX0.0, %QX0.1); izrst(nope, %QX0.1); zset(%QX0.0, %QX0.1);",
       "6 F00EF _ReadIDirect; 28 F00EF irdbit; 85 F00EF izset; 108 F00EF izrst; 114 C0221 nope; "
       "120 C0223"},
  };
  Options options;
  for (const char* const group : {"real-equality", "integer-division", "surprises"}) {
    options.warnings.choose(group, true);
  }
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(expected, brief(*analysed(withEverything(source), options))) << source;
  }
}

}  // namespace
}  // namespace refhost
