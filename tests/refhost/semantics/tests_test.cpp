#include "tests/refhost/translation.h"

namespace refhost {
namespace {

TEST(UnitTests, AreJudgedLikeUnits) {
  const std::pair<const char*, const char*> rows[] = {
      // The words are names where no unit begins.
      {"PROGRAM P VAR test, setup, teardown, end_test, mock, assert_eq : INT; END_VAR test := "
       "setup; "
       "end_test := mock; teardown := assert_eq; END_PROGRAM",
       ""},
      {"FUNCTION test : INT VAR_INPUT setup : INT; END_VAR test := setup; END_FUNCTION TYPE "
       "teardown : INT; END_TYPE PROGRAM setup VAR x : teardown; END_VAR x := test(x); END_PROGRAM "
       "VAR_GLOBAL end_test : INT; END_VAR",
       ""},
      {"FUNCTION ASSERT_EQ : INT VAR_INPUT a : INT; END_VAR ASSERT_EQ := a; END_FUNCTION PROGRAM P "
       "VAR x : INT; END_VAR x := ASSERT_EQ(1); END_PROGRAM TEST 'x' ASSERT_EQ(1); END_TEST",
       ""},
      {"TEST 'a' ASSERT_TRUE(TRUE); TEST \"b\" ; END_TEST SETUP VAR x : INT; END_VAR TEST 'c' x := "
       "1; "
       "END_TEST",
       "29 F0002 TEST; 76 F0002 TEST"},
      {"TETS 'a' ; END_TEST TEST 'b' ; END_TETS TEST 'c' ; ENDTEST TEST 'd' ; END TEST",
       "1 F0002 TETS; 32 F0002 END_TETS; 52 F0002 ENDTEST; 71 F0002 END"},
      {"TEST 5 ; END_TEST TEST T#5s ; END_TEST TEST abc ; END_TEST", "6 F0002; 24 F0002; 45 F0002"},
      {"TEST 'a' ; END_TEST TEST 'a' ; END_TEST SETUP ; END_SETUP Setup ; END_SETUP TEST 'A' ; "
       "END_TEST TEST 'SETUP' ; END_TEST",
       "26 F0021 a; 59 F0021 SETUP"},
      {"TEST 'Ab' ; END_TEST TEST \"$0041b\" ; END_TEST TEST '$Z' ; END_TEST TEST '' ; END_TEST "
       "TEST 'r' VAR x : INT; END_VAR VAR_GLOBAL g : INT; END_VAR x := g; END_TEST PROGRAM P "
       "VAR x : INT; END_VAR x := g; END_PROGRAM TEST 'big' VAR a : ARRAY[1..1000000] OF LINT; "
       "END_VAR a[1] := 5; END_TEST",
       "27 F0021 Ab; 52 F0003 , ; 73 F0002; 127 F0007; 198 F0020 g; 218 F009A big"},
      // SETUP's variables are seen by the others, whose own ones hide them.
      {"TEST 'a' VAR y : ARRAY[1..k] OF INT; x : BOOL; END_VAR x := TRUE; y[3] := z; c := Red; "
       "END_TEST SETUP VAR x, z : INT; c : (Red, Green); END_VAR VAR CONSTANT k : INT := 3; "
       "END_VAR "
       "END_SETUP TEARDOWN VAR q : INT; END_VAR q := zz; ASSERT_EQ(x, q); END_TEARDOWN PROGRAM P "
       "VAR "
       "a : INT; END_VAR a := z; END_PROGRAM",
       "225 F0020 zz; 295 F0020 z"},
      {"FUNCTION_BLOCK F VAR v : INT; END_VAR VAR CONSTANT k : INT := 1; END_VAR v := k; "
       "END_FUNCTION_BLOCK PROGRAM P VAR f : F; x, y : INT; q : P; END_VAR VAR_TEMP t : INT; "
       "END_VAR "
       "x := f.v; t := x + t; END_PROGRAM TEST 'x' VAR f : F; p : P; END_VAR f.v := 5; f.k := 4; "
       "p.x := p.f.v; p.nope := 1; p.t := 1; ASSERT_EQ(f, f); p(); END_TEST",
       "138 F0022 P; 182 F0024 f, v; 254 F0023 f.k; 280 F0024 p, nope; 293 F0024 p, t; 301 F002B "
       "ASSERT_EQ, F, F"},
      {"TEST 'a' VAR_INPUT x : INT; END_VAR MOCK fb.x; MOCK_FUNCTION F RETURNS 5.5; "
       "MOCK_VERIFY_CALLED(F); x := 1; END_TEST",
       "20 F0007; 37 F0007; 48 F0007; 77 F0007"},
      {"MOCK F END_MOCK TEST 'a' STUB F END_STUB FAKE(x); END_TEST MOCK_FUNCTION G G := 1; "
       "END_MOCK "
       "TEST 'b' x := 1; END_TEST",
       "1 F0007; 26 F0007; 42 F0007; 60 F0007; 102 F0020 x"},
      // Of the SETUP, a test does not see temporary variables.
      {"FUNCTION_BLOCK F VAR_OUTPUT o, end_test : INT; END_VAR VAR i AT %I* : INT; END_VAR o := i; "
       "END_FUNCTION_BLOCK SETUP VAR_TEMP t : F; u : INT; END_VAR u := 1; END_SETUP TEST 'a' VAR "
       "RETAIN f "
       ": F; many : ARRAY[1..100001] OF F; own AT %Q* : BOOL; END_VAR f.o := 5; f.end_test := f.i; "
       "u := 2; END_TEST FUNCTION_BLOCK G VAR f : F; END_VAR f.o := 5; END_FUNCTION_BLOCK",
       "126 F00D6 t; 181 ~F00E7 RETAIN; 195 F0007; 232 F0007; 281 F0020 u; 334 F0023 f.o"},
      {"TEST 'a' ASSERT_EG(1, 1); END_TEST PROGRAM P ASSERT_TRUE(TRUE); ADVANCE_TIME(5); "
       "END_PROGRAM",
       "10 F0020 ASSERT_EG; 46 F0100 ASSERT_TRUE; 65 F0100 ADVANCE_TIME"},
      {"TYPE S : STRUCT x : INT; END_STRUCT; T : STRUCT x : INT; END_STRUCT; R : STRUCT x : "
       "REFERENCE TO INT; END_STRUCT; END_TYPE TEST 'a' VAR x : INT; b : BOOL; s : STRING; t : "
       "TIME; "
       "st, st2 : S; o : T; r : R; a : ARRAY[1..2] OF INT; z : ARRAY[0..1] OF INT; END_VAR\n"
       "ASSERT_EQ(x); ASSERT_EQ(x, 1, 's', 2); ASSERT_TRUE(x); ASSERT_EQ(x, s); ASSERT_NEAR(x, t, "
       "1); "
       "ADVANCE_TIME(b); ASSERT_EQ(x, 1, 5); b := ASSERT_EQ(x, 1); ASSERT_EQ(a := x, b := 1); "
       "ADVANCE_TIME(1, 'x'); ASSERT_EQ(INT, 5); ASSERT_EQ(st, o); ASSERT_EQ(r, r); ASSERT_GT(st, "
       "st2); "
       "ASSERT_EQ(a, z); ASSERT_EQ(st, 5); ASSERT_NEQ(st, st2); ASSERT_LT(b, TRUE); ASSERT_NEAR(a, "
       "a, 1); ASSERT_NEAR(st, x, 1); "
       "ASSERT_NEAR(TOD#1:0:0, TOD#2:0:0, x); ASSERT_NEAR(b, b, 1); END_TEST",
       "3:1 F0060 ASSERT_EQ; 3:36 F0029 ASSERT_EQ; 3:52 F002C ASSERT_TRUE, INT; 3:56 F002B "
       "ASSERT_EQ, INT, "
       "STRING; 3:73 F002B ASSERT_NEAR, INT, TIME; 3:108 F002C ADVANCE_TIME, BOOL; 3:128 C0032 5, "
       "STRING; 3:137 F0026 ASSERT_EQ; 3:164 F0027 ASSERT_EQ, a; 3:197 F0029 ADVANCE_TIME; 3:213 "
       "F003A INT; 3:222 F002B ASSERT_EQ, S, T; 3:240 F002B ASSERT_EQ, R, R; 3:257 F002B "
       "ASSERT_GT, S, S; 3:277 F002B ASSERT_EQ, ARRAY[1..2] OF INT, ARRAY[0..1] OF INT; 3:294 "
       "F002B ASSERT_EQ, S, 5; 3:365 F0007; 3:387 F0007; 3:398 F002B ASSERT_NEAR, TOD, INT; 3:436 "
       "F002B ASSERT_NEAR, BOOL, BOOL"},
  };
  for (const auto& [source, messages] : rows) {
    EXPECT_EQ(brief(*analysed("\n" + std::string(source), {}, "test.st", true)), messages)
        << source;
  }
}

TEST(UnitTests, LeaveTheProgramAlone) {
  const std::string program = "PROGRAM P VAR x : INT; END_VAR x := x + 1; END_PROGRAM\n";
  const std::string tests =
      "SETUP VAR p : P; END_VAR p(); END_SETUP TEST 'a' ASSERT_EQ(nothing, p.x); END_TEST\n";
  const auto alone = analysed(program);
  const auto both = analysed(program + tests);
  EXPECT_EQ(both->translate(), alone->translate());
  EXPECT_TRUE(both->messages().empty());
}

TEST(UnitTests, Translate) {
  const auto session = analysed(
      "VAR_GLOBAL g : INT; END_VAR PROGRAM P VAR x : INT; i AT %MB1 : BYTE; END_VAR x := x + 1; "
      "END_PROGRAM SETUP VAR p : P; END_VAR p(); END_SETUP TEST 'it$'s' VAR r : REAL; s : "
      "STRING[3]; "
      "l : LTIME; END_VAR p.x := g; p.i := 1; ASSERT_EQ(p.x, 1, 'text'); ASSERT_GT(r, 1); "
      "ASSERT_EQ(s, 'abcd'); ASSERT_NEAR(l, T#1ms, l); ADVANCE_TIME(T#2ms); ADVANCE_TIME(5); "
      "ASSERT_FALSE(p.x > 3 AND g = 1); END_TEST TEARDOWN ASSERT_TRUE(TRUE); END_TEARDOWN",
      {}, "test.st", true);
  EXPECT_NE(session->translate().find("static void P_body(struct P* self)"), std::string::npos);
  const TestProgram program = session->tests();
  ASSERT_EQ(program.tests.size(), 1U);
  EXPECT_EQ(inOneLine(program.fixtures),
            "static struct setup_0 setup_0_data; static void setup_0_init(struct setup_0* self) { "
            "__builtin_memset(self, 0, sizeof *self); P_init(&@p); } static void "
            "setup_0_body(struct setup_0* self) { P_body(&@p); } static void setup_0_scan(void) { "
            "globals_init(); setup_0_init(&setup_0_data); setup_0_body(&setup_0_data); } static "
            "void teardown_2(void) { if (!1) vel_test_fail(5, NULL, NULL); }");
  EXPECT_EQ(
      inOneLine(program.tests[0].text),
      "static void test_1(void) { f32 r = 0; char s[4] = {0}; i64 l = 0; i16 vel_t1; i16 vel_t2; "
      "f32 vel_t3; f32 vel_t4; char vel_t5[4]; char vel_t6[81]; i64 vel_t7; i32 vel_t8; i64 "
      "vel_t9; setup_0_data.p.x = globals_data.g; VEL_MEM(u8, 1) = (u8)(1); vel_t1 = "
      "setup_0_data.p.x; vel_t2 = 1; if (!(vel_t1 == 1)) vel_test_fail(0, (const void* "
      "const[]){&vel_t1, &vel_t2}, \"text\"); vel_t3 = r; vel_t4 = 1; if (!(vel_t3 > 1)) "
      "vel_test_fail(1, (const void* const[]){&vel_t3, &vel_t4}, NULL); vel_string_set(vel_t5, 4, "
      "s); vel_string_set(vel_t6, 81, \"abcd\"); if (!(vel_string_compare(vel_t5, \"abcd\") == 0)) "
      "vel_test_fail(2, (const void* const[]){&vel_t5, &vel_t6}, NULL); vel_t7 = l; vel_t8 = 1; "
      "vel_t9 = l; if (!vel_test_near_whole(vel_t7 < 1000000LL, vel_t7, 1000000LL, vel_t9)) "
      "vel_test_fail(3, (const void* const[]){&vel_t7, &vel_t8, &vel_t9}, NULL); "
      "vel_test_advance(2000000LL); vel_test_advance(5LL); if (((setup_0_data.p.x > 3) & "
      "(globals_data.g == 1))) vel_test_fail(4, NULL, NULL); }");
  EXPECT_EQ(program.tests[0].setup + program.tests[0].body + program.tests[0].teardown,
            "setup_0_scantest_1teardown_2");
}

}  // namespace
}  // namespace refhost
