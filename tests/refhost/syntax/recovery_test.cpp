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
      {"x := 5 + * 3; y := 2;", "2:10 Syntax error: found '*', expected expression;\n", "y := 2\n"},
      {"x := 5\nIF a THEN y := 1; END_IF", "3:1 Syntax error: found 'IF', expected ';';\n",
       "IF[y := 1]\n"},
      {"x := ; y := ; z := 1;",
       "2:6 Syntax error: found ';', expected expression;\n"
       "2:13 Syntax error: found ';', expected expression;\n",
       "z := 1\n"},
      {"IF a AND ; THEN\nIF a THEN y := 1; END_IF; z := 1; ELSE y := 2; END_IF; z := 2;",
       "2:10 Syntax error: found ';', expected THEN;\n", "z := 2\n"},
      {"y := f(IF a THEN x := 1; END_IF; z := 1;",
       "2:8 Syntax error: found 'IF', expected expression, REF_TO or ')';\n",
       "IF[x := 1]\nz := 1\n"},
      {"x = 5; y;",
       "2:3 Syntax error: found '=', expected ':=';\n2:9 Syntax error: found ';', expected ':=';\n",
       ""},
      {"IF a TEHN x := 1; y := 2; END_IF; z := 1;",
       "2:6 Syntax error: found 'TEHN', expected THEN;\n", "IF[x := 1; y := 2]\nz := 1\n"},
      {"WHILE a b := 1; END_WHILE z := 1;", "2:9 Syntax error: found 'b', expected DO;\n",
       "z := 1\n"},
      {"FOR i := 1 x := 1; END_FOR FOR i = 1 TO 2 DO END_FOR z := 1;",
       "2:12 Syntax error: found 'x', expected TO;\n2:34 Syntax error: found '=', expected ':=';\n",
       "z := 1\n"},
      {"IF a THEN FOR i := 1 TO 2 DO b := 1; END_IF; z := 1;",
       "2:38 Syntax error: found 'END_IF', expected END_FOR;\n", "IF[FOR[b := 1]]\nz := 1\n"},
      {"IF a THEN z := 1;", "2:19 Syntax error: found 'END_PROGRAM', expected END_IF;\n",
       "IF[z := 1]\n"},
      {"END_IF; z := 1;", "2:1 Syntax error: found 'END_IF', expected statement or END_PROGRAM;\n",
       "z := 1\n"},
      {"REPEAT x := 1; END_REPEAT z := 1;",
       "2:16 Syntax error: found 'END_REPEAT', expected UNTIL;\n", "z := 1\n"},
      {"CASE x OF 1,,2: a := 1; 3: b := 2; END_CASE z := 1;",
       "2:13 Syntax error: found ',', expected expression;\n", "[x; 3[b := 2]]\nz := 1\n"},
      {"CASE x OF a := 1; 3: END_CASE",
       "2:11 A statement of a CASE stands before its first label;\n", "[x; 3[]]\n"},
      {"y := f(a b); y := (1; z := 1;",
       "2:10 Syntax error: found 'b', expected ':=', '=>', ',' or ')';\n"
       "2:21 Syntax error: found ';', expected ')';\n",
       "z := 1\n"},
      {"x := 1 # 2; \xC2\xA7 := 3; \xE9 := 4; z := 1;",
       "2:8 Syntax error: unexpected character '#';\n"
       "2:13 Syntax error: unexpected character '\xC2\xA7';\n"
       "2:22 Syntax error: unexpected character '?';\n",
       "z := 1\n"},
      {"x := 'abc;\nz := 1;", "2:6 Unterminated string;\n", ""},
      {"x := 'abc\n; z := 1;", "2:6 Unterminated string;\n", "z := 1\n"},
      {"z := 1; (* x", "2:9 Unterminated comment;\n", "z := 1\n"},
      {"x := 12abc + INT#40000 + T#5x; z := 1;",
       "2:6 '12abc' is not a valid literal;\n2:14 The literal 'INT#40000' is out of range;\n"
       "2:26 'T#5x' is not a valid literal;\n",
       "x := 12abc + INT#40000 + T#5x\nz := 1\n"},
      {"a[1, i][f(x)] := b^.c^.3; c.d(1); a[1](e := 2); p^(); x := Color#Red; a[; z := 1;",
       "2:73 Syntax error: found ';', expected expression;\n",
       "a[1, i][f(x)] := b^.c^.3\nc.d(1)\na[1](e := 2)\np^()\nx := Color#Red\nz := 1\n"},
      {R"(s := 'it''s'; f("a""b", 'c''d'); z := 1;)",
       "2:10 Doubled quotes in strings ($' is a quote) are not supported;\n"
       "2:20 Doubled quotes in strings ($' is a quote) are not supported;\n",
       "z := 1\n"},
      {"FOR i := 1 TO 2 DO a := 1; END_WHILE z := 1;",
       "2:28 Syntax error: found 'END_WHILE', expected END_FOR;\n", "FOR[a := 1]\nz := 1\n"},
      {"CASE x OF A: IF b THEN y := 1; B, E.C: z := 1; END_CASE",
       "2:32 Syntax error: found 'B', expected END_IF;\n", "[x; A[IF[y := 1]]; B, E.C[z := 1]]\n"},
      {"CASE x OF A: IF b THEN y := 1; E.B: z := 1; END_CASE",
       "2:32 Syntax error: found 'E', expected END_IF;\n", "[x; A[IF[y := 1]]; E.B[z := 1]]\n"},
      {"IF a THEN WHILE b DO c := 1; END_IF; END_WHILE; IF d THEN FOR i := 1 TO 2 DO END_IF END_IF",
       "2:30 Syntax error: found 'END_IF', expected END_WHILE;\n"
       "2:78 Syntax error: found 'END_IF', expected END_FOR;\n",
       "IF[WHILE[c := 1]]\nIF[FOR[]]\n"},
      {"IF a THEN IF x = 'abc THEN\n END_IF; s := 'b; END_IF\nz := 1; s := f('a, 'b');",
       "2:18 Unterminated string;\n3:15 Unterminated string;\n4:22 Unterminated string;\n",
       "IF[]\n"},
      {"a S 5; z := 1;", "2:3 Syntax error: found 'S', expected ':=';\n", "z := 1\n"},
      {"STEP s : b := 1; END_STEP z := 1;",
       "2:1 Sequential function charts (SFC) are not supported;\n", ""},
      {"a S= b; c.3 R= d; e REF= f; g := h := 1; RETURN(x); y := CHAR#'a'; b : INT := 1;\n"
       "retry: a := 1; IF b THEN again: EXIT; done: END_IF; UNTIL a := b; z := 1;",
       "2:3 Set and reset assignments (S=, R=) are not supported;\n"
       "2:13 Set and reset assignments (S=, R=) are not supported;\n"
       "2:36 Chained assignments are not supported;\n2:48 RETURN with a value is not supported;\n"
       "2:58 The type 'CHAR' is not supported;\n2:70 Syntax error: found ':', expected ':=';\n"
       "3:1 Labels are not supported;\n3:26 Labels are not supported;\n"
       "3:39 Labels are not supported;\n3:53 Syntax error: found 'UNTIL', expected statement or "
       "END_PROGRAM;\n",
       "e REF= f\ny := CHAR#'a'\na := 1\nIF[EXIT]\nz := 1\n"},
      {"VAR_GLOBAL g : INT; END_VAR z := 1;", "", "z := 1\n"},
      {";; (* 1 (* 2 *) ** ( *) a := // x\r\n {pragma} /* y */ timer.retain + x.at + 2#10_01; f();",
       "", "a := // x\r\n {pragma} /* y */ timer.retain + x.at + 2#10_01\nf()\n"},
      {std::string("z := 1; \177E\1\2\0", 13),
       "2:9 Syntax error: the file is not a text from here on;\n", "z := 1\n"},
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
       "1:23 Syntax error: found 'b', expected ';';\n"
       "1:36 Syntax error: found ';', expected type;\n"
       "1:50 Syntax error: found ';', expected expression;\n"
       "1:60 Syntax error: found 'END_VAR', expected ':=' or ';';\n",
       "p[[a : INT; b : INT; c; e : REAL; d : INT]][]\n"},
      {"FUNCTION f : INT VAR_INST a : INT; END_VAR JMP e; END_FUNCTION",
       "1:18 VAR_INST blocks are not supported;\n1:44 Jumps (JMP) are not supported;\n",
       "f[[a : INT]][]\n"},
      {"PROGRAM p VAR a : INT; IF b THEN END_IF END_PROGRAM",
       "1:24 Syntax error: found 'IF', expected END_VAR;\n", "p[[a : INT]][IF[]]\n"},
      {"PROGRAM p VAR 1a : INT; b : INT; END_VAR VAR_TEMP 5 END_VAR END_PROGRAM",
       "1:15 Syntax error: found '1a', expected END_VAR, identifier or ';';\n"
       "1:51 Syntax error: found '5', expected END_VAR, identifier or ';';\n",
       "p[[b : INT]; []][]\n"},
      {"PROGRAM p x := 1; FUNCTION f : INT END_FUNCTION",
       "1:19 Syntax error: found 'FUNCTION', expected END_PROGRAM;\n", "p[][x := 1]\nf[][]\n"},
      {"FUNCTION f : INT END_PROGRAM PROGRAM q END_PROGRAM",
       "1:18 Syntax error: found 'END_PROGRAM', expected END_FUNCTION;\n", "f[][]\nq[][]\n"},
      {"foo bar; PROGRAM q END_PROGRAM PROGRAM 5 END_PROGRAM PROGRAM p x := 1;",
       "1:1 Syntax error: found 'foo', expected PROGRAM, FUNCTION, FUNCTION_BLOCK, VAR_GLOBAL, "
       "TYPE "
       "or CONFIGURATION;\n"
       "1:40 Syntax error: found '5', expected identifier;\n"
       "1:71 Syntax error: found end of file, expected END_PROGRAM;\n",
       "q[][]\n[][]\np[][x := 1]\n"},
      {"TYPE t : STRUCT a : INT; u : STRUCT b, c : t := (x := 1); END_STRUCT END_STRUCT\n"
       "e : (A, B := 2) := B; f : INT (A) := A; g : (A) INT; END_TYPE\n"
       "TYPE h : REF_TO t END_TYPE\n"
       "PROGRAM p VAR a : ARRAY[1..2, -1..n] OF POINTER TO INT := [1, 2(3, [4]), 2()];\n"
       "b : INT := 1, 2(3); c : INT(0..5); END_VAR END_PROGRAM\n"
       "CONFIGURATION c RESOURCE r ON x PROGRAM q WITH t : p; END_RESOURCE END_CONFIGURATION",
       "",
       "t[a : INT; u[b, c : t := (x := 1)]]\ne : (A, B := 2) := B\nf : INT (A) := A\ng : (A) "
       "INT\nh : REF_TO t\np[[a : ARRAY[1..2, -1..n] OF POINTER TO INT := [1, 2(3, [4]), 2()]; b : "
       "INT := 1, 2(3); c : INT(0..5)]][]\n"},
      {"NAMESPACE a.b USING c, d; CLASS e METHOD m END_METHOD END_CLASS INTERFACE i END_INTERFACE\n"
       "FUNCTION_BLOCK FINAL f EXTENDS g IMPLEMENTS h, i VAR PUBLIC a : INT; END_VAR\n"
       "METHOD m : INT VAR b : INT; END_VAR IF END_METHOD PROPERTY p : INT END_PROPERTY\n"
       "a := 1; END_FUNCTION_BLOCK ACTION x: y := 1; END_ACTION END_NAMESPACE\n"
       "PROGRAM s VAR a : BOOL; END_VAR INITIAL_STEP b: c(N); END_STEP END_PROGRAM\n"
       "PROGRAM l LD a ST b END_PROGRAM\n"
       "PROGRAM w VAR step, class, on : INT; END_VAR step := class; action(ld); END_PROGRAM\n"
       "CLASS z PROGRAM q END_PROGRAM CONFIGURATION k PROGRAM 5; PROGRAM v END_PROGRAM",
       "1:1 Namespaces (NAMESPACE) are not supported;\n1:15 Namespaces (USING) are not supported;\n"
       "1:27 Classes (CLASS) are not supported;\n"
       "1:65 Interfaces (INTERFACE) are not supported;\n"
       "2:16 Modifiers of units and variables are not supported;\n"
       "2:24 Derived units (EXTENDS) are not supported;\n"
       "2:34 Interfaces (IMPLEMENTS) are not supported;\n"
       "2:54 Modifiers of units and variables are not supported;\n"
       "3:1 Methods (METHOD) are not supported;\n3:51 Properties (PROPERTY) are not supported;\n"
       "4:28 Actions (ACTION) are not supported;\n"
       "5:33 Sequential function charts (SFC) are not supported;\n"
       "6:11 Instruction lists (IL) are not supported;\n"
       "8:1 Classes (CLASS) are not supported;\n"
       "8:9 Syntax error: found 'PROGRAM', expected END_CLASS;\n"
       "8:55 Syntax error: found '5', expected identifier;\n"
       "8:58 Syntax error: found 'PROGRAM', expected END_CONFIGURATION;\n",
       "f[[a : INT]][a := 1]\ns[[a : BOOL]][]\nl[][]\nw[[step, class, on : INT]][step := class; "
       "action(ld)]\nq[][]\nv[][]\n"},
      {"TYPE t : STRUCT a : ; b : INT; IF END_TYPE PROGRAM p END_PROGRAM",
       "1:21 Syntax error: found ';', expected type;\n"
       "1:32 Syntax error: found 'IF', expected END_STRUCT;\n",
       "t[a; b : INT]\np[][]\n"},
      {"TYPE u : UNION a : INT; s : STRUCT OVERLAP b AT %B0, c : INT; END_STRUCT; END_UNION\n"
       "union : INT; END_TYPE FUNCTION f : REFERENCE TO INT\n"
       "VAR x : REFERENCE TO INT REF= y; y : ARRAY[1..2, *] OF INT; z : union; END_VAR "
       "END_FUNCTION",
       "1:10 Unions (UNION) are not supported;\n"
       "1:36 Overlapping members (OVERLAP) are not supported;\n"
       "1:46 Addresses of members (AT) are not supported;\n",
       "u[a : INT; s[b]]\nunion : INT\nf[[x : REFERENCE TO INT REF= y; y : ARRAY[1..2, *] OF INT; "
       "z : union]][]\n"},
      {"FUNCTION f : ARRAY[1..] OF INT VAR a : INT; END_VAR END_FUNCTION FUNCTION g : ;\n"
       "VAR case, b : INT; END_VAR IF b THEN g := case; ENDIF case := b; CASE b OF 1: b := 2; "
       "ENDCASE\n"
       "ENDFUNCTION TYPE e : (Exit, On); END_TYPE\n"
       "FUNCTION h : ARRAY[0..1 OF INT VAR a : INT; END_VAR END_FUNCTION\n"
       "FUNCTION i : POINTER INT VAR a : INT; END_VAR END_FUNCTION",
       "1:23 Syntax error: found ']', expected expression;\n"
       "1:79 Syntax error: found ';', expected STRING, WSTRING, ARRAY, POINTER, REF_TO or "
       "identifier;\n"
       "2:5 'case' is a keyword and cannot be a name;\n"
       "2:49 Syntax error: found 'ENDIF', expected END_IF;\n"
       "2:87 Syntax error: found 'ENDCASE', expected END_CASE;\n"
       "3:1 Syntax error: found 'ENDFUNCTION', expected END_FUNCTION;\n"
       "3:23 'Exit' is a keyword and cannot be a name;\n"
       "4:25 Syntax error: found 'OF', expected ',' or ']';\n"
       "5:22 Syntax error: found 'INT', expected TO;\n",
       "e : (Exit, On)\nf[[a : INT]][]\ng[[case, b : INT]][IF[g := case]; case := b; [b; 1[b := "
       "2]]]\nh[[a : INT]][]\ni[[a : INT]][]\n"},
      {"", "", ""},
      {" // nothing", "", ""},
  };
  for (const Row& row : rows) {
    const Parsed parsed(row.body);
    EXPECT_EQ(parsed.errors(), row.errors) << row.body;
    EXPECT_EQ(parsed.units(), row.rest) << row.body;
  }
}

