#include "tests/refhost/translation.h"

namespace refhost {
namespace {

// "line:column replacement" of each fix, and its message without one.
std::string fixes(const std::string& source) {
  const auto session = analysed(source);
  std::string all;
  for (const Diagnostic& message : session->messages()) {
    for (const Fix& fix : message.fixes) {
      const TextEdit& edit = fix.edits.front();
      const LineColumn at = session->sources().position(edit.range.begin);
      all += fmt::format("{}:{}+{} {}; ", at.line, at.column, edit.range.length, edit.text);
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
  EXPECT_EQ(fixes(program("ab, ac, x : INT; t : TNO; u : STRNIG; v : Intt; w : ABCDE; z : NULL;",
                          "ad := y; abcdef := 1;")),
            "1:36+3 TON; 1:45+6 STRING; 1:57+4 INT; Unknown type 'ABCDE'; Unknown type 'NULL'; "
            "Unknown identifier 'ad'; "
            "Unknown identifier 'y'; Unknown identifier 'abcdef'; ");
}

TEST(Suggestions, AreWhatCanStandThere) {
  const std::string rows[][2] = {
      {"b := TREU; ip := NULLL; c := Colr#Gren; c := Colr.Red; b := BOLL#TRUE; i := INTT#5;",
       "2:6+4 TRUE; 2:18+5 NULL; 2:30+9 Color#Green; 2:46+4 Color; 2:61+9 BOOL#TRUE; 2:77+4 INT; "},
      {"i := LIMIT(MM := 0, IN := 1, MX := 3); i := ADD(IN2 := 1, IN3 := 2); i := MOV(1); CTUU(); "
       "SQRRT(i := 1); "
       "i := F(bb := 1, a := 2);",
       "2:12+2 MN; 2:59+3 IN1; 2:75+3 MOVE; Unknown identifier 'CTUU'; Unknown identifier 'SQRRT'; "
       "2:113+2 b; "},
      {"Gren := 1; lvl.Off := 1; ptt.x := i; a[kk] := 1; kk := 1; CASE i OF ii: ; END_CASE",
       "Unknown identifier 'Gren'; Unknown identifier 'lvl'; 2:26+3 pt; 2:40+2 k; Unknown "
       "identifier 'ii'; "},
      {"i := true1; i := full; r := nul * 2.0; i := fbb; i := LEM(s); FOR bb := 1 TO 2 DO ; "
       "END_FOR; "
       "IF sss THEN ; END_IF; i := ii[2]; i := iii^; i := BB + 1; fb.o1 := 1; i := fb.o1;",
       "Unknown identifier 'true1'; Unknown identifier 'full'; 2:29+3 ul; Unknown identifier "
       "'fbb'; 2:55+3 LEN; 2:67+2 bt; Unknown identifier 'sss'; 2:121+2 ip; Unknown identifier "
       "'iii'; 'fb' has no member 'o1'; "},
      {"END_PROGRAM VAR_GLOBAL speed : INT; END_VAR CONFIGURATION c VAR_CONFIG Q.aa : INT; "
       "END_VAR TASK fast(INTERVALL := T#1s); PROGRAM Q WITH fats : Q2; PROGRAM R : PP; "
       "END_CONFIGURATION "
       "PROGRAM Q2 VAR_EXTERNAL sped : INT; END_VAR VAR a : ARRAY[1..sped] OF INT; END_VAR",
       "2:74+2 a; 2:102+9 INTERVAL; 2:137+4 fast; 2:160+2 P; 2:206+4 speed; 'sped' is not a "
       "constant integer; "},
  };
  for (const auto& [statements, expected] : rows) {
    EXPECT_EQ(fixes(withEverything(statements)), expected) << statements;
  }
}

}  // namespace
}  // namespace refhost
