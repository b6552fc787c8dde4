#include "tests/refhost/translation.h"

namespace refhost {
namespace {

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
      "i: INT; d: DINT; r: REAL; lr: LREAL;",
      "i := LIMIT(0, i, 9); d := REAL_TO_DINT(r); d := LREAL_TO_DINT(lr); i := limit(1, i, 2);"));
  const std::string text = session->translate();
  const std::string macro = "#define __real_to_integer(fvalue, type) \\\n({\\\n";
  const std::size_t first = text.find(macro);
  ASSERT_NE(std::string::npos, first);
  EXPECT_EQ(std::string::npos, text.find(macro, first + 1));
  EXPECT_EQ(text.find("#define LIMIT"), text.rfind("#define LIMIT"));
  EXPECT_LT(text.find("#define LIMIT"), text.find("P_scan"));
}

}  // namespace
}  // namespace refhost
