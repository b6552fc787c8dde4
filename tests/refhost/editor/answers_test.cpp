#include "refhost/editor/folding.h"
#include "refhost/editor/hover.h"
#include "refhost/editor/navigation.h"
#include "refhost/editor/outline.h"
#include "refhost/editor/semantic_tokens.h"
#include "tests/refhost/editor/queried.h"

namespace refhost {
namespace {

class EditorAnswers : public testing::Test {
 protected:
  EditorAnswers() { analyse(kAllKinds); }

  void analyse(const std::string& text) {
    text_ = text;
    queried_.analyse({{"all.st", text}});
  }
  const ProgramView& view() { return queried_.view(); }
  vel::TextLocation at(const std::string& words) const {
    const std::size_t offset = text_.find(words);
    EXPECT_NE(offset, std::string::npos) << words;
    return vel::TextLocation(0, static_cast<std::uint32_t>(offset));
  }
  // The text from the place to the end of the line or of 12 characters.
  std::string shown(const SourceRange& range) const {
    return text_.substr(range.begin.offset(), 12);
  }

  std::string text_;

 private:
  Queried queried_;
};

TEST_F(EditorAnswers, NameDeclarationsAndTheirTypes) {
  struct Row {
    const char* at;
    const char* definition;
    const char* type;
    int references;  // the declaration included
  };
  const Row rows[] = {{"Y + p.Flow", "y : INT; c :", "", 4},
                      {"a[k].x", "a : ARRAY[1.", "Pt : STRUCT ", 6},
                      {"TWICE > 0", "Twice : INT ", "", 5},
                      {"Green: k", "Green := 5, ", "Color : (Red", 3},
                      {"P(run", "p : Pump; a ", "Pump VAR_INP", 4},
                      {"SUM := k", "sum : INT; E", "", 5},
                      {"Total; END_IF", "total : INT;", "", 3},
                      {"total := 0", "total : INT;", "", 3},
                      {"own := two", "own : (One, ", "(One, Two);\n", 2},
                      {"FAST : Main", "fast(INTERVA", "", 2},
                      {"line.p.spare", "line WITH FA", "Main VAR_INP", 3},
                      {"spare AT %QX1", "spare AT %Q*", "", 2},
                      {"LEVEL, 2", "level : Leve", "Level : INT(", 4},
                      {"Open AT", "open AT %Q* ", "", 2},
                      {"LIMIT(0", "", "", 1},
                      {"CASE c", "", "", 0}};
  for (const Row& row : rows) {
    const auto found = [&](const std::optional<SourceRange>& range) {
      return range ? shown(*range) : "";
    };
    EXPECT_EQ(found(definitionAt(view(), at(row.at))), row.definition) << row.at;
    EXPECT_EQ(found(typeDefinitionAt(view(), at(row.at))), row.type) << row.at;
    EXPECT_EQ(referencesAt(view(), at(row.at), true).size(), row.references) << row.at;
  }
  std::string writes;
  for (const Highlight& highlight : highlightsAt(view(), at("k : INT"))) {
    writes += highlight.writes ? 'w' : 'r';
  }
  EXPECT_EQ(writes, "rwrrrwrww");
}

TEST_F(EditorAnswers, TellWhatIsKnownOfASymbol) {
  struct Row {
    const char* at;
    const char* told;
  };
  const std::string text =
      "(* Squares. *)\nFUNCTION Square : INT\nVAR_INPUT n, m : INT := 2; END_VAR // both\n"
      "VAR x : INT; END_VAR\nsquare := n * M;\nEND_FUNCTION\n"
      "TYPE Pt : STRUCT\n  x : INT; // across\n  // down\n  y : REAL;\nEND_STRUCT; END_TYPE\n"
      "PROGRAM Main\nVAR CONSTANT\n  size : INT := 2 * 3; (* of all *)\n  (* other *)\n"
      "  name : STRING := 'abc'; // too\nEND_VAR VAR RETAIN p AT %MW2 : INT; q : Pt; t : TON; "
      "END_VAR\n"
      "p := LIMIT(0, Square(p, SIZE), LEN(name)); t(IN := q.X > 0); q.y := 1.0;\n"
      "IF p = %mw5 THEN RETURN; END_IF;\nEND_PROGRAM\n";
  analyse(text);
  const Row rows[] = {
      {"Square(p", "FUNCTION Square : INT\nVAR_INPUT n, m : INT := 2; END_VAR|Squares.|||||"},
      {"M;\nEND", "VAR_INPUT\n  m : INT := 2;\nEND_VAR||INT|||2|"},
      {"SIZE)", "VAR CONSTANT\n  size : INT := 2 * 3;\nEND_VAR|of all|INT|6||2|"},
      {"name))", "VAR CONSTANT\n  name : STRING := 'abc';\nEND_VAR|other\ntoo|STRING|'abc'||81|"},
      {"p := L", "VAR RETAIN\n  p AT %MW2 : INT;\nEND_VAR||INT||%MW2|2|"},
      {"X > 0", "x : INT;|across|INT|||2|"},
      {"y := 1.0", "y : REAL;|down|REAL|||4|"},
      {"Pt; t",
       "TYPE\n  Pt : STRUCT\n  x : INT; // across\n  // down\n  y : REAL;\nEND_STRUCT;\n"
       "END_TYPE||||||"},
      {"LIMIT(", "||||||LIMIT"},
      {"LEN(", "||||||LEN"},
      {"REAL;", "||||||REAL"},
      {"END_IF", "||||||IF"},
      {"%MW2", "|A word (16 bits) of the memory.|||%MW2||"},
      {"%mw5", "|A word (16 bits) of the memory.|||%MW5||"},
      {"* 3", "||||||*"},
      {"IN := q", "VAR_INPUT\n  IN : BOOL;\nEND_VAR||BOOL|||1|"}};
  for (const Row& row : rows) {
    const auto hover = hoverAt(view(), at(row.at));
    ASSERT_TRUE(hover) << row.at;
    EXPECT_EQ(fmt::format("{}|{}|{}|{}|{}|{}|{}", hover->declaration, hover->comment, hover->type,
                          hover->value, hover->address,
                          hover->bytes ? std::to_string(*hover->bytes) : "", hover->topic),
              row.told);
  }
  EXPECT_FALSE(hoverAt(view(), at("3; (*")));
  const auto block = hoverAt(view(), at("TON;"));
  EXPECT_EQ(block->declaration.substr(0, 18), "FUNCTION_BLOCK TON");
  EXPECT_EQ(block->topic, "TON");
}

// That programs have the same values is seen by lsp/conversations_test.
TEST_F(EditorAnswers, ComputeConstantsWhereTheResultIsExact) {
  struct Row {
    const char* declaration;
    const char* value;
  };
  const Row rows[] = {
      {"twice : REAL := 2.0 * pi", "6.28318"},
      {"mixed : LREAL := pi + 0.1", "3.2415900230407715"},
      {"own : Color := Green", "Color#Green"},
      {"other : Color := OWN", "Color#Green"},
      {"mask : BYTE := 16#F0 AND 16#3F", "16#30"},
      {"cut : STRING[2] := 'a$Nc'", "'a$L'"},
      {"night : TOD := TOD#23:00:00 + T#2h", "TOD#01:00:00"},
      {"late : TIME := T#20d + T#20d", "T#20d + T#20d"},
      {"wide : LTIME := LTIME#106751d * 2", "LTIME#106751d * 2"},
      {"old : DT := DT#1970-01-01-00:00:01 - T#2s", "DT#1970-01-01-00:00:01 - T#2s"},
      {"none : REAL := pi / 0.0", "pi / 0.0"},
      {"zero : TIME := T#1s / 0", "T#1s / 0"},
      {"huge : REAL := 3.0e38 * 2.0", "3.0e38 * 2.0"},
      {"called : REAL := LIMIT(0.0, pi, 1.0)", "LIMIT(0.0, pi, 1.0)"},
      {"power : REAL := pi ** 2.0", "pi ** 2.0"},
      {"also : REAL := power + 1.0", "power + 1.0"},
      {"one : REAL := two + 1.0", "two + 1.0"},
      {"two : REAL := one * 2.0", "one * 2.0"}};
  std::string text =
      "TYPE Color : (Red, Green); END_TYPE\nFUNCTION_BLOCK B\nVAR_EXTERNAL CONSTANT pi : REAL; "
      "END_VAR\nVAR CONSTANT half : REAL := pi / 2.0; END_VAR\nEND_FUNCTION_BLOCK\n"
      "VAR_GLOBAL CONSTANT\npi : REAL := 3.14159; d0 : LREAL := 1.0; chain : REAL := pi";
  for (int i = 0; i < 5000; ++i) text += " + 1.0";
  for (int i = 1; i < 100; ++i) text += fmt::format(";\nd{} : LREAL := d{} + d{}", i, i - 1, i - 1);
  for (const Row& row : rows) text += std::string(";\n") + row.declaration;
  analyse(text + ";\nEND_VAR");
  for (const Row& row : rows) EXPECT_EQ(hoverAt(view(), at(row.declaration))->value, row.value);
  EXPECT_EQ(hoverAt(view(), at("half"))->value, "1.570795");
  EXPECT_EQ(hoverAt(view(), at("d99"))->value, "6.338253001141147e+29");
  EXPECT_EQ(hoverAt(view(), at("chain"))->value.size(), 2 + 5000 * 6);
}

std::string outlineInOneLine(const std::vector<OutlineItem>& items) {
  std::string line;
  for (const OutlineItem& item : items) {
    line += (line.empty() ? "" : " ") + item.name;
    if (!item.detail.empty()) line += ':' + item.detail;
    if (!item.parts.empty()) line += "(" + outlineInOneLine(item.parts) + ")";
  }
  return line;
}

TEST_F(EditorAnswers, ListDeclarations) {
  EXPECT_EQ(outlineInOneLine(outlineOf(view(), 0)),
            "Color(Red Green:5 Blue) Pt(x:INT y:INT c:Color) "
            "Pts:ARRAY[0..1] OF Pt Level:INT(0..9) size:INT total:INT lamp:BOOL mode:(Off, On)(Off "
            "On) open:BOOL Twice:INT(n:INT more:BOOL) Pump(run:BOOL flow:INT sum:INT t:TON "
            "spare:BOOL) Main(start:BOOL p:Pump a:ARRAY[1..SIZE] OF Pt k:INT c:Color own:(One, "
            "Two)(One Two) r:REFERENCE TO INT total:INT q:POINTER TO Pt color:INT b:BOOL) "
            "Plant(shared:BOOL Cpu(fast line:Main)) SETUP(pump1:Pump level:Level) fills(s:INT) "
            "TEARDOWN");
  const auto names = [this](std::string_view query) {
    std::string line;
    for (const FoundSymbol& symbol : findSymbols(view(), query)) {
      line += (line.empty() ? "" : " ") + symbol.container + '.' + symbol.name;
    }
    return line;
  };
  EXPECT_EQ(names("pU"), ".Pump SETUP.pump1 Plant.Cpu");
  EXPECT_EQ(names("lv"), ".Level SETUP.level");
}

TEST_F(EditorAnswers, FoldBlocksAndNameWords) {
  analyse(
      "// one\n// two\nPROGRAM P\nVAR\n  a : INT;\nEND_VAR\n{region 'x'}\nIF a > 1 THEN\n  a := "
      "1;\n"
      "ELSIF a > 2 THEN\n  a := 2;\nELSE\n  a := 3;\nEND_IF;\n{endregion}\nCASE a OF\n  1:\n"
      "    a := 2;\n    a := 4;\n  2: ;\nEND_CASE;\n(* three\n   lines *)\nEND_PROGRAM\n"
      "TEST 'x'\n  ASSERT_TRUE(TRUE);\nEND_TEST\n"
      "CONFIGURATION C\nVAR_GLOBAL g : INT; END_VAR\nRESOURCE R ON Any\nVAR_GLOBAL h : INT; "
      "END_VAR\nPROGRAM i : P;\nEND_RESOURCE\nEND_CONFIGURATION\n");
  std::string lines;
  for (const FoldingRange& range : foldingRangesOf(view(), 0)) {
    lines += fmt::format("{}-{}{} ", range.firstLine, range.lastLine,
                         range.kind == FoldingRange::Kind::Code      ? ""
                         : range.kind == FoldingRange::Kind::Comment ? "c"
                                                                     : "r");
  }
  EXPECT_EQ(lines, "1-2c 3-23 4-5 7-15r 8-9 10-11 12-13 16-20 17-19 22-23c 25-26 28-33 30-32 ");
  EXPECT_EQ(outlineInOneLine(outlineOf(view(), 0)), "P(a:INT) x C(g:INT R(h:INT i:P))");
  const std::string text =
      "TYPE C : (R, G); END_TYPE FUNCTION_BLOCK B VAR_INPUT i : C; END_VAR VAR CONSTANT k : INT := "
      "5; t : TON; END_VAR i := c#r; IF NOT TRUE THEN k := MAX(IN0 := k, IN1 := 3); END_IF; (* x\n"
      "y *) unknown := 'a'; t(IN := %IX0.0); END_FUNCTION_BLOCK";
  analyse(text);
  std::string all;
  for (const SemanticToken& token : semanticTokensOf(view(), 0)) {
    static constexpr const char* kKinds[] = {
        "",     "type:",  "fn:",  "fb:",  "var:", "in:", "mem:",
        "val:", "const:", "num:", "str:", "com:", "op:"};
    const auto kind = static_cast<std::size_t>(token.kind);
    all += (all.empty() ? "" : " ") + std::string(kKinds[kind]) +
           text.substr(token.range.begin.offset(), token.range.length) +
           (token.modifiers & SemanticToken::kDeclaration ? "!" : "") +
           (token.modifiers & SemanticToken::kReadonly ? "=" : "") +
           (token.modifiers & SemanticToken::kDefaultLibrary ? "*" : "");
  }
  EXPECT_EQ(all,
            "TYPE type:C! val:R!= val:G!= END_TYPE FUNCTION_BLOCK fb:B! VAR_INPUT in:i! type:C "
            "END_VAR VAR CONSTANT var:k!= type:INT* op::= num:5 var:t!= fb:TON* END_VAR in:i op::= "
            "type:c val:r= IF op:NOT const:TRUE= THEN var:k= op::= fn:MAX* in:IN0* op::= var:k= "
            "in:IN1* op::= num:3 END_IF com:(* x com:y *) op::= str:'a' var:t= in:IN* op::= "
            "var:%IX0.0 END_FUNCTION_BLOCK");
}

}  // namespace
}  // namespace refhost
