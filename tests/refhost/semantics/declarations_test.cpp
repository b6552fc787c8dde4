#include "tests/refhost/translation.h"

namespace refhost {
namespace {

TEST(Declarations, AreJudged) {
  const std::pair<const char*, const char*> rows[] = {
      {"TYPE A : INT; a : INT; B : C; C : B; INT : REAL; D : ARRAY[0..1] OF D; E : STRUCT e : E; "
       "END_STRUCT; F : STRUCT f : POINTER TO F; END_STRUCT; G : STRUCT h : H; END_STRUCT; H : "
       "STRUCT g : ARRAY[0..1] OF G; END_STRUCT; END_TYPE",
       "1:15 F0021 a; 1:24 F0070 B; 1:38 F0021 INT; 1:50 F0070 D; 1:72 F0070 E; 1:143 F0070 G"},
      {"TYPE A : INT(1..300); B : SINT(0..300); C : NOPE(1..5); D : REAL(1..2); E : INT(5..1); F : "
       "INT(x..2); G : BYTE(-1..2); H : INT(1..2) := 3; END_TYPE PROGRAM P VAR a : A := 0; g : "
       "NOPE(1..5); END_VAR END_PROGRAM",
       "1:27 F0072 0..300, SINT; 1:45 F0022 NOPE; 1:61 F0072 1..2, REAL; 1:81 F0071 5..1; 1:96 "
       "F0020 x; 1:107 F0072 -1..2, BYTE; 1:137 F007C 3; 1:172 F007C 0; 1:179 F0022 NOPE"},
      {"TYPE A : (x, y, x); B : BYTE (p, q := 256); C : REAL (r); D : (s := 40000, t := "
       "3000000000); E : (x2 := y2, y2); F : NOPE (n); G : (h := 1.5); I : (j := 32767, k); "
       "END_TYPE PROGRAM P VAR a : (u, v, u); b : (v, w); END_VAR a := v; b := w; END_PROGRAM",
       "1:17 F0021 x; 1:34 C0001 256, BYTE; 1:49 F0061 REAL; 1:105 F0020 y2; 1:118 F0022 NOPE; "
       "1:138 F002F 1.5; 1:199 F0021 u"},
      {"TYPE A : (on, off); B : (on, auto); END_TYPE PROGRAM P VAR a : A := on; b : B := B#on; c : "
       "A := A.off; d : INT := TO_INT(auto); e : A := B.on; END_VAR END_PROGRAM",
       "1:122 F002C TO_INT, B; 1:138 C0032 B, A"},
      {"PROGRAM P VAR CONSTANT n : INT := 3; lo : LINT := -9223372036854775808; m : DINT := n * 2 "
       "- 1; x : INT := y; y : INT := x; END_VAR VAR a : ARRAY[0..lo MOD -1] OF INT; b : "
       "ARRAY[0..lo / -1] OF INT; c : ARRAY[1..n / 0] OF INT; d : ARRAY[n..m MOD 4] OF INT; e : "
       "ARRAY[-lo..0] OF INT; f : ARRAY[1..x] OF INT; g : STRING[n]; h : STRING[32768]; i : "
       "STRING[32767]; j : WSTRING[g]; k : ARRAY[lo - 1..0] OF INT; END_VAR END_PROGRAM",
       "1:107 F003F x; 1:178 F0071 0..lo / -1; 1:211 F002F n / 0; 1:236 F0071 n..m MOD 4; 1:260 "
       "F0099 ARRAY[-9223372036854775808..0] OF INT; 1:332 F0036 32768; 1:371 F0036 g; 1:385 F0071 "
       "lo - 1..0"},
      {"PROGRAM P VAR a : ARRAY[1..0] OF INT; b : ARRAY[0..2147483647] OF BYTE; c : "
       "ARRAY[0..2147483646] OF BYTE; d : ARRAY[0..65535, 0..65535] OF INT; e : ARRAY[0..1] OF "
       "NOPE; f : POINTER TO NOPE; g : ARRAY[0..9223372036854775807] OF BYTE; h : "
       "ARRAY[-9223372036854775807..9223372036854775807] OF BYTE; END_VAR END_PROGRAM",
       "1:25 F0071 1..0; 1:43 F0099 ARRAY[0..2147483647] OF BYTE; 1:77 F0099 ARRAY[0..2147483646] "
       "OF BYTE; 1:111 F0099 ARRAY[0..65535, 0..65535] OF INT; 1:164 F0022 NOPE; 1:195 F0099 "
       "ARRAY[0..9223372036854775807] OF BYTE; 1:238 F0099 "
       "ARRAY[-9223372036854775807..9223372036854775807] OF BYTE"},
      {"TYPE T : STRUCT a, b : INT; c : ARRAY[0..1] OF INT; A : REAL; d : INT := 'x'; END_STRUCT; "
       "END_TYPE PROGRAM P VAR t : T := (a := 1, z := 2, c := [1, 2, 3]); u : T := [1]; v : T := "
       "5; w : INT := (a := 1); x : ARRAY[1..2] OF INT := 3; y : ARRAY[1..2] OF T := [2((a := "
       "'x')), (b := 1.5)]; z : ARRAY[1..2, 1..2] OF INT := [[1, 2], [3], 4, 5]; z2 : "
       "ARRAY[1..2, 1..2] OF INT := [3([1, 2, 3])]; END_VAR END_PROGRAM",
       "1:53 F0021 A; 1:74 C0032 STRING, INT; 1:132 F0024 T, z; 1:145 F0074; 1:166 F0073 [1], T; "
       "1:180 C0032 5, T; 1:194 F0073 (a := 1), INT; 1:230 C0032 3, ARRAY[1..2] OF INT; 1:257 "
       "F0074; 1:266 C0032 STRING, INT; 1:279 C0032 1.5, INT; 1:332 F0073 4, ARRAY[1..2] OF INT; "
       "1:372 F0074; 1:375 F0074"},
      {"PROGRAM P VAR CONSTANT n : INT := 2; r : REAL := 1.5; END_VAR VAR a : ARRAY[1..4] OF INT "
       ":= [n(0), n(1)]; b : ARRAY[1..4] OF INT := [r(0)]; c : ARRAY[1..4] OF INT := [3(1), 2(2)]; "
       "d : ARRAY[1..4] OF INT := [-1(1)]; e : ARRAY[1..4] OF INT := 1, 3(n); f : ARRAY[1..4] OF "
       "INT := [5000000000(5000000000(1))]; g : ARRAY[1..4] OF INT := [nope(1), F(1)]; h : INT := "
       "[1]; i : INT := 2(1); END_VAR END_PROGRAM",
       "1:134 F002F r; 1:167 F0074; 1:210 F0002 (, ,, ]; 1:277 F0074; 1:333 F0020 nope; 1:342 "
       "F0025 F; 1:360 F0073 [1], INT; 1:376 F0073 2(1), INT"},
      {"FUNCTION_BLOCK B VAR_INPUT i : INT := 'x'; END_VAR VAR_TEMP t : INT; END_VAR VAR_IN_OUT o "
       ": INT; END_VAR VAR v : INT; END_VAR END_FUNCTION_BLOCK PROGRAM P VAR b : B := (i := 1, v "
       ":= 2); c : B := (o := 1); d : B := (t := 1); e : B := 3; f : ARRAY[0..1] OF B := [(i := "
       "3)]; g : B := (i := 'x'); END_VAR b.t := 1; END_PROGRAM",
       "1:39 C0032 STRING, INT; 1:197 F0024 B, o; 1:216 F0024 B, t; 1:234 F0073 3, B; 1:288 C0032 "
       "STRING, INT"},
      {"VAR_GLOBAL a : INT; b : REAL; a : INT; k AT %MX0.0 : INT; END_VAR PROGRAM P VAR_EXTERNAL a "
       ": REAL; b : REAL; c : INT; d : NOPE; END_VAR VAR b : BOOL; END_VAR c := a; c := c; b := "
       "TRUE; c.x := 1; END_PROGRAM PROGRAM Q VAR a : BOOL; END_VAR a := b; END_PROGRAM FUNCTION P "
       ": INT END_FUNCTION",
       "1:31 F0021 a; 1:45 F0034 %MX0.0, INT; 1:94 F0091 a, INT; 1:110 F0090 c; 1:119 F0090 d; "
       "1:123 F0022 NOPE; 1:167 ~F00EB c; 1:188 F0024 c, x; 1:245 C0032 REAL, BOOL; 1:269 F0021 P"},
      {"CONFIGURATION C RESOURCE R ON S TASK t(INTERVAL := 5, SINGLE := 1, PRIORITY := T#1s, NOPE "
       ":= 1); TASK u(3); PROGRAM a WITH t : P; PROGRAM b WITH v : P(x := 1, y => g, z := 2); "
       "PROGRAM c : Q; PROGRAM d : F; END_RESOURCE VAR_GLOBAL g : REAL; END_VAR END_CONFIGURATION "
       "PROGRAM P VAR_INPUT x : BOOL; END_VAR VAR_OUTPUT y : BOOL; END_VAR END_PROGRAM FUNCTION F "
       ": INT END_FUNCTION",
       "1:52 C0032 5, TIME; 1:80 C0032 TIME, UINT; 1:86 F0094 NOPE; 1:105 F0094 3; 1:146 F0093 v; "
       "1:165 C0032 BOOL, REAL; 1:168 F0027 P, z; 1:189 F0092 Q; 1:204 F0092 F"},
      {"CONFIGURATION C VAR_GLOBAL CONSTANT k : TIME := T#5ms; m : UINT := 7; END_VAR VAR_GLOBAL g "
       ":"
       " TIME; END_VAR RESOURCE R ON S TASK a(INTERVAL := k, PRIORITY := m); TASK A(SINGLE := "
       "TRUE, "
       "INTERVAL := T#0s); TASK b(INTERVAL := k-k*2 ); TASK c(INTERVAL := g, PRIORITY := 70000); "
       "TASK d(PRIORITY := -1, SINGLE := 3); TASK e(PRIORITY := 1, PRIORITY := 2); PROGRAM x WITH "
       "a "
       ": P; PROGRAM y WITH b : P; PROGRAM X : P; END_RESOURCE RESOURCE S ON S PROGRAM x : P; "
       "PROGRAM z WITH a : P; END_RESOURCE RESOURCE r ON S END_RESOURCE END_CONFIGURATION "
       "CONFIGURATION D PROGRAM w : P; END_CONFIGURATION PROGRAM P END_PROGRAM PROGRAM Q "
       "END_PROGRAM",
       "1:167 F0021 A; 1:223 F00A0 k-k*2; 1:251 F00A0 g; 1:266 F00A1 70000; 1:293 F00A1 -1; 1:307 "
       "C0032 3, BOOL; 1:333 F002A PRIORITY; 1:401 F0021 X; 1:467 F0093 a; 1:496 F0021 r; 1:558 "
       "F00A3 C; 1:613 ~F00A4 Q"},
      {"CONFIGURATION C RESOURCE R ON S PROGRAM p1 : P; PROGRAM p2 : P; VAR_CONFIG R.p1.a AT "
       "%QX0.0 : BOOL; p2.a AT %QX0.1 : BOOL; p2.b[1].o AT %MW1 : INT; R.p2.b[2].o AT %IW1 : INT; "
       "p1.b[1].o AT %MB0 : INT; p1.b[3].o AT %MW0 : INT; p1.c AT %MW0 : INT; p1.c : INT := 'x'; "
       "p1.b[1].k : INT := 4; p1.b[2].o AT %MW9 : WORD; p1.b[2].o AT %MW9 : INT; p1.b[2].o AT %MW8 "
       ": INT; R.g AT %QW99999 : INT; h AT %MD0 : INT; h AT %MW0 : INT; x.y : INT; P.a AT %QX1.1 : "
       "BOOL; END_VAR END_RESOURCE END_CONFIGURATION VAR_GLOBAL g, h, i AT %QW* : INT; j AT %Z* : "
       "INT; END_VAR FUNCTION_BLOCK B VAR_INPUT z AT %I* : INT; "
       "END_VAR VAR o AT %M* : INT; END_VAR VAR CONSTANT k : INT := 3; END_VAR END_FUNCTION_BLOCK "
       "PROGRAM P VAR a AT %Q* : BOOL; b : ARRAY[1..2] OF B; c : INT; p : POINTER TO BOOL; d : D; "
       "END_VAR VAR_TEMP t AT %M* : INT; u : B; END_VAR p := ADR(a); p := REF(a); END_PROGRAM "
       "FUNCTION F : INT VAR v AT %M* : INT; w : B; END_VAR END_FUNCTION FUNCTION_BLOCK D VAR e AT "
       "%Q* : INT; END_VAR END_FUNCTION_BLOCK",
       "1:164 F00D8 %IW1, %M*, o; 1:189 F0034 %MB0, INT; 1:201 F00DB p1.b[3].o; 1:234 F00D9 p1.c; "
       "1:260 C0032 STRING, INT; 1:265 F0023 p1.b[1].k; 1:307 F00D7 p1.b[2].o, INT, WORD; 1:313 "
       "F00DA p1.b[2].o; 1:338 F00DA p1.b[2].o; 1:370 F00D4 %QW99999; 1:391 F0034 %MD0, INT; 1:403 "
       "F00DA h; 1:420 F00DB x.y; 1:431 F00DB P.a; 1:509 F00D5 i, i; 1:531 F0033 %Z*; 1:582 F003E "
       "z; 1:795 F00D6 t; 1:806 F00D6 u; 1:830 F007B a; 1:843 F007B a; 1:885 F00D6 v; 1:896 F00D6 "
       "w; 1:945 F00D5 e, p1.d.e"},
      {"FUNCTION F : INT VAR CONSTANT c : INT := 2; k : INT := a; END_VAR VAR_INPUT a : INT := c; "
       "b : INT := MAX(c, a); d : INT := k; e : ARRAY[0..1] OF INT := [1, F]; END_VAR VAR v : INT "
       ":= a; s : STRUCT m : INT := c; n : INT := v; END_STRUCT; END_VAR END_FUNCTION",
       "1:109 F009B b, a, F; 1:124 F009B d, a, F; 1:157 F009B e, F, F; 1:223 F009B n, v, F"},
      {"FUNCTION F : INT VAR_INPUT a : BOOL R_EDGE; END_VAR END_FUNCTION FUNCTION_BLOCK B "
       "VAR_INPUT a : INT F_EDGE; b : BOOL R_EDGE; c : NOPE R_EDGE; END_VAR VAR_OUTPUT o : BOOL "
       "R_EDGE; END_VAR VAR_INPUT d AT %IX0.0 : BOOL; END_VAR END_FUNCTION_BLOCK PROGRAM P "
       "VAR_INPUT a : BOOL F_EDGE; d AT %IX0.0 : BOOL; END_VAR VAR e AT %IX0.0 : BYTE; f AT %MB0 : "
       "BOOL; g AT %MW0 : REAL; h AT %MD0 : REAL; i AT %ML0 : LREAL; j AT %MW0 : STRING; k AT "
       "%MX0.9 : BOOL; l AT %MD3 : ARRAY[0..1] OF INT; END_VAR END_PROGRAM TYPE R : STRUCT r : R; "
       "END_STRUCT; S : STRUCT l : LREAL; b : BYTE; END_STRUCT; T : (u, v); END_TYPE VAR_GLOBAL A1 "
       "AT %MB101 : ARRAY[0..3] OF INT; A2 AT %QW500 : ARRAY[0..19] OF INT; A3 AT %IX0.0 : "
       "ARRAY[0..7] OF BOOL; A4 AT %MB0 : ARRAY[0..1] OF TON; A5 AT %ML0 : POINTER TO INT; A6 AT "
       "%MB0 : R; A7 AT %MB0 : ARRAY[0..2000000000] OF S; A8 AT %MW21 : S; A9 AT %MB1 : "
       "WSTRING[3]; B1 AT %MB16303 : STRING; B2 AT %MB16304 : STRING; B3 AT %ML2047 : S; B4 AT "
       "%MD0 : T; END_VAR",
       "1:32 F0095 a; 1:97 F0095 a; 1:130 F0022 NOPE; 1:166 F0095 o; 1:202 F003E d; 1:318 F0034 "
       "%IX0.0, BYTE; 1:338 F0034 %MB0, BOOL; 1:356 F0034 %MW0, REAL; 1:431 F00D3 %MX0.9; 1:503 "
       "F0070 R; 1:615 F00D1 %MB101, ARRAY[0..3] OF INT; 1:650 F00D2 ARRAY[0..19] OF INT, %QW500; "
       "1:686 F0034 %IX0.0, ARRAY[0..7] OF BOOL; 1:722 F0034 %MB0, ARRAY[0..1] OF TON; 1:755 F0034 "
       "%ML0, POINTER TO INT; 1:784 F0034 %MB0, R; 1:807 F0099 ARRAY[0..2000000000] OF S; 1:840 "
       "F00D1 %MW21, S; 1:857 F00D1 %MB1, WSTRING; 1:907 F00D2 STRING, %MB16304; 1:932 F00D2 S, "
       "%ML2047; 1:951 F0034 %MD0, T"},
      {"FUNCTION_BLOCK A VAR b : ARRAY[0..1] OF B; END_VAR END_FUNCTION_BLOCK FUNCTION_BLOCK B "
       "VAR_IN_OUT a : A; END_VAR VAR c : STRUCT d : C; END_STRUCT; END_VAR END_FUNCTION_BLOCK "
       "FUNCTION_BLOCK C VAR a : A; END_VAR END_FUNCTION_BLOCK FUNCTION_BLOCK D VAR_IN_OUT d : D; "
       "END_VAR END_FUNCTION_BLOCK",
       "1:16 F0035 A"},
      {"FUNCTION F VAR f : INT; END_VAR END_FUNCTION FUNCTION G : INT VAR g : INT; END_VAR "
       "END_FUNCTION FUNCTION H : INT VAR_INPUT EN : INT; END_VAR VAR_OUTPUT ENO : INT; END_VAR H "
       ":= EN; ENO := 1; END_FUNCTION PROGRAM P VAR i : INT; b : BOOL; END_VAR i := H(EN := 3, ENO "
       "=> i); i := H(EN := b); i := F(); F(EN := b); i := i + H(EN := 1, ENO => b); END_PROGRAM",
       "1:67 F0021 g; 1:285 C0032 BOOL, INT; 1:294 F0026 F; 1:338 C0032 INT, BOOL"},
      {"FUNCTION TON : INT END_FUNCTION TYPE CTU : INT; END_TYPE PROGRAM P VAR t : TON; c : CTU; d "
       ": CTD; s : SR; END_VAR c := 3; d(CD := 1, X := 2); d.Q := TRUE; d.M := 1; s(S1 := TRUE, R "
       ":= 5); i := TON(); END_PROGRAM PROGRAM LIMIT END_PROGRAM PROGRAM INT END_PROGRAM FUNCTION "
       "LEN : INT VAR_INPUT a, b : INT; END_VAR LEN := a; END_FUNCTION PROGRAM Q VAR i : INT; "
       "END_VAR i := LEN(1, 2); i := LEN('x'); END_PROGRAM",
       "1:76 F0022 TON; 1:134 F0027 CTD, X; 1:143 F0023 d.Q; 1:158 F0024 d, M; 1:185 C0032 5, "
       "BOOL; 1:189 F0020 i; 1:221 F003C LIMIT; 1:247 F0021 INT; 1:391 C0032 STRING, INT"},
      {"PROGRAM P VAR_INPUT {bitparam} a : INT; END_VAR VAR {bitparam} b : INT; x : BOOL; s : "
       "SINT; END_VAR x := GETBITOFPARAM(a, 3); x := GETBITOFPARAM(b, 3); SETBITOFPARAM(a, 1, 5); "
       "s := SEL(x, 1, 2); s := SEL(x, 200, 3); s := MAX(s, a); x := MUX(1, x, TRUE) = s; "
       "END_PROGRAM",
       "1:132 C0131 B, GETBITOFPARAM; 1:153 C0131 5, P; 1:201 ~C0197 INT, SINT; 1:222 ~C0197 INT, "
       "SINT; 1:238 F002B =, BOOL, SINT"},
      {"TYPE E : (A := 9223372036854775807, B0); END_TYPE TYPE F : LWORD (A1 := "
       "18446744073709551615); S : ULINT(1..18446744073709551615); END_TYPE PROGRAM P VAR CONSTANT "
       "big : ULINT := 18446744073709551615; END_VAR VAR f : F := A1; s : S := big; a : "
       "ARRAY[0..big] OF INT; b : ARRAY[0..1] OF INT := [big(0)]; x : INT(0..big); i : INT; "
       "END_VAR i := b[big]; END_PROGRAM",
       "1:37 C0001 9223372036854775808, LINT; 1:250 F0072 0..big, LINT; 1:292 F0074; 1:306 F0072 "
       "0..big, INT; 1:343 F0079 big"},
      {"PROGRAM P VAR a AT %MW0: DINT; a: INT; z: NoType; q: STRING[0]; b: LTOD; c: Ltod; END_VAR "
       "b := c; END_PROGRAM FUNCTION F : INT VAR_INPUT a AT %MW0: INT; END_VAR F := a; "
       "END_FUNCTION FUNCTION G : INTT END_FUNCTION PROGRAM Q VAR x: INT; END_VAR x := G() + "
       "ABS(G()); END_PROGRAM FUNCTION MAX : INT MAX := 1; END_FUNCTION FUNCTION_BLOCK A VAR b: B; "
       "END_VAR END_FUNCTION_BLOCK FUNCTION_BLOCK B VAR a: A; END_VAR END_FUNCTION_BLOCK",
       "1:20 F0034 %MW0, DINT; 1:32 F0021 a; 1:43 F0022 NoType; 1:61 F0036 0; 1:68 F0007 LTOD; "
       "1:143 F003E a; 1:196 F0022 INTT; 1:286 F003C MAX; 1:334 F0035 A"},
      {"TYPE R : REFERENCE TO INT; S : STRUCT a : REFERENCE TO S; b : REFERENCE TO INT := 3; c : "
       "INT REF= g; END_STRUCT; END_TYPE VAR_GLOBAL g : INT; h : REFERENCE TO REAL; END_VAR "
       "FUNCTION F : REFERENCE TO INT VAR_INPUT r : REFERENCE TO INT; END_VAR VAR_OUTPUT o : "
       "REFERENCE TO INT; END_VAR VAR_IN_OUT io : REFERENCE TO INT; END_VAR VAR CONSTANT c : "
       "REFERENCE TO INT; END_VAR VAR d AT %MW0 : REFERENCE TO INT; e : ARRAY[0..1] OF REFERENCE "
       "TO INT; p : POINTER TO REFERENCE TO INT; i : REFERENCE TO REFERENCE TO INT; k : REFERENCE "
       "TO NOPE; END_VAR VAR_EXTERNAL g : REFERENCE TO INT; h : REFERENCE TO REAL; END_VAR VAR "
       "CONSTANT t : S; END_VAR t.b REF= g; t.b := 1; END_FUNCTION PROGRAM P VAR x : INT; s : S := "
       "(a := s, b := 3); y : S := (b := x); z : REFERENCE TO INT := [1]; END_VAR x := F(3, x); x "
       ":= F(r := x, io := x); END_PROGRAM",
       "1:10 F0007; 1:83 F00B1 b, 3, INT; 1:86 F00B0 c; 1:187 F0007; 1:259 F0007; 1:301 F0007; "
       "1:344 F0007; 1:386 F0007; 1:423 F0007; 1:456 F0007; 1:491 F0007; 1:526 F0022 NOPE; 1:557 "
       "F0091 g, INT; 1:634 F0023 t.b; 1:715 F00B1 b, 3, INT; 1:762 F00B1 z, [1], INT; 1:782 F00B1 "
       "r, 3, INT"},
      {"TYPE T : ARRAY[*] OF INT; S : STRUCT a : ARRAY[*] OF INT; END_STRUCT; END_TYPE FUNCTION F "
       ": ARRAY[*] OF INT VAR_INPUT a : ARRAY[*] OF INT; END_VAR VAR_IN_OUT b : ARRAY[*, *] OF "
       "INT; c : ARRAY[1..2, *] OF INT; d : REFERENCE TO ARRAY[*] OF INT; e : ARRAY[*] OF ARRAY[*] "
       "OF INT; g : ARRAY[*] OF NOPE; END_VAR VAR_OUTPUT o : ARRAY[*] OF INT; END_VAR VAR v : "
       "ARRAY[*] OF INT; n : ARRAY[1..2] OF INT; x : DINT; y : UDINT; p : POINTER TO INT; z : "
       "BOOL; END_VAR\n"
       "a[1] := 2; n := a; a := n; x := a[1] + b[1, 2] + a[1, 1]; y := SIZEOF(a); p := ADR(a); p "
       ":= ADR(a[1]); p := REF(a[1]); a := MOVE(a); x := LOWER_BOUND(a, 2) + UPPER_BOUND(b, 0) + "
       "LOWER_BOUND(x, 1) + LOWER_BOUND(a, 1.5) + LOWER_BOUND(nope, 1); z := a = a; x := "
       "UPPER_BOUND(n, 3) + UPPER_BOUND(a); a(1); G(a, a); H(a); G(n, n); G(b, x); G(n + 1, k); "
       "G(a[1], k[1]); I(a[1]); I(k[1]); J(b := n); J(n)\n;"
       "END_FUNCTION VAR_GLOBAL CONSTANT k : ARRAY[1..2] OF INT := [1, 2]; END_VAR FUNCTION G "
       "VAR_INPUT a : ARRAY[*] OF INT; END_VAR VAR_IN_OUT b : ARRAY[*] OF INT; END_VAR "
       "END_FUNCTION FUNCTION H VAR_IN_OUT a : ARRAY[*] OF DINT; END_VAR END_FUNCTION FUNCTION I "
       "VAR_IN_OUT i : INT; END_VAR END_FUNCTION FUNCTION J VAR_INPUT a : ARRAY[*] OF INT; b : "
       "ARRAY[*] OF INT; END_VAR END_FUNCTION FUNCTION_BLOCK B VAR_INPUT a : ARRAY[*] OF INT; "
       "END_VAR END_FUNCTION_BLOCK",
       "1:10 F0007; 1:42 F0007; 1:93 F0007; 1:193 F0007; 1:214 F0007; 1:260 F0007; 1:293 F0022 "
       "NOPE; 1:322 F0007; 1:355 F0007; 1 F0023 a[1]; 17 F00B2 a, ARRAY[*] OF INT; 20 F00B2 a, "
       "ARRAY[*] OF INT; 50 F0077 a; 71 F00B2 a, ARRAY[*] OF INT; 84 F00B2 a, ARRAY[*] OF INT; 113 "
       "F007B a[1]; 120 F00B2 a, ARRAY[*] OF INT; 130 F00B2 a, ARRAY[*] OF INT; 154 F0079 2; 174 "
       "F0079 0; 191 F0076 x, DINT; 214 F0078 1.5; 233 F0020 nope; 248 F00B2 a, ARRAY[*] OF INT; "
       "252 F00B2 a, ARRAY[*] OF INT; 275 F0079 3; 280 F0060 UPPER_BOUND; 296 F0025 a; 307 F0039 "
       "a, b, ARRAY[*] OF INT; 313 F0039 a, a, ARRAY[*] OF DINT; 328 F00B1 a, b, ARRAY[*] OF INT; "
       "331 F0039 x, b, ARRAY[*] OF INT; 337 F002B +, ARRAY[1..2] OF INT, 1; 344 F0039 k, b, "
       "ARRAY[*] OF INT; 350 F00B1 a, a[1], ARRAY[*] OF INT; 356 F0039 k[1], b, ARRAY[*] OF INT; "
       "365 F0039 a[1], i, INT; 374 F0039 k[1], i, INT; 381 F0060 J; 392 F0060 J; 3:412 F0007"},
      {"PROGRAM P VAR a : ARRAY[0..n] OF INT := [4(n)]; s : STRING[m]; END_VAR VAR CONSTANT n : "
       "INT := 3; m : INT := n + 1; END_VAR END_PROGRAM PROGRAM Q VAR a : ARRAY[0..n] OF INT; "
       "END_VAR END_PROGRAM",
       "1:164 F0020 n"},
      {"TYPE My : INT; Col : (R1 := N1, R2); A2 : ARRAY[0..N1] OF INT; E1 : (Aa := Cc + 1); E2 : "
       "(Cc "
       ":= K1); E3 : (Ff := 3); Sub : INT(0..L); END_TYPE VAR_GLOBAL CONSTANT N1 : My := 4; K1 : "
       "INT "
       ":= E3.Ff; L : Sub := 1; END_VAR PROGRAM P VAR a : A2; END_VAR CASE a[5] OF Cc: ; 3: ; Aa: "
       "; "
       "END_CASE; END_PROGRAM",
       "1:131 F002F L; 1:256 F0079 5; 1:268 ~F0096 3"},
      {"TYPE C1 : (Red, Green); C2 : (Blue, Red); Mode : (Off, On); END_TYPE FUNCTION F : INT "
       "VAR_INPUT c : C2; END_VAR F := c; END_FUNCTION PROGRAM P VAR CONSTANT k : C2 := Red; "
       "END_VAR VAR c : C2 := Red; mode : Mode := Mode.On; n : INT; x : (One, Two); y : (Two, "
       "Three); z : ARRAY[0..1] OF C2 := [Red, Blue]; END_VAR c := Red; CASE c OF Red: n := 1; "
       "END_CASE; IF Red = c THEN n := F(Red) + F(c := Red); END_IF; y := Two; c := SEL(n = 1, "
       "Red, MOVE(Red)); IF MAX(Red, MUX(n, Red, Red)) = c THEN n := MIN(n, c); END_IF; n := Red; "
       "END_PROGRAM",
       "1:493 F002B MIN, INT, C2; 1:517 F0075 Red"},
      {"VAR_GLOBAL CONSTANT a : INT; b : ARRAY[0..1] OF INT; e : INT := 1; END_VAR FUNCTION_BLOCK "
       "F "
       "VAR_INPUT CONSTANT i : INT; END_VAR VAR_OUTPUT CONSTANT RETAIN o : INT; p : INT; END_VAR "
       "VAR "
       "RETAIN CONSTANT c : BOOL; END_VAR VAR PERSISTENT r : INT; END_VAR VAR_IN_OUT NON_RETAIN io "
       ": "
       "INT; END_VAR VAR_TEMP RETAIN t : INT; END_VAR END_FUNCTION_BLOCK FUNCTION G : INT VAR "
       "RETAIN v : "
       "INT; END_VAR END_FUNCTION",
       "1:21 ~F00E5 a; 1:30 ~F00E5 b; 1:140 F00E6; 1:186 ~F00E7 RETAIN; 1:202 ~F00E5 c; 1:263 "
       "~F00E7 NON_RETAIN; 1:301 ~F00E7 RETAIN; 1:365 ~F00E7 RETAIN"},
      {"FUNCTION F : INT VAR_INPUT a, b : INT; END_VAR VAR c, d, e : INT; k : ARRAY[0..1] OF INT; "
       "p : "
       "POINTER TO INT; END_VAR VAR CONSTANT n : INT := 1; END_VAR c := a; k[d] := e; p^ := 1; "
       "END_FUNCTION FUNCTION_BLOCK G VAR_OUTPUT o : INT; END_VAR VAR t, u : TON; v, w : INT; x AT "
       "%MW0 : "
       "INT; END_VAR VAR_TEMP y, z : INT; END_VAR t(); v := 1; y := 1; END_FUNCTION_BLOCK FUNCTION "
       "H : "
       "INT VAR q : INT; END_VAR END_FUNCTION PROGRAM P VAR v : INT; END_VAR VAR_TEMP w, x : INT; "
       "END_VAR "
       "FOR w := 1 TO 2 DO ; END_FOR; END_PROGRAM",
       "1:52 ~F00E9 c; 1:67 ~F00E9 k; 1:247 ~F00E8 u; 1:259 ~F00E8 w; 1:302 ~F00E9 y; 1:305 ~F00E8 "
       "z; 1:456 ~F00E8 x"},
      {"PROGRAM P VAR i : INT; b : BOOL; a : ARRAY[1..5] OF INT; c : ARRAY[1..5x] OF INT; d : "
       "INT(1..5x); t : TON; END_VAR FOR i := 1 TO 5 BY 1x DO ; END_FOR; CASE i OF 1..5x: ; 0: ; "
       "INT#40000: ; END_CASE; i := a[5x]; t(b, T#1s, 5x); IF 0 = 5x THEN END_IF; i := "
       "LTOD#10:00:00; END_PROGRAM",
       "1:71 F0003 5x; 1:94 F0003 5x; 1:135 F0003 1x; 1:165 F0003 5x; 1:176 F0004 INT#40000; 1:206 "
       "F0003 5x; 1:222 F0003 5x; 1:234 F0003 5x; 1:255 F0007 LTOD"},
      {"TYPE T : ARRAY[0..g] OF INT; END_TYPE VAR_GLOBAL CONSTANT g : INTT := 5; END_VAR PROGRAM P "
       "VAR a : ARRAY[1..k] OF INT; b : STRING[m]; c : INT(1..n); d : ARRAY[1..4] OF INT := "
       "[n(1)]; e : INT(0..9) := n; END_VAR VAR CONSTANT k : INTT := 5; m : CHAR := 5; n : INT := "
       "40000; END_VAR e := k; END_PROGRAM",
       "1:63 F0022 INTT; 1:229 F0022 INTT; 1:244 F0007 CHAR; 1:266 C0001 40000, DINT"},
      {"TYPE R : REFERENCE TO INT; END_TYPE FUNCTION F : REFERENCE TO INT VAR_OUTPUT q : REFERENCE "
       "TO INT; END_VAR q REF= F; END_FUNCTION PROGRAM P VAR i : INT; b : BOOL; r : R; a : "
       "ARRAY[0..1] OF REFERENCE TO INT; o : REFERENCE TO INT; END_VAR VAR CONSTANT c : REFERENCE "
       "TO INT REF= i; END_VAR r REF= i; a[0] REF= i; c REF= i; c := 5; b := __ISVALIDREF(a[1]); o "
       "REF= F(); END_PROGRAM",
       "1:10 F0007; 1:50 F0007; 1:82 F0007; 1:190 F0007; 1:255 F0007"},
      {"VAR_GLOBAL g : INT; END_VAR TYPE F : INT; END_TYPE FUNCTION F : INT END_FUNCTION FUNCTION "
       "G : INT END_FUNCTION TYPE G : INT; END_TYPE PROGRAM P VAR_EXTERNAL g : STRING; END_VAR VAR "
       "s : STRING; x : F; y : G; END_VAR s := g; x := 1; y := 2; END_PROGRAM",
       "1:61 F0021 F; 1:117 F0021 G; 1:162 F0091 g, INT"},
      {"TYPE S : STRUCT m : INT; END_STRUCT; E1 : (a := b + 1); E2 : (b := E3.c, d := b + 1); E3 : "
       "(c := E4#e); E4 : (e := 5); E5 : (f := h); E6 : (h := f); END_TYPE FUNCTION_BLOCK B "
       "VAR_IN_OUT x : INT := 5; END_VAR x := 1; END_FUNCTION_BLOCK PROGRAM P VAR x : S := (m := "
       "1, m := 2); t : TON := (PT := T#1s, PT := T#2s); v : INT(0..9) := a + 4; r : REAL; p : "
       "POINTER TO INT := ADR(nope); END_VAR v := DAY_OF_WEEK(); r := ATAN2(1.0); p := REF(r); p "
       ":= REF(v); CASE v OF 40000: ; 9, -40000..5: ; END_CASE; END_PROGRAM",
       "1:120 F0070 E5; 1:198 ~F00E7 5; 1:268 F002A m; 1:301 F002A PT; 1:331 F007C 10; 1:374 F0020 "
       "nope; 1:394 F0060 DAY_OF_WEEK; 1:414 F0060 ATAN2; 1:414 ~C0197 LREAL, REAL; 1:431 ~F007E "
       "REF_TO REAL, POINTER TO INT; 1:444 ~F007E REF_TO INT, POINTER TO INT; 1:462 ~F00E2 v = "
       "40000, INT"},
      {"FUNCTION F : INT VAR c : INT; END_VAR F := nope; END_FUNCTION", "1:44 F0020 nope"},
      {"VAR_GLOBAL CONSTANT a : INT; END_VAR FUNCTION F : INT VAR c : INT; END_VAR RETURN F := F; "
       "END_FUNCTION",
       "1:83 F0002 F, ;"},
  };
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(expected, brief(*analysed(source))) << source;
  }
}

}  // namespace
}  // namespace refhost
