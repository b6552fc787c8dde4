#include "tests/refhost/translation.h"

namespace refhost {
namespace {

// "line:column replacement" of each fix, and its message without one.
std::string fixes(const std::string& source) {
  const auto session = analysed(source);
  std::string all;
  for (const Diagnostic& message : session->messages()) {
    for (const Fix& fix : message.fixes) {
      const LineColumn at = session->sources().position(fix.range.begin);
      all += fmt::format("{}:{}+{} {}; ", at.line, at.column, fix.range.length, fix.replacement);
    }
    if (message.fixes.empty()) all += message.text + " ";
  }
  return all;
}

TEST(Suggestions, AreTheNearestNames) {
  EXPECT_EQ(
      fixes(withEverything("w := LIMTI(0, 1, 2); c := Gren; c := Color#Rde; fb(oi := 1); i := "
                           "LIMIT(NM := 0, IN := 1, MX := 3); IF b THEN ; ESLE i := 1; "
                           "END_IF; WHLIE b DO END_WHILE; c := Color.Grene; ud := SIZEOF(DNIT);")),
      "2:6+5 LIMIT; 2:27+4 Green; 2:44+3 Red; 2:52+2 io; 2:73+2 MN; 2:113+4 ELSE; 2:134+5 WHILE; "
      "2:167+5 Green; 2:187+4 DINT; ");
  // Two that are equally near, one letter, and too many edits.
  EXPECT_EQ(fixes(program("ab, ac, x : INT; t : TNO; u : STRNIG; v : Intt; w : ABCDE;",
                          "ad := y; abcdef := 1;")),
            "1:36+3 TON; 1:45+6 STRING; 1:57+4 INT; Unknown type 'ABCDE'; Unknown identifier 'ad'; "
            "Unknown identifier 'y'; Unknown identifier 'abcdef'; ");
}

}  // namespace
}  // namespace refhost
