#include <gtest/gtest.h>

#include <string>

#include "refhost/syntax/parsed.h"

namespace {

struct Row {
  std::string body;    // of a program whose first line is its name
  std::string errors;  // Parsed::errors
  std::string rest;    // Parsed::statements
};

TEST(Recovery, SaysOnceWhatIsWrongAndGoesOn) {
  const Row rows[] = {
      {"x := 5 + * 3; y := 2;", "2:10 Syntax error: found '*', expected expression;\n",
       "(:= y 2)\n"},
      {"x := 5\nIF a THEN y := 1; END_IF", "3:1 Syntax error: found 'IF', expected ';';\n",
       "(if a [(:= y 1)])\n"},
      {"x := ; y := ; z := 1;",
       "2:6 Syntax error: found ';', expected expression;\n"
       "2:13 Syntax error: found ';', expected expression;\n",
       "(:= z 1)\n"},
      {"x = 5; y;",
       "2:3 Syntax error: found '=', expected ':=';\n2:9 Syntax error: found ';', expected ':=';\n",
       ""},
      {"IF a TEHN x := 1; y := 2; END_IF; z := 1;",
       "2:6 Syntax error: found 'TEHN', expected THEN;\n", "(:= z 1)\n"},
      {"WHILE a b := 1; END_WHILE z := 1;", "2:9 Syntax error: found 'b', expected DO;\n",
       "(:= z 1)\n"},
      {"FOR i := 1 x := 1; END_FOR FOR i = 1 TO 2 DO END_FOR z := 1;",
       "2:12 Syntax error: found 'x', expected TO;\n2:34 Syntax error: found '=', expected ':=';\n",
       "(:= z 1)\n"},
      {"IF a THEN FOR i := 1 TO 2 DO b := 1; END_IF; z := 1;",
       "2:38 Syntax error: found 'END_IF', expected END_FOR;\n",
       "(if a [(for (:= i 1) 2 _ [(:= b 1)])])\n(:= z 1)\n"},
      {"IF a THEN z := 1;", "2:19 Syntax error: found 'END_PROGRAM', expected END_IF;\n",
       "(if a [(:= z 1)])\n"},
      {"END_IF; z := 1;", "2:1 Syntax error: found 'END_IF', expected statement or END_PROGRAM;\n",
       "(:= z 1)\n"},
      {"REPEAT x := 1; END_REPEAT z := 1;",
       "2:16 Syntax error: found 'END_REPEAT', expected UNTIL;\n", "(:= z 1)\n"},
      {"CASE x OF 1,,2: a := 1; 3: b := 2; END_CASE z := 1;",
       "2:13 Syntax error: found ',', expected expression;\n",
       "(case x (of (labels 3) [(:= b 2)]))\n(:= z 1)\n"},
      {"CASE x OF a := 1; 3: END_CASE",
       "2:11 A statement of a CASE stands before its first label;\n",
       "(case x (of (labels 3) []))\n"},
      {"y := f(a b); y := (1; z := 1;",
       "2:10 Syntax error: found 'b', expected ':=', '=>', ',' or ')';\n"
       "2:21 Syntax error: found ';', expected ')';\n",
       "(:= z 1)\n"},
      {"x := 1 # 2; \xC2\xA7 := 3; \xE9 := 4; z := 1;",
       "2:8 Syntax error: unexpected character '#';\n"
       "2:13 Syntax error: unexpected character '\xC2\xA7';\n"
       "2:21 Syntax error: unexpected character '?';\n",
       "(:= z 1)\n"},
      {"x := 'abc;\nz := 1;", "2:6 Unterminated string;\n", ""},
      {"x := 'abc\n; z := 1;", "2:6 Unterminated string;\n", "(:= z 1)\n"},
      {"z := 1; (* x", "2:9 Unterminated comment;\n", "(:= z 1)\n"},
      {"x := 12abc + INT#40000 + T#5x; z := 1;",
       "2:6 '12abc' is not a valid literal;\n2:14 The literal 'INT#40000' is out of range;\n"
       "2:26 'T#5x' is not a valid literal;\n",
       "(:= x (+ (+ 12abc INT#40000) T#5x))\n(:= z 1)\n"},
      {"a[1] := b^; c.d(1); z := 1;",
       "2:1 Arrays (index in brackets) are not supported;\n"
       "2:9 Pointers (dereference '^') are not supported;\n"
       "2:13 Calls through a member are not supported;\n",
       "(:= a b)\n(:= z 1)\n"},
      {"VAR_GLOBAL g : INT; END_VAR z := 1;",
       "2:1 Global variables (VAR_GLOBAL) are not supported;\n", "(:= z 1)\n"},
      {std::string("z := 1; \0\1\2", 11),
       "2:9 Syntax error: the file is not a text from here on;\n", "(:= z 1)\n"},
  };
  for (const Row& row : rows) {
    const Parsed parsed("PROGRAM p\n" + row.body + " END_PROGRAM");
    EXPECT_EQ(parsed.errors(), row.errors) << row.body;
    EXPECT_EQ(parsed.statements(), row.rest) << row.body;
  }
}

TEST(Recovery, KeepsUnitsAndDeclarationsApart) {
  const Row rows[] = {
      {"PROGRAM p VAR a : INT b : INT; c : ; e : REAL := ; d : INT END_VAR END_PROGRAM",
       "1:23 Syntax error: found 'b', expected ':=' or ';';\n"
       "1:36 Syntax error: found ';', expected type;\n"
       "1:50 Syntax error: found ';', expected expression;\n"
       "1:60 Syntax error: found 'END_VAR', expected ':=' or ';';\n",
       "(program p _ [(var (decl INT _ _ a) (decl REAL _ _ e) (decl INT _ _ d))] [])\n"},
      {"PROGRAM p VAR a : INT; IF b THEN END_IF END_PROGRAM",
       "1:24 Syntax error: found 'IF', expected END_VAR;\n",
       "(program p _ [(var (decl INT _ _ a))] [(if b [])])\n"},
      {"PROGRAM p x := 1; FUNCTION f : INT END_FUNCTION",
       "1:19 Syntax error: found 'FUNCTION', expected END_PROGRAM;\n",
       "(program p _ [] [(:= x 1)])\n(function f INT [] [])\n"},
      {"FUNCTION f : INT END_PROGRAM PROGRAM q END_PROGRAM",
       "1:18 Syntax error: found 'END_PROGRAM', expected END_FUNCTION;\n",
       "(function f INT [] [])\n(program q _ [] [])\n"},
      {"foo bar; PROGRAM q END_PROGRAM PROGRAM 5 END_PROGRAM PROGRAM p x := 1;",
       "1:1 Syntax error: found 'foo', expected PROGRAM, FUNCTION or FUNCTION_BLOCK;\n"
       "1:40 Syntax error: found '5', expected identifier;\n"
       "1:71 Syntax error: found end of file, expected END_PROGRAM;\n",
       "(program q _ [] [])\n(program  _ [] [])\n(program p _ [] [(:= x 1)])\n"},
      {"TYPE t : STRUCT a : INT; END_STRUCT END_TYPE\n"
       "PROGRAM p VAR a : ARRAY[1..2] OF INT := [1, 2(3)]; s : STRUCT b : INT; END_STRUCT;\n"
       "c : REF_TO INT; d : (x, y); e : INT(0..5); f : POINTER TO REAL; END_VAR END_PROGRAM\n"
       "CONFIGURATION c RESOURCE r ON x PROGRAM q WITH t : p; END_RESOURCE END_CONFIGURATION",
       "1:1 Data type declarations (TYPE) are not supported;\n"
       "2:19 Arrays are not supported;\n"
       "2:41 Initial values of arrays and structures are not supported;\n"
       "2:56 Structures (STRUCT) are not supported;\n"
       "3:5 References (REF_TO) are not supported;\n"
       "3:21 Enumerations are not supported;\n"
       "3:33 Subranges are not supported;\n"
       "3:48 Pointers (POINTER TO) are not supported;\n"
       "4:1 Configurations are not supported;\n",
       "(program p _ [(var (decl ? _ _ a) (decl ? _ _ s) (decl ? _ _ c) (decl ? _ _ d)"
       " (decl ? _ _ e) (decl ? _ _ f))] [])\n"},
      {"", "", ""},
      {" // nothing", "", ""},
  };
  for (const Row& row : rows) {
    const Parsed parsed(row.body);
    EXPECT_EQ(parsed.errors(), row.errors) << row.body;
    EXPECT_EQ(parsed.units(), row.rest) << row.body;
  }
}

TEST(Recovery, EndsAFloodOfErrors) {
  std::string source = "PROGRAM p\n";
  for (int i = 0; i < 100'000; ++i) source += "x := ;\n";
  const Parsed parsed(source + "END_PROGRAM");
  ASSERT_EQ(parsed.messages.size(), 201U);
  EXPECT_EQ(parsed.messages.back().text, "Too many errors: the rest of the file is not read;");
}

}  // namespace
