#include "tests/refhost/translation.h"

namespace refhost {
namespace {

constexpr const char* kAll =
    "b, c: BOOL; bt: BYTE; si: SINT; i, j: INT; d: DINT; l: LINT; u: UINT; ud: UDINT; ul: ULINT; "
    "r: REAL; lr: LREAL; t: TIME; lt: LTIME; td: TOD; dt1, dt2: DT; s: STRING[5]; w: WSTRING[5]; "
    "m AT %MW2: INT; o AT %QX0.1: BOOL;";

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
  EXPECT_EQ("P_data.b = 1;", assigned("b", "1"));
  EXPECT_EQ("'2' is not a value of type BOOL", assigned("b", "2"));
  EXPECT_EQ("'); abort(' is not a literal", assigned("i", "); abort("));
}

}  // namespace
}  // namespace refhost
