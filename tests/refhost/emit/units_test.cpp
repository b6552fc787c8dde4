#include <sstream>

#include "tests/refhost/translation.h"

namespace refhost {
namespace {

// In one line, without what programs have in common: prototypes, the definitions of data, and the
// pointer to it.
std::string bodies(const std::string& text) {
  std::string kept;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const bool outside = line.find_first_of(" }") != 0 && line.find('{') == std::string::npos;
    const bool declares = outside && line.find(");") != std::string::npos;
    if (!declares && line.find(" const self = &") == std::string::npos) kept += line + '\n';
  }
  return inOneLine(kept);
}

TEST(UnitsInC, WithTheirInitialValues) {
  const std::pair<const char*, const char*> rows[] = {
      {"TYPE S : STRUCT s : STRING[4] := CONCAT('a', 'b'); n : INT := 3; t : T; END_STRUCT; T : "
       "STRUCT a : ARRAY[0..3] OF INT := [1, 2(5)]; END_STRUCT; END_TYPE PROGRAM P VAR x : S; y : "
       "S := (n := 5, t := (a := [4(7)])); z : ARRAY[1..2] OF S := [(n := 1), (n := 2)]; END_VAR "
       "END_PROGRAM",
       "static void S_init(struct S* self) { char vel_t1[3]; vel_string_set(@s, 5, "
       "vel_string_concat(vel_t1, 3, 2, (const char*[]){\"a\", \"b\"})); @n = 3; T_init(&@t); } "
       "static void T_init(struct T* self) { @a.a[0] = 1; for (size_t vel_i1 = 1; vel_i1 < 3; "
       "++vel_i1) { @a.a[vel_i1] = 5; } } void P_init(void) { __builtin_memset(self, 0, sizeof "
       "*self); S_init(&@x); S_init(&@y); @y.n = 5; for (size_t vel_i1 = 0; vel_i1 < 4; ++vel_i1) "
       "{ @y.t.a.a[vel_i1] = 7; } for (size_t vel_i1 = 0; vel_i1 < 2; ++vel_i1) { "
       "S_init(&@z.a[vel_i1]); } @z.a[0].n = 1; @z.a[1].n = 2; } void P_scan(void) { (void)self; "
       "}"},
      {"FUNCTION K : INT VAR CONSTANT c : INT := 6; END_VAR VAR_INPUT p : ARRAY[1..3] OF INT := "
       "[4, 2(c)]; n : INT := c + 1; q : STRUCT x, y : INT := 7; END_STRUCT; s : STRING[3]; t : "
       "STRING[3] := 'ab'; END_VAR K := p[3] + q.y + n; END_FUNCTION FUNCTION L : INT VAR CONSTANT "
       "c : INT := 1; END_VAR L := K() + c; END_FUNCTION PROGRAM P VAR CONSTANT c : INT := 2; "
       "END_VAR VAR i : INT; END_VAR i := K(n := c) + L(); END_PROGRAM",
       "static i16 K(struct array_3_i16 p, i16 n, struct STRUCT q, const char* vel_s, const char* "
       "vel_t) { i16 vel_result = 0; i16 c = 0; (void)c; char s[4] = {0}; (void)s; char t[4] = "
       "{0}; (void)t; c = 6; vel_string_set(s, 4, vel_s); vel_string_set(t, 4, vel_t); vel_result "
       "= (i16)((i16)(p.a[2] + q.y) + n); return vel_result; } static i16 L(void) { i16 vel_result "
       "= 0; i16 c = 0; c = 1; vel_result = (i16)(K(({ struct array_3_i16 vel_t1 = {0}; "
       "vel_t1.a[0] = 4; for (size_t vel_i2 = 1; vel_i2 < 3; ++vel_i2) { vel_t1.a[vel_i2] = 6; } "
       "vel_t1; }), (i16)(6 + 1), ({ struct STRUCT vel_t2 = {0}; STRUCT_init(&vel_t2); vel_t2; }), "
       "\"\", \"ab\") + c); return vel_result; } void P_init(void) { *self = (struct P){0}; @c = "
       "2; } void P_scan(void) { @i = (i16)(K(({ struct array_3_i16 vel_t1 = {0}; vel_t1.a[0] = 4; "
       "for (size_t vel_i2 = 1; vel_i2 < 3; ++vel_i2) { vel_t1.a[vel_i2] = 6; } vel_t1; }), @c, ({ "
       "struct STRUCT vel_t2 = {0}; STRUCT_init(&vel_t2); vel_t2; }), \"\", \"ab\") + L()); }"},
      {"FUNCTION F : STRING[3] VAR_INPUT s : STRING[3]; w : WSTRING[2]; END_VAR VAR_OUTPUT o : "
       "STRING[4]; n : INT; a : ARRAY[0..1] OF INT; END_VAR VAR_IN_OUT x : STRING[5]; i : INT; "
       "END_VAR VAR t : STRING[2]; k : INT := 3; m : BOOL; u : ARRAY[0..1] OF INT; END_VAR "
       "VAR_TEMP v : INT := 4; END_VAR F := s; o := x; x := 'q'; i := i + k; a[0] := n; n := 2; m "
       ":= MEP(m); u[1] := v; t := F; END_FUNCTION PROGRAM P VAR s : STRING[3]; t : STRING[5]; i "
       "AT %MW2 : INT; END_VAR s := F(x := t, i := i, o => s); F(s := 'x', x := t, i := i); "
       "END_PROGRAM",
       "static char* "
       "F(const char* vel_s, const u16* vel_w, char* o, i16 *n, struct array_2_i16 *a, char* x, "
       "i16 *i, char* vel_result) { char s[4] = {0}; u16 w[3] = {0}; (void)w; char t[3] = {0}; i16 "
       "k = 0; u8 m = 0; struct array_2_i16 u = {0}; i16 v = 0; static u8 "
       "edge_2fc5c722ed4968ec119166eace29a770; vel_result[0] = 0; vel_string_set(s, 4, vel_s); "
       "vel_wstring_set(w, 3, vel_w); o[0] = 0; (*n) = 0; (*a) = (struct array_2_i16 ){0}; k = 3; "
       "v = 4; vel_string_set(vel_result, 4, s); vel_string_set(o, 5, x); vel_string_set(x, 6, "
       "\"q\"); (*i) = (i16)((*i) + k); a->a[0] = (*n); (*n) = 2; m = "
       "(_mep(m,&edge_2fc5c722ed4968ec119166eace29a770)); u.a[1] = v; vel_string_set(t, 3, "
       "vel_result); return vel_result; } void P_init(void) { *self = (struct P){0}; } void "
       "P_scan(void) { char vel_t1[5]; i16 vel_t2; struct array_2_i16 vel_t3; char vel_t4[4]; "
       "vel_string_set(@s, 4, (F(\"\", u\"\", vel_t1, &vel_t2, &vel_t3, @t, "
       "(i16*)(void*)&VEL_MEM(i16, 4), vel_t4), vel_string_set(@s, 4, vel_t1), vel_t4)); "
       "(void)(F(\"x\", u\"\", vel_t1, &vel_t2, &vel_t3, @t, (i16*)(void*)&VEL_MEM(i16, 4), "
       "vel_t4)); }"},
      {"FUNCTION_BLOCK B VAR_INPUT e : BOOL R_EDGE; f : BOOL F_EDGE; i : INT := 2; END_VAR "
       "VAR_OUTPUT o : INT; END_VAR VAR_IN_OUT s : STRING[3]; w : WSTRING[3]; n : INT; END_VAR "
       "VAR_TEMP t, u : INT := 3; END_VAR VAR r : REAL := 1.5; m : BOOL; END_VAR IF e THEN RETURN; "
       "END_IF; n := n + t; s := 'x'; m := MEF(m); END_FUNCTION_BLOCK PROGRAM P VAR b : B; s : "
       "STRING[3]; w : WSTRING[3]; i : INT; END_VAR VAR_TEMP t : INT; END_VAR b(e := TRUE, s := s, "
       "w := w, n := i); t := 1; END_PROGRAM",
       "struct B { u8 e; u8 edge_f88eb1b85aa8d6bfd3986057f0950eec; u8 f; u8 "
       "edge_13e4f8713ad187c166d694e86758725f; i16 i; i16 o; char* s; u16* w; i16 *n; f32 r; u8 m; "
       "u8 edge_5eedd146ab133ef40a530fbb3176c9be; }; struct P { struct B b; char s[4]; u16 w[4]; "
       "i16 i; }; static void B_init(struct B* self) { *self = (struct B){0}; @i = 2; @r = 1.5; } "
       "static void B_body(struct B* self) { i16 t = 0; i16 u = 0; t = 3; u = 3; const u8 "
       "vel_given_e = @e; @e = (vel_given_e & !@edge_f88eb1b85aa8d6bfd3986057f0950eec); "
       "@edge_f88eb1b85aa8d6bfd3986057f0950eec = vel_given_e; const u8 vel_given_f = @f; @f = "
       "(@edge_13e4f8713ad187c166d694e86758725f & !vel_given_f); "
       "@edge_13e4f8713ad187c166d694e86758725f = vel_given_f; if (@e) { goto vel_return; } (*@n) = "
       "(i16)((*@n) + t); vel_string_set(@s, 4, \"x\"); @m = "
       "(_mef(@m,&@edge_5eedd146ab133ef40a530fbb3176c9be)); vel_return:; @e = vel_given_e; @f = "
       "vel_given_f; } void P_init(void) { __builtin_memset(self, 0, sizeof *self); B_init(&@b); } "
       "void P_scan(void) { i16 t = 0; @b.e = 1; @b.s = @s; @b.w = @w; @b.n = &@i; B_body(&@b); t "
       "= 1; }"},
      {"FUNCTION M : INT VAR b : BOOL; END_VAR b := MEP(b); M := "
       "BOOL_TO_INT(_READIDIRECT(%IX0.0)); END_FUNCTION PROGRAM P VAR i : INT; x, y : BOOL; "
       "END_VAR i := i + M(); x := SEL(y, x, i = M()); IWRBIT(%QX0.0, y); END_PROGRAM",
       "static i16 M(void) { i16 vel_result = 0; u8 b = 0; static u8 "
       "edge_20c3c1de90fdfe10162e6d8a123a2181; b = "
       "(_mep(b,&edge_20c3c1de90fdfe10162e6d8a123a2181)); vel_result = "
       "((i16)(_READIDIRECT(131072))); return vel_result; } void P_init(void) { *self = (struct "
       "P){0}; } void P_scan(void) { @i = ({ i16 vel_t1 = @i; (i16)(vel_t1 + M()); }); @x = ({ u8 "
       "vel_t2 = @y; u8 vel_t3 = @x; u8 vel_t5 = ({ i16 vel_t4 = @i; vel_t4 == M(); }); "
       "SEL((vel_t2), (vel_t3), (vel_t5)); }); _WRITEODIRECT(139264, @y); }"},
      {"TYPE S : STRUCT i : INT := 3; a : ARRAY[0..2] OF BYTE; END_STRUCT; E : (r, g); END_TYPE "
       "VAR_GLOBAL g AT %QW4 : S := (i := 5); END_VAR FUNCTION F : INT VAR_IN_OUT a : ARRAY[0..3] "
       "OF INT; t : STRING[4]; i : INT; END_VAR END_FUNCTION PROGRAM P VAR a AT %MB100 : "
       "ARRAY[0..3] OF INT := [2(7)]; t AT %MB41 : STRING[4] := 'ab'; w AT %MW300 : WSTRING[3]; s "
       "AT %MB200 : S; e AT %MW4 : E; p : POINTER TO S; i, j : INT; END_VAR j := F(a := a, t := t, "
       "i := a[j]); p := ADR(s); s := g; w := \"x\"; g.a[2].%X3 := s.i > 4; e := E#g; END_PROGRAM",
       "static void globals_init(void) { static u8 vel_done; if (vel_done) return; vel_done = 1; "
       "S_init(VEL_AT(struct S, 17416)); VEL_AT(struct S, 17416)->i = 5; } static i16 F(struct "
       "array_4_i16 *a, char* t, i16 *i) { i16 vel_result = 0; (void)a; (void)t; (void)i; return "
       "vel_result; } void P_init(void) { globals_init(); __builtin_memset(self, 0, sizeof *self); "
       "for (size_t vel_i1 = 0; vel_i1 < 2; ++vel_i1) { VEL_AT(struct array_4_i16, 100)->a[vel_i1] "
       "= 7; } vel_string_set((*VEL_AT(char[5], 41)), 5, \"ab\"); S_init(VEL_AT(struct S, 200)); } "
       "void P_scan(void) { @j = F(VEL_AT(struct array_4_i16, 100), (*VEL_AT(char[5], 41)), "
       "&VEL_AT(struct array_4_i16, 100)->a[vel_index(@j, 0, 3)]); @p = (struct S*)((u8*)(_m + "
       "200)); (*VEL_AT(struct S, 200)) = (*VEL_AT(struct S, 17416)); "
       "vel_wstring_set((*VEL_AT(u16[4], 600)), 4, u\"x\"); vsbit(VEL_AT(struct S, 17416)->a.a[2], "
       "3, VEL_AT(struct S, 200)->i > 4); VEL_MEM(i16, 8) = 1; }"},
      {"FUNCTION_BLOCK V VAR o AT %QX* : BOOL; l AT %IW* : INT := 7; s AT %M* : STRING[3]; END_VAR "
       "o := l > 1; s := 'x'; END_FUNCTION_BLOCK PROGRAM P VAR v : ARRAY[1..2] OF V; b AT %Q* : "
       "BOOL; i : INT := 1; END_VAR b := NOT b; v[i](); END_PROGRAM CONFIGURATION C VAR_CONFIG "
       "p1.b AT %QX0.0 : BOOL; p1.v[1].o AT %QX1.0 : BOOL := TRUE; p1.v[2].o AT %QX1.1 : BOOL; "
       "p1.v[1].l AT %IW0 : INT; p1.v[2].l AT %IW1 : INT := 9; p1.v[1].s AT %MB50 : STRING[3]; "
       "p1.v[2].s AT %MB54 : STRING[3]; p1.i : INT := 2; END_VAR PROGRAM p1 : P; END_CONFIGURATION",
       "static void V_init(struct V* self, const u32* vel_places) { *self = (struct V){0}; @o = "
       "vel_places[0]; @l = vel_places[1]; @s = vel_places[2]; VEL_MEM(i16, @l) = 7; } static void "
       "V_body(struct V* self) { sbit(@o, VEL_MEM(i16, @l) > 1); vel_string_set((*VEL_AT(char[4], "
       "@s)), 4, \"x\"); } static void P_init(struct P* self, const u32* vel_places) { "
       "__builtin_memset(self, 0, sizeof *self); @b = vel_places[6]; for (size_t vel_i1 = 0; "
       "vel_i1 < 2; ++vel_i1) { V_init(&@v.a[vel_i1], vel_places + vel_i1 * 3); } @i = 1; } static "
       "void P_body(struct P* self) { struct V* vel_t1; sbit(@b, !gbit(@b)); vel_t1 = "
       "&@v.a[vel_index(@i, 1, 2)]; V_body(vel_t1); } void p1_init(void) { static const u32 "
       "vel_places[] = {139272, 16384, 50, 139273, 16386, 54, 139264}; P_init(&p1_data, "
       "vel_places); sbit(p1_data.v.a[0].o, 1); VEL_MEM(i16, p1_data.v.a[1].l) = 9; p1_data.i = 2; "
       "} void C_init(void) { p1_init(); } void p1_scan(void) { P_body(&p1_data); } static void "
       "C_run(void) { p1_scan(); } const vel_task C_tasks[] = { {\"\", 0, VEL_NO_TASK, NULL, "
       "C_run}, {NULL, 0, 0, NULL, NULL}, };"},
      {"TYPE M : ARRAY[0..1, 0..2] OF INT := [1, 2, 2(4), 5]; L : INT(3..9); E : (A := 2, B) := B; "
       "D : INT := k; N : STRUCT END_STRUCT; END_TYPE VAR_GLOBAL CONSTANT k : INT := 6; END_VAR "
       "PROGRAM P VAR CONSTANT k, b : BYTE := 1; END_VAR; VAR m1 : M; m2 : M := [[7], (k)([8, "
       "9])]; "
       "m3 : ARRAY[0..1, 0..1] OF ARRAY[0..1] OF INT := [1(), [[1], [2]]]; l : L; e : E; d : "
       "ARRAY[0..1] OF D; n : N; z : ARRAY[1..9] OF INT := "
       "[9(0)]; y : ARRAY[1..3] OF L := [3(4)]; x : ARRAY[1..6] OF INT := [3(1, 2)]; w : "
       "ARRAY[0..9] OF BYTE := [(k * 2)(), 1, 3(2)]; END_VAR END_PROGRAM",
       "(void) { globals_init(); __builtin_memset(self, 0, sizeof *self); @k = (u8)(1); @b = "
       "(u8)(1); @m1.a[0] = 1; @m1.a[1] = 2; for (size_t vel_i1 = 2; vel_i1 < 4; ++vel_i1) { "
       "@m1.a[vel_i1] = 4; } @m1.a[4] = 5; @m2.a[0] = 1; @m2.a[1] = 2; for (size_t vel_i1 = 2; "
       "vel_i1 < 4; ++vel_i1) { @m2.a[vel_i1] = 4; } @m2.a[4] = 5; @m2.a[0] = 7; @m2.a[3] = 8; "
       "@m2.a[4] = 9; @m3.a[2].a[0] = 1; @m3.a[3].a[0] = 2; @l = 3; @e = 2; @e = 3; for (size_t "
       "vel_i1 = 0; vel_i1 < 2; ++vel_i1) { @d.a[vel_i1] = 6; } for (size_t vel_i1 = 0; vel_i1 < "
       "3; ++vel_i1) { @y.a[vel_i1] = 3; } for (size_t vel_i1 = 0; vel_i1 < 3; ++vel_i1) { "
       "@y.a[vel_i1] = 4; } @x.a[0] = 1; @x.a[1] = 2; @x.a[2] = 1; @x.a[3] = 2; @x.a[4] = 1; "
       "@x.a[5] = 2; @w.a[2] = (u8)(1); for (size_t vel_i1 = 3; vel_i1 < 6; ++vel_i1) { "
       "@w.a[vel_i1] = (u8)(2); } } void P_scan(void) { (void)self; }"},
      {"FUNCTION_BLOCK B VAR_INPUT {bitparam} v : WORD; END_VAR VAR_IN_OUT {bitparam} io : INT; "
       "{bitparam} s : STRING[3]; END_VAR IF GETBITOFPARAM(v, 3) THEN SETBITOFPARAM(io, 1, TRUE); "
       "v.1 := GETBITOFPARAM(s, 9); END_IF END_FUNCTION_BLOCK FUNCTION F : BOOL VAR_INPUT "
       "{bitparam} v : DINT; {bitparam} x : BYTE; END_VAR F := GETBITOFPARAM(v, 31); END_FUNCTION "
       "PROGRAM P VAR w : WORD; i : INT; s : STRING[3]; b : B; t : STRUCT d : DINT; END_STRUCT; "
       "END_VAR b(v := w, io := i, s := s); b(io := i, s := s); s := SEL(F(t.d, 3), s, 'x'); IF "
       "F(-1) THEN END_IF END_PROGRAM",
       "static u8 F(i32 v, vel_bit_param offsetParam_V, u8 x, vel_bit_param offsetParam_X) { u8 "
       "vel_result = 0; (void)x; if (offsetParam_V.data == NULL) offsetParam_V = "
       "(vel_bit_param){&v, 32}; (void)offsetParam_X; vel_result = "
       "getBitOfParam(&offsetParam_V,31); return vel_result; } static void B_init(struct B* self) "
       "{ *self = (struct B){0}; } static void B_body(struct B* self) { vel_bit_param "
       "offsetParam_V = @offsetParam_V; if (offsetParam_V.data == NULL) offsetParam_V = "
       "(vel_bit_param){&@v, 16}; vel_bit_param offsetParam_IO = {@io, 16}; vel_bit_param "
       "offsetParam_S = {@s, 32}; if (getBitOfParam(&offsetParam_V,3)) { "
       "setBitOfParam(&offsetParam_IO,1,1); vsbit(@v, 1, getBitOfParam(&offsetParam_S,9)); } } "
       "void P_init(void) { __builtin_memset(self, 0, sizeof *self); B_init(&@b); } void "
       "P_scan(void) { @b.v = @w; @b.io = &@i; @b.s = @s; @b.offsetParam_V = (vel_bit_param){&@w, "
       "16}; B_body(&@b); @b.io = &@i; @b.s = @s; @b.offsetParam_V = (vel_bit_param){0}; "
       "B_body(&@b); vel_string_set(@s, 4, SEL((F(@t.d, (vel_bit_param){&@t.d, 32}, 3, "
       "(vel_bit_param){0})), (@s), (\"x\"))); if (F(-1, (vel_bit_param){0}, 0, "
       "(vel_bit_param){0})) { } }"},
      {"TYPE S : STRUCT r : REFERENCE TO INT := g; t : REFERENCE TO S; END_STRUCT; END_TYPE "
       "VAR_GLOBAL g : INT; "
       "END_VAR FUNCTION F : INT VAR_INPUT r : REFERENCE TO INT; q : REFERENCE TO WSTRING[2]; "
       "END_VAR VAR l : REFERENCE TO S; END_VAR r := 1; END_FUNCTION FUNCTION_BLOCK A VAR_IN_OUT b "
       ": B; END_VAR END_FUNCTION_BLOCK FUNCTION_BLOCK B VAR_INPUT r : REFERENCE TO STRING[3] REF= "
       "o; END_VAR VAR_OUTPUT o : STRING[3]; END_VAR VAR a : A; END_VAR r := LEFT(r, 1); "
       "END_FUNCTION_BLOCK PROGRAM P VAR s : S := (t := s); b : B; w : WSTRING[2]; x : STRING[3]; "
       "END_VAR s.t.r := F(g) + F(q := w, r := s.r); b(r := x); b(r := NULL); END_PROGRAM",
       "VEL_STRUCT S { vel_any_i16* r; struct S* t; }; struct A { struct B *b; }; struct B { char* "
       "r; char o[4]; struct A a; }; struct P { struct S s; struct B b; u16 w[3]; char x[4]; }; "
       "struct globals { i16 g; }; static void S_init(struct S* self) { @r = "
       "(vel_any_i16*)&globals_data.g; } static void globals_init(void) { static u8 vel_done; if "
       "(vel_done) return; vel_done = 1; } static i16 F(vel_any_i16* r, u16* q) { i16 vel_result = "
       "0; (void)q; struct S* l = NULL; (void)l; (*r) = 1; return vel_result; } static void "
       "A_init(struct A* self) { __builtin_memset(self, 0, sizeof *self); } static void "
       "A_body(struct A* self) { (void)self; } static void B_init(struct B* self) { "
       "__builtin_memset(self, 0, sizeof *self); @r = (char*)@o; A_init(&@a); } static void "
       "B_body(struct B* self) { char vel_t1[4]; vel_string_set(@r, 4, vel_string_left(vel_t1, 4, "
       "@r, 1LL)); } void P_init(void) { globals_init(); __builtin_memset(self, 0, sizeof *self); "
       "S_init(&@s); @s.t = (struct S*)&@s; B_init(&@b); } void P_scan(void) { vel_any_i16* const "
       "vel_t1 = @s.t->r; (*vel_t1) = ({ i16 vel_t2 = F((vel_any_i16*)&globals_data.g, NULL); "
       "(i16)(vel_t2 + F((vel_any_i16*)@s.r, (u16*)@w)); }); @b.r = (char*)@x; B_body(&@b); @b.r = "
       "NULL; B_body(&@b); }"},
      {"FUNCTION F : DINT VAR_INPUT a : ARRAY[*] OF INT; END_VAR VAR_IN_OUT b : ARRAY[*, *] OF "
       "STRING[3]; END_VAR VAR d : INT; c : STRING[3]; END_VAR c := b[d, 1]; b[a[2], d] := c; F := "
       "LOWER_BOUND(a, 1) + UPPER_BOUND(b, d); END_FUNCTION FUNCTION_BLOCK B VAR_IN_OUT a : "
       "ARRAY[*] OF INT; x : ARRAY[*] OF B; END_VAR a[1] := a[2]; END_FUNCTION_BLOCK PROGRAM P VAR "
       "n : ARRAY[-1..2] OF INT; m : ARRAY[0..1, 5..6] OF STRING[3]; d : DINT; b : B; x : "
       "ARRAY[1..2] OF B; END_VAR d := F(n, m) + LOWER_BOUND(n, 1) + UPPER_BOUND(m, d); d := "
       "UPPER_BOUND(n, 1); b(a := n, x := x); END_PROGRAM",
       "red \"-Wbool-compare\" #endif struct open_1_i16 { vel_any_i16* a; i64 low[1]; i64 high[1]; "
       "}; struct open_2_char_4_ { char (*a)[4]; i64 low[2]; i64 high[2]; }; struct open_1_B { "
       "struct B* a; i64 low[1]; i64 high[1]; }; VEL_STRUCT array_4_i16 { i16 a[4]; }; VEL_STRUCT "
       "array_4_char_4_ { char a[4][4]; }; struct B { struct open_1_i16 a; struct open_1_B x; }; "
       "VEL_STRUCT array_2_B { struct B a[2]; }; struct P { struct array_4_i16 n; struct "
       "array_4_char_4_ m; i32 d; struct B b; struct array_2_B x; }; static i32 F(struct "
       "open_1_i16 a, struct open_2_char_4_ b) { i32 vel_result = 0; i16 d = 0; char c[4] = {0}; "
       "vel_string_set(c, 4, b.a[vel_index(d, b.low[0], b.high[0]) * (size_t)(b.high[1] - b.low[1] "
       "+ 1) + vel_index(1, b.low[1], b.high[1])]); vel_string_set(b.a[vel_index(a.a[vel_index(2, "
       "a.low[0], a.high[0])], b.low[0], b.high[0]) * (size_t)(b.high[1] - b.low[1] + 1) + "
       "vel_index(d, b.low[1], b.high[1])], 4, c); vel_result = (i32)((u32)((i32)a.low[0]) + "
       "(u32)((i32)b.high[vel_index(d, 1, 2)])); return vel_result; } static void B_init(struct B* "
       "self) { __builtin_memset(self, 0, sizeof *self); } static void B_body(struct B* self) { "
       "@a.a[vel_index(1, @a.low[0], @a.high[0])] = @a.a[vel_index(2, @a.low[0], @a.high[0])]; } "
       "void P_init(void) { __builtin_memset(self, 0, sizeof *self); B_init(&@b); for (size_t "
       "vel_i1 = 0; vel_i1 < 2; ++vel_i1) { B_init(&@x.a[vel_i1]); } } void P_scan(void) { @d = ({ "
       "i32 vel_t1 = (i32)((u32)F((struct open_1_i16){(vel_any_i16*)@n.a, {-1}, {2}}, (struct "
       "open_2_char_4_){(char(*)[4])@m.a, {0, 5}, {1, 6}}) + (u32)(-1)); (i32)((u32)vel_t1 + "
       "(u32)((const i32[]){1, 6}[vel_index(@d, 1, 2)])); }); @d = 2; @b.a = (struct "
       "open_1_i16){(vel_any_i16*)@n.a, {-1}, {2}}; @b.x = (struct open_1_B){(struct B*)@x.a, {1}, "
       "{2}}; B_body(&@b); }"},
      {"VAR_GLOBAL g : INT := 3; h AT %MW2 : INT := 4; t : STRING[3]; f : B; END_VAR VAR_GLOBAL "
       "CONSTANT n : INT := m + 1; m : INT := 2; END_VAR FUNCTION_BLOCK B VAR a : INT; END_VAR a "
       ":= n; g := a; END_FUNCTION_BLOCK PROGRAM P VAR_EXTERNAL g : INT; END_VAR VAR x AT %QX0.0 : "
       "BOOL := TRUE; y : ARRAY[0..n] OF INT; END_VAR VAR_OUTPUT o AT %MD3 : REAL := 2; END_VAR "
       "f(); h := h + g; t := 'x'; x := %IX0.0; END_PROGRAM PROGRAM Q VAR i : INT; END_VAR i := n; "
       "END_PROGRAM",
       "struct P { struct array_4_i16 y; }; struct Q { i16 i; }; struct globals { i16 n; i16 m; "
       "i16 g; char t[4]; struct B f; }; static void globals_init(void) { static u8 vel_done; if "
       "(vel_done) return; vel_done = 1; globals_data.m = 2; globals_data.n = 3; globals_data.g = "
       "3; VEL_MEM(i16, 4) = 4; B_init(&globals_data.f); } static void B_init(struct B* self) { "
       "*self = (struct B){0}; } static void B_body(struct B* self) { @a = globals_data.n; "
       "globals_data.g = @a; } void P_init(void) { globals_init(); __builtin_memset(self, 0, "
       "sizeof *self); sbit(139264, 1); VEL_MEM(f32, 12) = 2; } void P_scan(void) { (void)self; "
       "B_body(&globals_data.f); VEL_MEM(i16, 4) = (i16)(VEL_MEM(i16, 4) + globals_data.g); "
       "vel_string_set(globals_data.t, 4, \"x\"); sbit(139264, gbit(131072)); } void Q_init(void) "
       "{ globals_init(); *self = (struct Q){0}; } void Q_scan(void) { @i = globals_data.n; }"},
      {"FUNCTION A : INT A := %MW0; END_FUNCTION FUNCTION B : INT B := A() + 1; END_FUNCTION "
       "FUNCTION C : INT VAR_INPUT n : INT; END_VAR C := n + Red; END_FUNCTION TYPE T : (Red); "
       "END_TYPE FUNCTION D : INT VAR_INPUT p : POINTER TO INT; END_VAR D := p^; END_FUNCTION "
       "FUNCTION E : INT VAR_IN_OUT n : INT; END_VAR n := n + 1; E := n; END_FUNCTION PROGRAM P "
       "VAR n, i : INT; b : BOOL; s : STRING[3]; END_VAR i := n + C(n); i := n + A(); i := n + B() "
       "* n; i := C(E(n)) + D(ADR(n)); i := LIMIT(n, E(n), 3); i := MAX(i, C(1)); i := MUX(E(n), "
       "1, n); b := n = 1 AND_THEN E(n) = 2 OR_ELSE b; s := CONCAT(s, INT_TO_STRING(E(n)), s); i "
       ":= 3 + E(n) * 2; i := E(n) * 2 + 3; i := E(n) + n; END_PROGRAM",
       "static i16 A(void) { i16 vel_result = 0; vel_result = (i16)(VEL_MEM(u16, 0)); return "
       "vel_result; } static i16 B(void) { i16 vel_result = 0; vel_result = (i16)(A() + 1); return "
       "vel_result; } static i16 C(i16 n) { i16 vel_result = 0; vel_result = (i16)(n + 0); return "
       "vel_result; } static i16 D(vel_any_i16* p) { i16 vel_result = 0; vel_result = (*p); return "
       "vel_result; } static i16 E(i16 *n) { i16 vel_result = 0; (*n) = (i16)((*n) + 1); "
       "vel_result = (*n); return vel_result; } void P_init(void) { *self = (struct P){0}; } void "
       "P_scan(void) { char vel_t11[4]; char vel_t12[81]; char vel_t13[87]; @i = (i16)(@n + "
       "C(@n)); @i = ({ i16 vel_t1 = @n; (i16)(vel_t1 + A()); }); @i = ({ i16 vel_t2 = @n; "
       "(i16)(vel_t2 + ({ i16 vel_t3 = B(); (i16)(vel_t3 * @n); })); }); @i = ({ i16 vel_t4 = "
       "C(E(&@n)); (i16)(vel_t4 + D((vel_any_i16*)(&@n))); }); @i = ({ i16 vel_t5 = @n; i16 vel_t6 "
       "= E(&@n); LIMIT((vel_t5), (vel_t6), (3)); }); @i = ({ i16 vel_t7 = C(1); MAX((@i), "
       "(vel_t7)); }); @i = ({ i16 vel_t8 = E(&@n); ((i16)FC_MUX_INT(2, vel_t8, (i16)1, (i16)@n)); "
       "}); @b = ({ u8 vel_t10 = ({ u8 vel_t9 = @n == 1; (vel_t9) && (E(&@n) == 2); }); (vel_t10) "
       "|| @b; }); vel_string_set(@s, 4, ({ vel_string_set(vel_t11, 4, @s); "
       "vel_string_set(vel_t12, 81, INT_TO_STRING((E(&@n)), _returnString)); "
       "vel_string_concat(vel_t13, 87, 3, (const char*[]){vel_t11, vel_t12, @s}); })); @i = "
       "(i16)(3 + (i16)(E(&@n) * 2)); @i = (i16)((i16)(E(&@n) * 2) + 3); @i = ({ i16 vel_t14 = "
       "E(&@n); (i16)(vel_t14 + @n); }); }"},
      {"PROGRAM P VAR r : R_TRIG; b : BOOL; END_VAR r(CLK := b, Q => b); END_PROGRAM",
       "struct R_TRIG { u8 CLK; u8 Q; u8 M; }; struct P { struct R_TRIG r; u8 b; }; static void "
       "R_TRIG_init(struct R_TRIG* self) { *self = (struct R_TRIG){0}; } static inline void "
       "R_TRIG_body(struct R_TRIG* self) { @Q = @CLK & (!@M); @M = @CLK; } void P_init(void) { "
       "__builtin_memset(self, 0, sizeof *self); R_TRIG_init(&@r); } void P_scan(void) { @r.CLK = "
       "@b; R_TRIG_body(&@r); @b = @r.Q; }"},
      {"PROGRAM P VAR i : INT; b : BOOL; END_VAR i := i + 1; b := b AND (F(i) > 1); END_PROGRAM "
       "FUNCTION F : INT VAR_INPUT n : INT; END_VAR IF n > 0 THEN F := F(n - 1); END_IF "
       "END_FUNCTION",
       "static i16 F(i16 n) { i16 vel_result = 0; if (n > 0) { vel_result = F((i16)(n - 1)); } "
       "return vel_result; } void P_init(void) { *self = (struct P){0}; } void P_scan(void) { @i = "
       "(i16)(@i + 1); @b = @b & (F(@i) > 1); }"},
      {"FUNCTION O : INT VAR_INPUT a : INT; b : BOOL := TRUE OR_ELSE FALSE; END_VAR O := a; "
       "END_FUNCTION PROGRAM P VAR f, g : BOOL; i : INT; END_VAR i := O(EN := f, a := 1, ENO => g) "
       "+ SEL(g, 1, i); END_PROGRAM",
       "void P_scan(void) { @i = ({ i16 vel_t3 = ({ u8 vel_t1 = @f; __auto_type vel_t2 = vel_t1 ? "
       "(O(1, 1 || 0)) : 0; @g = vel_t1; vel_t2; }); (i16)(vel_t3 + (SEL((@g), (1), (@i)))); }); "
       "}"},
      {"FUNCTION F : INT VAR_INPUT v : INT; END_VAR VAR returnValue : INT; END_VAR F := ROL(v, "
       "returnValue); END_FUNCTION",
       "vel_result = ROL(v, returnValue_, i16, u16); return vel_result; }"},
  };
  // Each row begins with some part of the file and goes on to its end.
  for (const auto& [source, expected] : rows) {
    const std::string text = bodies(analysed(source)->translate());
    const std::size_t size = std::string_view(expected).size();
    ASSERT_LT(size, text.size()) << text;
    EXPECT_EQ(expected, text.substr(text.size() - size)) << source;
  }
}

TEST(UnitsInC, AreDeclaredFirst) {
  const auto session = analysed(
      "TYPE S : STRUCT n : INT := 1; END_STRUCT; END_TYPE VAR_GLOBAL g : S; END_VAR FUNCTION F : "
      "INT END_FUNCTION FUNCTION_BLOCK B END_FUNCTION_BLOCK PROGRAM P END_PROGRAM");
  const std::string text = inOneLine(session->translate());
  EXPECT_NE(std::string::npos,
            text.find("static struct P P_data __attribute__((unused)); struct globals { struct S "
                      "g; }; static struct globals globals_data __attribute__((unused)); static "
                      "void S_init(struct S* self) __attribute__((unused)); static void "
                      "globals_init(void); static i16 F(void) __attribute__((unused)); static void "
                      "B_init(struct B* self) __attribute__((unused)); static void B_body(struct "
                      "B* self) __attribute__((unused)); void P_init(void); void P_scan(void); "
                      "static void S_init(struct S* self) {"))
      << text;
}

// The lines from the one before `head` to the directive that leads back to the C file. A right
// number in that becomes '@'.
std::string linesOfUnit(const std::string& text, const std::string& head) {
  const std::size_t begin = text.rfind('\n', text.rfind('\n', text.find(head)) - 1) + 1;
  const std::size_t end = text.find("\"c.c\"\n", begin);
  const auto number = std::count(text.begin(), text.begin() + static_cast<long>(end), '\n') + 2;
  const std::string last = "#line " + std::to_string(number) + " ";
  const bool right = text.compare(end - last.size(), last.size(), last) == 0;
  return right ? text.substr(begin, end - last.size() - begin) + "@" : text;
}

TEST(UnitsInC, NameTheLinesOfTheSource) {
  const auto session = analysed(
      "PROGRAM P VAR i : INT := 1; t : TON; END_VAR\n"
      "  CASE\n    i OF\n    1: i := 2;\n    3, 4:\n      i := 5;\n    ELSE i := 6; END_CASE\n"
      "  FOR i := 1 TO i DO\n    EXIT;\n  END_FOR\n"
      "  WHILE\n    i < 2 DO\n    CONTINUE;\n  END_WHILE\n"
      "  REPEAT\n    i := F();\n\n\n  UNTIL i > 3 END_REPEAT\n"
      "  t(IN := TRUE,\n    PT := T#1s);\nEND_PROGRAM\n"
      "FUNCTION F : INT\n"
      "VAR_INPUT p : ARRAY[1..2] OF INT := [2(7)]; END_VAR VAR k : INT := 3; END_VAR\n"
      "  IF k > 1 THEN F := p[1]; END_IF; F := F + 1;\n"
      "  IF k = 2 AND\n    k = 3 THEN RETURN;\n  ELSIF k = 4 THEN F := 1;\n  ELSE\n    F := 2;\n"
      "  END_IF;\nEND_FUNCTION\n",
      {}, "a \"?\\\xC3\xA9\n.st");
  const std::string text = session->translate({true, "c.c", {}});
  EXPECT_EQ(
      "#line 1 \"a \\\"\\?\\\\\\303\\251\\012.st\"\n"
      "void P_scan(void) { struct P* const self = &P_data; i16 vel_t1; i64 vel_t2; u8 vel_t3;\n"
      "#line 3\n"
      "  vel_t1 = self->i; if (vel_t1 == 1) {\n"
      "    self->i = 2; }\n"
      "#line 3\n"
      "  else if (vel_t1 == 3 || vel_t1 == 4) {\n"
      "#line 6\n"
      "    self->i = 5; } else {\n"
      "    self->i = 6; }\n"
      "  self->i = 1; vel_t2 = self->i; for (vel_t3 = (i64)self->i <= vel_t2; vel_t3; vel_t3 = "
      "vel_for_more_i64(self->i, vel_t2, 1), self->i = (i16)((u64)self->i + (u64)(1))) {\n"
      "    break; }\n"
      "#line 12\n"
      "  while (self->i < 2) {\n"
      "    continue; }\n"
      "#line 15\n"
      "  do {\n"
      "    self->i = F(({ struct array_2_i16 vel_t4 = {0}; for (size_t vel_i3 = 0; vel_i3 < 2; "
      "++vel_i3) { vel_t4.a[vel_i3] = 7; } vel_t4; })); }\n"
      "#line 19\n"
      "  while (!(self->i > 3));\n"
      "  self->t.IN = 1; self->t.PT = 1000; TON_body(&self->t);\n"
      "#line 22\n"
      "}\n@",
      linesOfUnit(text, "void P_scan(void) {"));
  EXPECT_EQ(
      "#line 23 \"a \\\"\\?\\\\\\303\\251\\012.st\"\n"
      "static i16 F(struct array_2_i16 p) { i16 vel_result = 0; i16 k = 0; k = 3;\n"
      "#line 25\n"
      "  if (k > 1) { vel_result = p.a[0]; } vel_result = (i16)(vel_result + 1);\n"
      "  if ((k == 2) & (k == 3)) {\n"
      "    goto vel_return; }\n"
      "  else if (k == 4) { vel_result = 1; } else {\n"
      "#line 30\n"
      "    vel_result = 2; }\n"
      "#line 32\n"
      "vel_return:; return vel_result; }\n@",
      linesOfUnit(text, "static i16 F(struct array_2_i16 p) {"));
}

TEST(UnitsInC, BitsOfWordsAreAddressesInDeviceLetters) {
  Options letters;
  letters.notation = Notation::Letters;
  const std::string types = "TYPE T : BOOL := D10.3; S : STRUCT a : T; END_STRUCT; END_TYPE ";
  const std::string variables = "b: BOOL; d1: INT; s : S;";
  const auto session =
      analysed(types + program(variables, "D10.3 := b; b := D10.3; d1.3 := X3;"), letters);
  EXPECT_EQ("sbit(24739, @b); @b = gbit(24739); vsbit(@d1, 3, gbit(131075));",
            inOneLine(scanText(*session)));
  EXPECT_NE(std::string::npos, session->translate().find("self->a = gbit(24739);"));
}

}  // namespace
}  // namespace refhost