TEST(Recovery, TakesAMisspeltKeywordForTheKeywordWhereNoNameCanStand) {
  const std::string units[][3] = {
      {"PROGRAM p IF b THEN i := 1; END_FI; i := 2; END_PROGRAM", "END_FI", "END_IF"},
      {"PROGRAM p WHILE b DO i := 1 END_WHIL i := 2; END_PROGRAM", "END_WHIL", "END_WHILE"},
      {"PROGRAM p REPAET i := 1; UNTIL b END_REPEAT END_PROGRAM", "REPAET", "REPEAT"},
      {"PROGRAM p REPEAT i := 1; UNTLI b END_REPEAT END_PROGRAM", "UNTLI", "UNTIL"},
      {"PROGRAM p IF b THEN ELSF c THEN i := 2; END_IF END_PROGRAM", "ELSF", "ELSIF"},
      {"PROGRAM p FOR i := 1 OT 5 DO END_FOR END_PROGRAM", "OT", "TO"},
      {"PROGRAM p i := b ADN NOT c; END_PROGRAM", "ADN", "AND"},
      {"PROGRAM p i := NTO c; END_PROGRAM", "NTO", "NOT"},
      {"PROGRAM p VRA x : INT; END_VAR x := 1; END_PROGRAM", "VRA", "VAR"},
      {"PROGRAM p VAR_INOUT x : INT; END_VAR END_PROGRAM", "VAR_INOUT", "VAR_IN_OUT"},
      {"PROGRAM p VAR CONSTNT x : INT := 1; END_VAR END_PROGRAM", "CONSTNT", "CONSTANT"},
      {"PROGRAM p VAR x TA %IX0.0 : BOOL; END_VAR END_PROGRAM", "TA", "AT"},
      {"TYPE t : STRUCT s : STRIN[5]; END_STRUCT END_TYPE", "STRIN", "STRING"},
      {"TYPE p : POINTER OT INT; END_TYPE", "OT", "TO"},
      {"FUNCTION f : STRIN[5] f := 'a'; END_FUNCTION", "STRIN", "STRING"},
      {"PROGRAM p IF b THEN i := 1; ESLE; END_IF END_PROGRAM", "ESLE", "ELSE"},
      {"VAR_CONFG p.x[1] AT %QX0.0 : BOOL; END_VAR", "VAR_CONFG", "VAR_CONFIG"},
      {"CONFIGURATON c END_CONFIGURATION", "CONFIGURATON", "CONFIGURATION"},
  };
  for (const auto& [source, word, keyword] : units) {
    const Parsed parsed(source);
    ASSERT_EQ(parsed.messages.size(), 1U) << source << parsed.errors();
    std::string wanted = "found '";
    wanted.append(word).append("', expected ").append(keyword);
    EXPECT_NE(parsed.errors().find(wanted), std::string::npos);
    ASSERT_EQ(parsed.messages[0].notes.size(), 1U) << source;
    EXPECT_EQ(parsed.messages[0].notes[0].text, "did you mean '" + keyword + "'?");
  }
  for (const char* const source :
       {"PROGRAM p FOR i TO 5 DO END_FOR END_PROGRAM", "PROGRAM p i := thin 2; END_PROGRAM",
        "PROGRAM p f(IN b); b := i IN j; END_PROGRAM",
        "PROGRAM p IF b THEN cast; END_IF END_PROGRAM", "PROGRAM p els + 1; END_PROGRAM",
        "PROGRAM p VAR mdo : INT; END_VAR i := 1 mdo 2; END_PROGRAM",
        "FUNCTION_BLOCK (* *) report VAR x : INT; END_VAR END_FUNCTION_BLOCK"}) {
    for (const auto& message : Parsed(source).messages)
      EXPECT_TRUE(message.notes.empty()) << source;
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
