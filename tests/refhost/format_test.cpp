// The formatter: texts before and after, and that a formatted program is the same program.
#include "refhost/format/format.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "hostkit/folding.h"
#include "one_case_in.h"
#include "refhost/format/piece.h"
#include "translation.h"

namespace refhost {
namespace {

std::string formatted(const std::string& text) { return withEdits(text, formattingEdits(text)); }

std::string withStatements(const std::string& body) {
  return "PROGRAM P\nVAR\n  a, b : INT;\nEND_VAR\n" + body + "END_PROGRAM\n";
}

TEST(Format, WritesOneStyle) {
  const struct {
    const char* before;
    const char* after;
  } kUnits[] = {
      {"", ""},
      {"\n\n// end", "// end\n"},
      {"program P;var retain x:int;end_var end_program;",
       "PROGRAM P;\nVAR RETAIN\n  x : INT;\nEND_VAR\nEND_PROGRAM;\n"},
      {"TYPE T:STRUCT a:INT;b:STRUCT c:bool;END_STRUCT;END_STRUCT:=(a:=5);u:(A,B)byte;END_TYPE",
       "TYPE\n  T : STRUCT\n    a : INT;\n    b : STRUCT\n      c : BOOL;\n    END_STRUCT;\n  "
       "END_STRUCT := (a := 5);\n  u : (A, B) BYTE;\nEND_TYPE\n"},
      {"FUNCTION F:array[1..2]of int F[1]:=SIZEOF(int);END_FUNCTION\n// G\nFUNCTION G END_FUNCTION",
       "FUNCTION F : ARRAY[1..2] OF INT\n  F[1] := SIZEOF(int);\nEND_FUNCTION\n\n// G\n"
       "FUNCTION G\nEND_FUNCTION\n"},
      {"CONFIGURATION C RESOURCE r ON c task t(INTERVAL:=t#1S);program retain p with t:P(a=>g);"
       "VAR_ACCESS x  : y ; END_VAR END_RESOURCE var_config r.p.v at %qx0.0:bool;END_VAR "
       "END_CONFIGURATION",
       "CONFIGURATION C\n  RESOURCE r ON c\n    TASK t(INTERVAL := T#1s);\n"
       "    PROGRAM RETAIN p WITH t : P(a => g);\n    VAR_ACCESS x  : y ; END_VAR\n"
       "  END_RESOURCE\n  VAR_CONFIG\n    r.p.v AT %QX0.0 : BOOL;\n  END_VAR\n"
       "END_CONFIGURATION\n"},
      {"TEST 'x'var a:INT;END_VAR a:=1;END_TEST",
       "TEST 'x'\nVAR\n  a : INT;\nEND_VAR\n  a := 1;\nEND_TEST\n"},
      {"VAR_GLOBAL long,name:INT:=1;at%mw0:INT;c at %mb9:BYTE:=byte#16#ff;// 1\n\n\nd:Bool;// 2\n"
       "rows:ARRAY[1..2,1..2]OF INT:=[1,2,\n3,4];END_VAR",
       "VAR_GLOBAL\n  long, name : INT  := 1;\n  AT %MW0    : INT;\n"
       "  c AT %MB9  : BYTE := BYTE#16#FF;  // 1\n\n  d    : BOOL;  // 2\n"
       "  rows : ARRAY[1..2, 1..2] OF INT := [1, 2,\n"
       "                                      3, 4];\nEND_VAR\n"},
      {"TYPE E:(A:=1,// one\nBlue,\nRed:=3);END_TYPE VAR_GLOBAL x,// one\ny:INT;z:INT;END_VAR",
       "TYPE\n  E : (A   := 1,  // one\n       Blue,\n       Red := 3);\nEND_TYPE\n\n"
       "VAR_GLOBAL\n  x,  // one\n  y : INT;\n  z : INT;\nEND_VAR\n"},
      {"VAR_GLOBAL a:INT;\r\n  (* x\r\n     y *)  \r\nb:INT;END_VAR\r\n",
       "VAR_GLOBAL\r\n  a : INT;\r\n  (* x\r\n     y *)\r\n  b : INT;\r\nEND_VAR\r\n"},
  };
  for (const auto& row : kUnits) {
    EXPECT_EQ(formatted(row.before), row.after);
    EXPECT_EQ(formatted(row.after), row.after);
  }
  const struct {
    const char* before;
    const char* after;
  } kStatements[] = {
      {"IF a=1 THEN;ELSIF not(a<>-b)THEN a:=2 ;ELSE a:=- -b;END_IF;",
       "  IF a = 1 THEN\n    ;\n  ELSIF NOT (a <> -b) THEN\n    a := 2;\n  ELSE\n    a := --b;\n"
       "  END_IF;\n"},
      {"CASE a OF 1:;2..3:a:=1;\n4:\na:=2;5:a:=3;b:=4;ELSE a:=5;END_CASE",
       "  CASE a OF\n    1: ;\n    2..3: a := 1;\n    4:\n      a := 2;\n    5:\n      a := 3;\n"
       "      b := 4;\n  ELSE\n    a := 5;\n  END_CASE\n"},
      {"REPEAT a:=a+1;UNTIL a>3 end_repeat FOR a:=1 TO 9 BY-1 DO exit;END_FOR",
       "  REPEAT\n    a := a + 1;\n  UNTIL a > 3\n  END_REPEAT\n  FOR a := 1 TO 9 BY -1 DO\n"
       "    EXIT;\n  END_FOR\n"},
      {"a:=and(a,b)and(b OR int#16#ff);f(String:=x.string,q=>p^[1] . x);x REF=y;",
       "  a := AND(a, b) AND (b OR INT#16#FF);\n  f(String := x.string, q => p^[1].x);\n"
       "  x REF= y;\n"},
      {"a:=1;(* of a *)b:=2;// of b\n(* before *) a:=3;\n\n\n  // own\n b:=4;{nowarn} a:=5;\na:=6;",
       "  a := 1;  (* of a *)\n  b := 2;  // of b\n  (* before *) a := 3;\n\n  // own\n"
       "  b := 4; {nowarn} a := 5;\n  a := 6;\n"},
      {"IF a=1 THEN\na:=1;\n  // of b\nELSIF a=2 THEN\n// of ELSE\nELSE\n// last\nEND_IF",
       "  IF a = 1 THEN\n    a := 1;\n    // of b\n  ELSIF a = 2 THEN\n  // of ELSE\n  ELSE\n"
       "    // last\n  END_IF\n"},
      {"IF a=1 THEN // if\na:=1;// one\n     // two\n      // own\nlong:=2;// l\nELSE// no\n;"
       "END_IF // end",
       "  IF a = 1 THEN  // if\n    a := 1;     // one\n                // two\n    // own\n"
       "    long := 2;  // l\n  ELSE  // no\n    ;\n  END_IF  // end\n"},
      {"a:=f(1\n,2,// two\n3\n);b:=\na+\nb;",
       "  a := f(1,\n         2,  // two\n         3\n        );\n  b :=\n      a +\n      b;\n"},
      {"f(in:=1,// one\nlonger :=b,\n\nnot q=>a,longest=>b,a);g(\na:=f(1,\n2),\nlonger=>b,\n3);",
       "  f(in := 1,  // one\n    longer := b,\n\n    NOT q => a, longest => b, a);\n  g(\n"
       "    a      := f(1,\n                2),\n    longer => b,\n    3);\n"},
      {"a:=aFunctionWithALongName(first:=aaaaaaaaaaaaaaaaa,second:=g(bbbbbbbbbbbbb,ccccccccccc),"
       "third:=5);",
       "  a := aFunctionWithALongName(first := aaaaaaaaaaaaaaaaa, second := g(bbbbbbbbbbbbb, "
       "ccccccccccc),\n                              third := 5);\n"},
  };
  for (const auto& row : kStatements) {
    EXPECT_EQ(formatted(withStatements(row.before + std::string("\n"))), withStatements(row.after));
    EXPECT_EQ(formatted(withStatements(row.after)), withStatements(row.after));
  }
}

TEST(Format, LeavesFaultyTextsAlone) {
  SourceManager sources;
  sources.add("a.st", "PROGRAM P a:=; END_PROGRAM");
  const Formatting refused = formatSource(sources, 0);
  EXPECT_EQ(refused.errors.size(), 1U);
  EXPECT_TRUE(refused.edits.empty());
}

// The tokens and comments, without the case of letters, blanks at the ends of lines and the
// indentation of those within comments.
std::vector<std::string> contentOf(const std::string& text) {
  std::vector<std::string> content;
  for (const format::Piece& piece : format::piecesOf(text)) {
    std::string part;
    bool indentation = false;
    for (const char c : text.substr(piece.span.begin, piece.span.end - piece.span.begin)) {
      if (c == '\n') part.erase(part.find_last_not_of(" \t") + 1);
      indentation = c == '\n' || (indentation && (c == ' ' || c == '\t'));
      if (!indentation) part += piece.isToken() ? hostkit::toLower(c) : c;
    }
    content.push_back(part);
  }
  return content;
}

struct Translated {
  std::string c;
  std::vector<std::string> messages;  // without places and blanks
};

Translated translated(const std::string& text) {
  const auto session = analysed(text);
  Translated result{session->translate(), {}};
  for (const Diagnostic& message : session->messages()) {
    std::string said;
    for (const char c : message.text) {
      if (c != ' ' && c != '\n') said += hostkit::toLower(c);
    }
    result.messages.push_back(said);
  }
  std::sort(result.messages.begin(), result.messages.end());
  return result;
}

// The text with other blanks, line breaks and comments between its tokens.
std::string mutilated(const std::string& text, unsigned int seed) {
  static constexpr const char* kGaps[] = {" ",
                                          "  ",
                                          "\t",
                                          "\n",
                                          "\n\n\n",
                                          "\n  ",
                                          " \n\t",
                                          " (*c*) ",
                                          "\n// own\n",
                                          " // end\n",
                                          "\n\t(* two\n\t   lines *)\n"};
  std::mt19937 random(seed);
  const unsigned int rate = seed % 3 == 0 ? 50 : 8;  // in percent
  std::string result;
  std::uint32_t end = 0;
  for (const format::Piece& piece : format::piecesOf(text)) {
    const std::string gap = text.substr(end, piece.span.begin - end);
    const bool kept = gap.empty() || random() % 100 >= rate;
    // A line comment needs the end of its line.
    result += kept ? gap : kGaps[random() % std::size(kGaps)];
    if (!kept && gap.find('\n') != std::string::npos) result += '\n';
    result += text.substr(piece.span.begin, piece.span.end - piece.span.begin);
    end = piece.span.end;
  }
  return result;
}

std::vector<std::string> examples() {
  std::vector<std::string> texts;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(VELOPS_SOURCE "/examples")) {
    if (entry.path().extension() != ".st") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return texts;
}

TEST(Format, KeepsTheProgram) {
  std::vector<std::string> texts = {
      withEverything("fb(i := 1, io := j, o => i); rf^ := SEL(b, a[i], INT#16#ff);"),
      "PROGRAM P VAR i, unused : INT; j : SINT; END_VAR {nowarn} i := i; i := i; i := i; {nowarn}\n"
      "i := i; (* x\n *) {nowarn}i\n:=\n5 ;i := i + ABS(i) {nowarn}; END_PROGRAM\n"
      "{nowarn unused} FUNCTION F : INT VAR a : INT; END_VAR F := 1; END_FUNCTION"};
  for (const std::string& example : examples()) {
    EXPECT_TRUE(formattingEdits(example).empty()) << example;
    texts.push_back(example);
  }
  ASSERT_GT(texts.size(), 8U);
  for (const std::string& original : texts) {
    const bool pragmas = original.find("{nowarn") != std::string::npos;
    for (unsigned int seed = 0; seed < 7; seed += pragmas ? 7 : kOneCaseIn > 1 ? 3 : 1) {
      const std::string text = seed == 0 ? original : mutilated(original, seed);
      const std::string result = formatted(text);
      ASSERT_EQ(formatted(result), result);
      ASSERT_EQ(contentOf(result), contentOf(text));
      const Translated before = translated(text);
      const Translated after = translated(result);
      ASSERT_EQ(after.c, before.c) << text;
      ASSERT_EQ(after.messages, before.messages) << text;
    }
  }
}

// Where the offset is behind the edits; within blank lines, in those that are left.
std::uint32_t moved(std::uint32_t offset, const std::vector<LayoutEdit>& edits) {
  std::size_t result = offset;
  for (const auto& [range, text] : edits) {
    const bool within = range.end > offset;
    if (within && range.begin >= offset) continue;
    result -= std::min(range.end, offset) - range.begin;
    result += within && !text.empty() ? std::min(text.size() - 1, std::size_t{offset - range.begin})
                                      : text.size();
  }
  return static_cast<std::uint32_t>(result);
}

TEST(Format, LeavesFormattedLinesAlone) {
  std::mt19937 random(1);
  for (const std::string& example : examples()) {
    const std::string original = mutilated(example, static_cast<unsigned int>(1 + random() % 6));
    const std::string text = original.substr(0, original.find_last_not_of(" \t\n") + 1);
    for (std::size_t at = 0; at < text.size();
         at = std::min(text.find('\n', at), text.size()) + 1) {
      const std::size_t end = std::min(at + random() % 200, text.size());
      if (end % kOneCaseIn != 0) continue;
      const Span range{static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(end)};
      const std::vector<LayoutEdit> edits = formattingEdits(text, range);
      const std::string once = withEdits(text, edits);
      const Span lines{moved(range.begin, edits), moved(range.end, edits)};
      ASSERT_EQ(withEdits(once, formattingEdits(once, lines)), once) << text.substr(at, end - at);
    }
  }
}

// Neither the length of a line nor the depth of blocks and brackets costs more than their share.
TEST(Format, TakesLargeTexts) {
  std::string text = "PROGRAM P\n";
  for (int i = 0; i < 900; ++i) text += "IF a THEN ";
  text += "a := ";
  for (int i = 0; i < 900; ++i) text += "(\n";
  for (int i = 0; i < 20000; ++i) text += "b + ";
  text += "c" + std::string(900, ')') + ";";
  for (int i = 0; i < 900; ++i) text += " END_IF";
  text += " END_PROGRAM";
  const std::string result = formatted(text);
  EXPECT_EQ(formatted(result), result);
}

}  // namespace
}  // namespace refhost
