#include "tests/refhost/translation.h"

namespace refhost {
namespace {

constexpr const char* kAll =
    "b, c: BOOL; bt: BYTE; si: SINT; i, j: INT; d: DINT; l: LINT; u: UINT; ud: UDINT; ul: ULINT; "
    "r: REAL; lr: LREAL; t: TIME; lt: LTIME; td: TOD; dt1, dt2: DT; s: STRING[5]; w: WSTRING[5]; "
    "m AT %MW2: INT; o AT %QX0.1: BOOL;";

// Values of arithmetic on numbers are compared by the random programs.
TEST(Emission, StatementsBecomeC) {
  const std::pair<const char*, const char*> rows[] = {
      {"i := i + 1;", "self->i = (i16)(self->i + 1);"},
      {"d := d * 2 - i;",
       "self->d = (i32)((u32)(i32)((u32)self->d * (u32)2) - (u32)(i32)self->i);"},
      {"u := u * u;", "self->u = (u16)((u32)self->u * (u32)self->u);"},
      {"i := -i;", "self->i = (i16)-self->i;"},
      {"l := -l;", "self->l = (i64)(0 - (u64)self->l);"},
      {"l := -9223372036854775808;", "self->l = (-9223372036854775807LL - 1);"},
      {"t := t + T#1s;", "self->t = (i32)((u32)self->t + (u32)1000);"},
      {"lt := t;", "self->lt = (i64)(self->t) * 1000000;"},
      {"lt := lt + t;", "self->lt = (i64)((u64)self->lt + (u64)((i64)self->t * 1000000));"},
      {"t := t * 1.5;", "self->t = vel_truncate_i32((f64)self->t * 1.5);"},
      {"t := dt2 - dt1;", "self->t = (i32)(((i64)self->dt2 - (i64)self->dt1) * 1000);"},
      {"td := td - t;", "self->td = vel_tod_shift(self->td, -((i64)self->t));"},
      {"s := 'a$'b$0A';", "vel_string_set(self->s, 6, \"a'b\\012\");"},
      {"b := s < 'x';", "self->b = vel_string_compare(self->s, \"x\") < 0;"},
      {"w := \"$00e4\";", "vel_wstring_set(self->w, 6, (const u16[]){228, 0});"},
      {"m := m + 1;", "VEL_MEM(i16, 4) = (i16)(VEL_MEM(i16, 4) + 1);"},
      {"o := %IX0.0;", "sbit(139265, gbit(131072));"},
      {"i.3 := i.4;", "vsbit(self->i, 3, vgbit((self->i, 4)));"},
      {"b := NOT bt = 16#F0 AND NOT i = 5;",
       "self->b = (vel_not_u8(self->bt) == 240) & (((i16)~self->i) == 5);"},
      {"i.%X3 := b AND_THEN c;", "vsbit(self->i, 3, self->b && self->c);"},
      {"i := j + limit(0, i, 100);", "self->i = (i16)(self->j + (LIMIT((0), (self->i), (100))));"},
      {"i := MAX(MIN(i, j), 3);", "self->i = MAX((MIN((self->i), (self->j))), (3));"},
      {"lt := MAX(lt, t);", "self->lt = MAX((self->lt), (((i64)(self->t) * 1000000)));"},
      {"si := i;", "self->si = (i8)(self->i);"},
      {"s := LTIME_TO_STRING(t);",
       "vel_string_set(self->s, 6, LTIME_TO_STRING((((i64)(self->t) * 1000000)), _returnString));"},
      {"s := CONCAT('x', BOOL_TO_STRING(b));",
       "vel_string_concat(self->s, 6, 2, (const char*[]){\"x\", BOOL_TO_STRING((self->b), "
       "_returnString)});"},
      {"w := LEFT(\"xy\", i);", "vel_wstring_left(self->w, 3, u\"xy\", (i64)self->i);"},
      {"b := MUX(i, i = j, FALSE);",
       "self->b = ((u8)FC_MUX_INT(2, self->i, (u8)(self->i == self->j), (u8)0));"},
      {"i := ROL(i, LIMIT(0, i, 9));",
       "self->i = ROL(self->i, (LIMIT((0), (self->i), (9))), i16, u16);"},
      {"ul := SIZEOF(i) - ud;", "self->ul = ((u32)sizeof(i16)) - self->ud;"},
      {"ud := SIZEOF(STRING[9]) + SIZEOF(wstring);",
       "self->ud = ((u32)sizeof(char[10])) + ((u32)sizeof(u16[81]));"},
      {"b := MIN(r, 0.1) = r;", "self->b = ((f32)(MIN((self->r), (0.1)))) == self->r;"},
      {"b := SEL(b, INT_TO_STRING(1), s) = 'x';",
       "self->b = vel_string_compare(SEL((self->b), (INT_TO_STRING((1), _returnString)), "
       "(self->s)), "
       "\"x\") == 0;"},
      {"lr := SEL(b, i + 1, j) ** 2;",
       "self->lr = vel_pow((f64)(SEL((self->b), ((i16)(self->i + 1)), (self->j))), 2);"},
      {"MAX(i, j);", "(void)(MAX((self->i), (self->j)));"},
  };
  for (const auto& [statement, expected] : rows) {
    const auto session = analysed(program(kAll, statement));
    EXPECT_EQ(std::string("  ") + expected + "\n", scanText(*session))
        << statement << fmt::format("\n{}", fmt::join(said(*session), "\n"));
  }
}

TEST(Emission, LoopsNeitherOverrunNorEvaluateTheirBoundsTwice) {
  const std::string guarded =
      scanText(*analysed(program(kAll, "FOR i := 1 TO j DO d := d; END_FOR;")));
  EXPECT_EQ(
      "  i64 vel_t1;\n  u8 vel_t2;\n"
      "  self->i = 1;\n  vel_t1 = self->j;\n"
      "  for (vel_t2 = (i64)self->i <= vel_t1; vel_t2; vel_t2 = vel_for_more_i64(self->i, vel_t1, "
      "1), "
      "self->i = (i16)((u64)self->i + (u64)(1))) {\n"
      "    self->d = self->d;\n  }\n",
      guarded);
  const std::string toTheTop =
      scanText(*analysed(program(kAll, "FOR si := 120 TO 127 DO END_FOR;")));
  EXPECT_NE(std::string::npos, toTheTop.find("vel_for_more_i64")) << toTheTop;
  const std::string counting =
      scanText(*analysed(program(kAll, "FOR i := 9 TO 1 BY -2 DO END_FOR;")));
  EXPECT_EQ("  self->i = 9;\n  for (; self->i >= 1; self->i = (i16)((u64)self->i - 2u)) {\n  }\n",
            counting);
}

TEST(Emission, BitsOfWordsAreAddressesInDeviceLetters) {
  Options letters;
  letters.notation = Notation::Letters;
  const std::string variables = "b: BOOL; d1: INT;";
  const auto session = analysed(program(variables, "D10.3 := b; b := D10.3; d1.3 := X3;"), letters);
  EXPECT_EQ("sbit(24739, @b); @b = gbit(24739); vsbit(@d1, 3, gbit(131075));",
            inOneLine(scanText(*session)));
}

TEST(Emission, LocalsAreNotCapturedByMacros) {
  const auto session = analysed(
      "FUNCTION F : INT VAR_INPUT v: INT; END_VAR VAR returnValue: INT := 3; END_VAR\n"
      "F := ROL(v, returnValue); END_FUNCTION");
  EXPECT_NE(std::string::npos, session->translate().find("ROL(v, returnValue_, i16, u16)"));
}

TEST(Emission, NamesStayAsWrittenWhereTheyCan) {
  const auto session = analysed(
      "FUNCTION double : INT VAR_INPUT int1: INT; END_VAR double := INT1; END_FUNCTION\n"
      "PROGRAM P VAR Self, size_t, char, char_, vel_t1: INT; END_VAR CHAR := DOUBLE(char_) + "
      "vel_t1; "
      "END_PROGRAM");
  ASSERT_TRUE(said(*session).empty());
  EXPECT_EQ("  self->char_ = (i16)(double_(self->char__) + self->st_vel_t1);\n",
            scanText(*session));
  EXPECT_NE(std::string::npos, session->translate().find("i16 size_t_;"));
}

TEST(Emission, CompilersFindNothingToWarnOf) {
  const auto session = analysed(
      "FUNCTION floor : LREAL VAR_INPUT INT32_MAX: USINT; END_VAR floor := 1; END_FUNCTION "
      "FUNCTION_BLOCK B VAR_IN_OUT io: LREAL; END_VAR END_FUNCTION_BLOCK "
      "PROGRAM P VAR u: USINT; l: LINT; x AT %ML1: LREAL; fb: B; END_VAR\n"
      "CASE u OF 0..5, 200..255: u := 1; END_CASE; fb(io := x); x := floor(3);\n"
      "CASE l OF -9223372036854775808: u := 1; END_CASE;\n"
      "CASE u OF 0, 256: u := 1; END_CASE; END_PROGRAM");
  ASSERT_TRUE(said(*session).empty());
  const std::string text = session->translate();
  for (const char* const expected :
       {"static f64 floor_(u8 INT32_MAX_)", "u8 vel_t1;", "vel_t1 >= 200 && vel_t1 <= 255",
        "self->fb.io = (f64*)(void*)&VEL_MEM(f64, 8);", "vel_t2 == (-9223372036854775807LL - 1)",
        "i64 vel_t3;"}) {
    EXPECT_NE(std::string::npos, text.find(expected)) << expected << "\n" << text;
  }
}

TEST(Emission, ValuesKeepTheTypeThatTheProgramGivesThem) {
  const std::string names = "l, o: LINT; u: ULINT; s: UDINT; i, j: INT; k: DINT;";
  const struct {
    const char* statement;
    const char* text;
  } rows[] = {
      // A 64-bit unsigned selector meets no negative label.
      {"CASE u OF -1: i := 1; -2..3, -5..-4: i := 2; END_CASE;",
       "if (0) {\n    self->i = 1;\n  } else if ((vel_t1 >= 0 && vel_t1 <= 3) || 0) {"},
      // C would go on with the unsigned type in which the operands of the macro meet.
      {"l := LIMIT(MIN(u, s), l, o);", "LIMIT(((i64)(MIN((self->u), (self->s)))), (self->l)"},
      {"l := o / ULINT#18446744073709551614;",
       "vel_div_i64(self->o, (i64)18446744073709551614ULL)"},
      {"k := MAX(k, k) + LIMIT(0, i, j);", "MAX((self->k), (self->k))) + (u32)(i32)(LIMIT((0)"},
  };
  for (const auto& row : rows) {
    const std::string text = scanText(*analysed(program(names, row.statement)));
    EXPECT_NE(std::string::npos, text.find(row.text)) << text;
  }
}

TEST(Emission, StaticTextsAppearOnceAndFirst) {
  const auto session = analysed(program(
      kAll,
      "i := LIMIT(0, i, 9); d := REAL_TO_DINT(r); d := LREAL_TO_DINT(lr); i := limit(1, i, 2);"));
  const std::string text = session->translate();
  const std::string macro = "#define __real_to_integer(fvalue, type) \\\n({\\\n";
  const std::size_t first = text.find(macro);
  ASSERT_NE(std::string::npos, first);
  EXPECT_EQ(std::string::npos, text.find(macro, first + 1));
  EXPECT_EQ(text.find("#define LIMIT"), text.rfind("#define LIMIT"));
  EXPECT_LT(text.find("#define LIMIT"), text.find("P_scan"));
}

TEST(Session, VariablesAreListedAndSet) {
  const auto session = analysed(program(kAll, ""));
  session->translate();
  const auto variables = session->programVariables();
  const auto assigned = [&](const std::string& name, const std::string& text) {
    for (const ProgramVariable& variable : variables) {
      std::string statement;
      std::string error;
      if (variable.name != name) continue;
      return session->assignmentText(variable, text, statement, error) ? statement : error;
    }
    return std::string("no such variable");
  };
  EXPECT_EQ("P_data.lt = (i64)(1500) * 1000000;", assigned("lt", "T#1s500ms"));
  EXPECT_EQ("sbit(139265, 1);", assigned("o", "TRUE"));
  EXPECT_EQ("VEL_MEM(i16, 4) = 7;", assigned("m", "INT#7"));
  EXPECT_EQ("'1e39' is not a value of type REAL", assigned("r", "1e39"));
  EXPECT_EQ("'300' is not a value of type SINT", assigned("si", "300"));
  EXPECT_EQ("'1' is not a value of type BOOL", assigned("b", "1"));
  EXPECT_EQ("'); abort(' is not a literal", assigned("i", "); abort("));
}

}  // namespace
}  // namespace refhost
