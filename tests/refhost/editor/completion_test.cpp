#include "refhost/editor/completion.h"

#include <cstring>
#include <random>
#include <regex>
#include <sstream>

#include "refhost/editor/signature_help.h"
#include "refhost/editor/source_tokens.h"
#include "refhost/format/format.h"
#include "tests/refhost/editor/queried.h"

namespace refhost {
namespace {

// A name of which only the first letter is left, with different faults around it.
struct CutName {
  std::uint32_t file = 0;
  Span name;
  Span unit;
  SourceRange declaration;
  std::string text;
  Proposal::Kind kind = Proposal::Kind::Variable;
};

std::vector<CutName> namesOf(const ProgramView& view) {
  std::vector<CutName> names;
  for (const Occurrence& at : view.occurrences().all()) {
    const SymbolInfo& symbol = view.symbols()[at.symbol];
    const bool part = symbol.kind == SymbolKind::Member || symbol.kind == SymbolKind::Value;
    if (at.declares || !(part || isVariable(symbol.kind))) continue;
    const auto spanOf = [](const SourceRange& range) {
      return Span{range.begin.offset(), range.begin.offset() + range.length};
    };
    const SourceRange unit = at.unit != kNoSymbol ? view.symbols()[at.unit].extent : at.range;
    names.push_back({at.range.begin.file(), spanOf(at.range), spanOf(unit), symbol.extent,
                     symbol.name,
                     symbol.kind == SymbolKind::Member  ? Proposal::Kind::Member
                     : symbol.kind == SymbolKind::Value ? Proposal::Kind::Value
                     : symbol.constant                  ? Proposal::Kind::Constant
                                                        : Proposal::Kind::Variable});
  }
  return names;
}

class CompletionOfCutNames : public testing::Test {
 protected:
  // Asks behind the first letter once the spans are removed, from the last to the first.
  void ask(const std::vector<SourceText>& sources, const CutName& name,
           const std::vector<Span>& removed) {
    std::vector<SourceText> broken = sources;
    std::uint32_t offset = name.name.begin + 1;
    for (const Span& span : removed) {
      if (name.declaration.begin.file() == name.file &&
          name.declaration.begin.offset() < span.end &&
          name.declaration.begin.offset() + name.declaration.length > span.begin) {
        return;  // It is no longer declared.
      }
      broken[name.file].text.erase(span.begin, span.end - span.begin);
      if (span.begin < name.name.begin) offset -= span.end - span.begin;
    }
    queried_.analyse(broken);
    const auto list = completionAt(queried_.view(), vel::TextLocation(name.file, offset), false);
    ++asked_;
    for (const Proposal& proposal : list.proposals) {
      const std::string label = proposal.label.substr(proposal.label.find('#') + 1);
      const bool kind = proposal.kind == name.kind || proposal.kind == Proposal::Kind::Argument ||
                        proposal.kind == Proposal::Kind::Member;
      if (kind && vel::equalIgnoringCase(label.substr(0, label.find(' ')), name.text)) return;
    }
    const std::string& text = broken[name.file].text;
    ADD_FAILURE() << name.text << " in " << broken[name.file].name << ":\n"
                  << text.substr(offset < 200 ? 0 : offset - 200, std::min(offset, 200U)) << "|"
                  << text.substr(offset, 200);
  }

  Queried queried_;
  std::size_t asked_ = 0;
};

TEST_F(CompletionOfCutNames, ProposesThem) {
  constexpr std::size_t kEach = 6 * kOneCaseIn;  // of so many names
  constexpr std::string_view kMarks[] = {";", ")", ",", ":=", "THEN", "DO", "OF", "UNTIL"};
  constexpr const char* kHalves[] = {"t.", "IF a", "FOR i := 1", "REPEAT", "x := a +", "x := 'a"};
  std::mt19937_64 random(15);
  for (const std::vector<SourceText>& sources : programs()) {
    queried_.analyse(sources);
    const std::vector<CutName> names = namesOf(queried_.view());
    for (std::size_t i = random() % kEach; i < names.size(); i += kEach) {
      const CutName& name = names[i];
      const std::string& text = sources[name.file].text;
      const Span rest{name.name.begin + 1, name.name.end};
      ask(sources, name, {rest});
      ask(sources, name, {{rest.begin, std::max(name.unit.end, rest.end)}});
      ask(sources, name, {{rest.begin, static_cast<std::uint32_t>(text.size())}});
      std::vector<Span> marks;
      for (const SourceToken& token : sourceTokens(text)) {
        const bool here = token.span.begin >= name.unit.begin && token.span.end <= name.unit.end;
        const std::string_view word =
            std::string_view(text).substr(token.span.begin, token.span.end - token.span.begin);
        const bool mark = std::find(std::begin(kMarks), std::end(kMarks), word) != std::end(kMarks);
        if (here && (mark || word.substr(0, 4) == "END_")) marks.push_back(token.span);
      }
      if (marks.empty()) continue;
      // Half of a statement in the line above.
      const std::size_t line = text.rfind('\n', name.name.begin);
      if (line != std::string::npos && line > name.unit.begin && text[line - 1] == ';') {
        std::vector<SourceText> more = sources;
        const std::string piece = std::string("\n") + kHalves[random() % std::size(kHalves)];
        more[name.file].text.insert(line, piece);
        CutName moved = name;
        moved.name.begin += static_cast<std::uint32_t>(piece.size());
        moved.name.end += static_cast<std::uint32_t>(piece.size());
        ask(more, moved, {{moved.name.begin + 1, moved.name.end}});
      }
      const Span lost = marks[random() % marks.size()];
      ask(sources, name,
          lost.begin < rest.begin ? std::vector{rest, lost} : std::vector{lost, rest});
    }
  }
  EXPECT_GT(asked_, 300U / kOneCaseIn);
}

// The text in front of the cursor, the labels that must be among the proposals, and those that must
// not; a label with '=' in front of the text that is inserted.
struct CompletionRow {
  const char* code;  // kAllKinds precedes it; `|` is the cursor
  const char* labels;
  const char* absent;
};

const CompletionRow kCompletionRows[] = {
    {"|", "PROGRAM TYPE FUNCTION_BLOCK VAR_GLOBAL TEST SETUP", "IF total Main"},
    {"PROGRAM |", "", "IF total PROGRAM"},
    {"FUNCTION F : | VAR", "INT Color Pt ARRAY STRING", "Pump TON total IF"},
    {"PROGRAM X | ", "VAR VAR_INPUT IF total Twice END_PROGRAM RETURN=RETURN;",
     "EXIT ELSE TYPE n k"},
    {"PROGRAM X VAR |", "CONSTANT RETAIN END_VAR", "total IF INT"},
    {"PROGRAM X VAR x |", "AT", "INT total"},
    {"PROGRAM X VAR x AT |", "", "INT total"},
    {"PROGRAM X VAR x : |", "INT TIME Pump TON CTU_DINT Color Pts ARRAY POINTER STRUCT WSTRING",
     "Main Twice IF"},
    {"TEST 'x' VAR x : |", "Main Pump", ""},
    {"PROGRAM X VAR x : ARRAY[0..|", "size", "total Twice"},
    {"PROGRAM X VAR x : ARRAY[0..1] |", "OF", "INT"},
    {"PROGRAM X VAR x : ARRAY[0..1] OF |", "INT Pump", "OF"},
    {"PROGRAM X VAR x : POINTER |", "TO", "INT"},
    {"PROGRAM X VAR x : (A, |", "", "total INT"},
    {"PROGRAM X VAR x : INT\n |", "END_VAR", "INT"},
    {"PROGRAM X VAR_INPUT x : BOOL |", "R_EDGE", "INT"},
    {"PROGRAM X VAR x : Color := |", "Red Blue size", "IF"},
    {"PROGRAM X VAR x : Pts := [(|", "x: y: c:", "Red"},
    {"PROGRAM X VAR x : Pts := [(x := 1, c := |", "Red Blue", "x: y:"},
    {"PROGRAM X VAR_EXTERNAL |", "total lamp size", "k INT"},
    {"PROGRAM X VAR a : INT; END_VAR |", "a VAR total IF FOR Twice ZRST", "INT ABS size n"},
    {"PROGRAM X VAR a : INT; END_VAR a := |",
     "a total size Twice ABS LIMIT TRUE NOT MUX ADD CONCAT_DATE",
     "IF INT_TO_REAL ZRST ASSERT_EQ run n"},
    {"PROGRAM X VAR a : INT; END_VAR a := re|", "REAL_TO_INT", "LIMIT"},
    {"PROGRAM X VAR a : INT; END_VAR a := a |", "AND MOD OR_ELSE", "a THEN"},
    {"PROGRAM X VAR a : INT; END_VAR a := 1\n |", "a IF", "THEN"},
    {"PROGRAM X IF total > 1 |", "THEN AND", "DO total"},
    {"PROGRAM X IF total > 1 THEN |", "ELSE ELSIF END_IF=END_IF; END_PROGRAM total", "EXIT UNTIL"},
    {"PROGRAM X IF total > 1 THEN ; ELSE |", "END_IF", "ELSE ELSIF"},
    {"PROGRAM X FOR total := 1 |", "TO", "DO BY"},
    {"PROGRAM X FOR total := 1 TO 3 |", "DO BY", "TO THEN"},
    {"PROGRAM X FOR total := 1 TO 3 DO |", "EXIT CONTINUE END_FOR", "ELSE"},
    {"PROGRAM X REPEAT total := 1; |", "UNTIL END_REPEAT", "ELSE"},
    {"PROGRAM X VAR c : Color; END_VAR CASE c |", "OF", "THEN"},
    {"PROGRAM X VAR c : Color; END_VAR CASE c OF Red: c := Blue; | Green: END_CASE;",
     "Blue c END_CASE ELSE IF", ""},
    {"PROGRAM X VAR c : Color; p : Pump; END_VAR CASE c OF Red: p(|", "run: sum: flow>", ""},
    {"PROGRAM X VAR c : Color; END_VAR CASE c OF Color#Red, | Green: END_CASE;", "Blue size",
     "c total"},
    {"PROGRAM X VAR c : Color; END_VAR CASE c OF Red, | Green: END_CASE;", "Blue Color", "Red"},
    {"PROGRAM X VAR c : Color; END_VAR CASE c OF C|: END_CASE;", "Color", "c IF"},
    {"TYPE T : (Red, Dim); END_TYPE PROGRAM X VAR c : Color; END_VAR CASE c OF |", "Red Green",
     "Dim total IF"},
    {"PROGRAM X CASE total OF 1: total := 2;\ns|: total := 3; END_CASE;", "size", "sum"},
    {"PROGRAM X VAR p : Pump; END_VAR p(|\np.run := TRUE; END_PROGRAM", "run: sum:", ""},
    {"PROGRAM X VAR p : Pump; END_VAR p(r|\np.run := TRUE; END_PROGRAM", "run:", ""},
    {"PROGRAM X VAR q : POINTER TO Pts; END_VAR q^[1].|", "x y c", "total"},
    {"PROGRAM X VAR p : ARRAY[0..1, 0..1] OF Pump; END_VAR p[1, total].|", "run flow",
     "sum t total"},
    {"TEST 'x' VAR p : Pump; END_VAR p.|", "run flow t spare", ""},
    {"TEST 'x' VAR p : Main; END_VAR p.c := |", "Red", ""},
    {"PROGRAM X total := Color#|", "Red Blue", "total"},
    {"PROGRAM X total := Color.|", "Red Blue", "total"},
    {"PROGRAM X VAR p : Pump; END_VAR p(|", "run: sum: flow> EN: ENO>", ""},
    {"PROGRAM X VAR p : Pump; END_VAR p(run := TRUE, |", "sum: flow>", "run: total"},
    {"PROGRAM X VAR p : Pump; END_VAR p(|, sum := total);", "run: flow>", "sum:"},
    {"PROGRAM X VAR p : Pump; END_VAR p(r| := TRUE, flow=>total);", "run:=run", "sum: flow>"},
    {"PROGRAM X VAR p : Pump; END_VAR p(f|x\n=>total);", "flow>=flow", "run: EN:"},
    {"PROGRAM X total := MAX(IN1 := 1, I|N3 (* c *) := 2);", "IN2:=IN2", ""},
    {"PROGRAM X VAR x : Pt := (x| := 2);", "x:=x", ""},
    {"CONFIGURATION C TASK t(INT| := T#1s)", "INTERVAL:=INTERVAL", ""},
    {"PROGRAM X VAR p : Pump; END_VAR p(NOT |", "flow>", "run:"},
    {"PROGRAM X VAR p : Pump; END_VAR p(flow => |", "total", "size Twice"},
    {"PROGRAM X VAR t : TON; END_VAR t(IN := TRUE, |", "PT: Q> ET>", "IN:"},
    {"PROGRAM X total := LIMIT(|", "MN: IN: MX: EN: total", ""},
    {"PROGRAM X total := MAX(IN1 := 1, |", "IN2:", "IN1: total"},
    {"PROGRAM X total := LIMIT(|, MX := 1)", "MN: total", "MX:"},
    {"PROGRAM X total := CONCAT_DATE(|", "YEAR: MONTH: DAY:", ""},
    {"PROGRAM X total := 1; // |", "", "total"},
    {"PROGRAM X total := 1; (* total |", "", "total"},
    {"PROGRAM X VAR s : STRING; END_VAR s := 'to|", "", "total"},
    {"PROGRAM X total := 16#t|", "", "total"},
    {"PROGRAM X {nowarn |", "all conversions", "total"},
    {"TEST 'x' |", "ASSERT_EQ ADVANCE_TIME pump1 level VAR END_TEST", "VAR_INPUT"},
    {"CONFIGURATION C |", "RESOURCE TASK PROGRAM VAR_GLOBAL VAR_CONFIG END_CONFIGURATION",
     "IF total"},
    {"CONFIGURATION C RESOURCE R |", "ON TASK", ""},
    {"CONFIGURATION C TASK t(|", "INTERVAL: PRIORITY: SINGLE:", ""},
    {"CONFIGURATION C PROGRAM x |", "WITH", "Main"},
    {"CONFIGURATION C PROGRAM x WITH |", "fast", "Main"},
    {"CONFIGURATION C PROGRAM x : |", "Main", "Pump"},
    {"CONFIGURATION C PROGRAM x : Main(|", "start: shared", "run:"},
    {"CONFIGURATION C VAR_CONFIG |", "Cpu line open", ""},
    {"CONFIGURATION C VAR_CONFIG Cpu.line.p.|", "spare t", "total"},
    {"PROGRAM X VAR v : ARRAY[1..2] OF Pump; END_VAR END_PROGRAM\n"
     "CONFIGURATION C PROGRAM x : X; VAR_CONFIG x.v[1].|",
     "spare t", "total"},
    {"PROGRAM X VAR p : ARRAY[1..2] OF Pt; END_VAR END_PROGRAM\n"
     "CONFIGURATION C PROGRAM x : X; VAR_CONFIG x.p[1].|",
     "x y", "total"},
    // Names that are lost for the analysis.
    {"PROGRAM VAR lost : Pump; END_VAR l|", "lost", ""},
    {"PROGRAM X VAR a : INT b : Pump; END_VAR b.|", "run", "a"},
    {"PROGRAM X VAR b : Pump; a : ; b(run := TRUE); b.|", "run", "a"},
    {"FUNCTION Lost : Pt VAR_INPUT own : INT; END_VAR Lost.|", "x y", "own"},
};

TEST(Completion, ProposesWhatCanStand) {
  Queried queried;
  for (const CompletionRow& row : kCompletionRows) {
    SCOPED_TRACE(row.code);
    std::string text = std::string(kAllKinds) + row.code;
    const std::size_t cursor = text.rfind('|');
    text.erase(cursor, 1);
    queried.analyse({{"all.st", text}});
    const auto list = completionAt(queried.view(),
                                   vel::TextLocation(0, static_cast<std::uint32_t>(cursor)), false);
    const auto has = [&](std::string label) {
      std::string inserted;
      if (const std::size_t mark = label.find('=', 1); mark != std::string::npos) {
        inserted = label.substr(mark + 1);
        label.resize(mark);
      }
      if (label.back() == ':') label.replace(label.size() - 1, 1, " :=");
      if (label.back() == '>') label.replace(label.size() - 1, 1, " =>");
      return std::any_of(list.proposals.begin(), list.proposals.end(), [&](const Proposal& at) {
        return at.label == label && (inserted.empty() || at.text == inserted);
      });
    };
    std::istringstream labels(row.labels), absent(row.absent);
    for (std::string label; labels >> label;) EXPECT_TRUE(has(label)) << label;
    for (std::string label; absent >> label;) EXPECT_FALSE(has(label)) << label;
  }
}

TEST(Completion, ProposesWhatOtherFilesDeclare) {
  const std::string one =
      "TYPE Kind : (Low, High); Pair : STRUCT a : INT; END_STRUCT; END_TYPE VAR_GLOBAL speed : "
      "REAL; END_VAR VAR_GLOBAL CONSTANT most : INT := 3; END_VAR FUNCTION Half : REAL VAR_INPUT "
      "n : REAL; END_VAR VAR_OUTPUT rest : REAL; END_VAR END_FUNCTION FUNCTION_BLOCK Motor "
      "END_FUNCTION_BLOCK PROGRAM Line END_PROGRAM TEST 'Mo' END_TEST FUNCTION : INT";
  const struct {
    const char* code;
    const char* proposed;  // in their order
  } rows[] = {
      {"PROGRAM X VAR m : |", "Kind Pair Motor "},
      {"PROGRAM X VAR m : Mo|", "Motor "},
      {"FUNCTION X : |", "Kind Pair "},
      {"PROGRAM X VAR a : INT; END_VAR a := |", "most Kind Low High speed Half=Half(${1:n})$0 "},
      {"PROGRAM X VAR motor, low : INT; END_VAR a := mo|", "most "},
      {"PROGRAM X VAR low : INT; END_VAR a := -low|", ""},
      {"PROGRAM X |", "speed Half=Half(${1:n});$0 "},
      {"PROGRAM X VAR a : INT; END_VAR Twice(n := 1, more => |", "speed "},
      {"PROGRAM X VAR a : ARRAY[0..|", "most Kind Low High "},
      {"PROGRAM X VAR_EXTERNAL |", "speed=speed : REAL; most=most : INT; "},
      {"CONFIGURATION C PROGRAM i : |", "Line "},
      {"PROGRAM X VAR low : INT; END_VAR a := kind#|", "Low High "},
  };
  const auto first = declarationsOf("src/one.st", one);
  const auto second = declarationsOf("two.st", "FUNCTION_BLOCK MOTOR END_FUNCTION_BLOCK");
  std::vector<const FileDeclaration*> others;
  for (const auto* const file : {&first, &second}) {
    for (const FileDeclaration& declaration : *file) others.push_back(&declaration);
  }
  Queried queried;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    std::string text = std::string(kAllKinds) + row.code;
    const std::size_t cursor = text.rfind('|');
    queried.analyse({{"all.st", text.erase(cursor, 1)}});
    std::string proposed;
    for (const Proposal& at :
         completionAt(queried.view(), vel::TextLocation(0, static_cast<std::uint32_t>(cursor)),
                      true, others)
             .proposals) {
      if (at.other == nullptr) continue;
      proposed += at.label + (at.text.empty() ? "" : '=' + at.text) + ' ';
      EXPECT_EQ(at.detail, "one.st");
      EXPECT_EQ(one.substr(at.other->offset, at.other->length), at.label);
    }
    EXPECT_EQ(proposed, row.proposed);
  }
}

TEST(Completion, PutsFirstWhatFits) {
  const struct {
    const char* code;   // as above
    const char* first;  // the labels with which the list begins
  } rows[] = {
      {"PROGRAM X VAR a : REAL; b, c : BOOL; d : Color; e : INT; END_VAR a := |", "a e size "},
      {"PROGRAM X VAR a : REAL; b, c : BOOL; d : Color; e : INT; END_VAR IF |", "b c "},
      {"PROGRAM X VAR a : REAL; b, c : BOOL; d : Color; e : INT; END_VAR IF d = |",
       "Red Green Blue d "},
      {"PROGRAM X VAR a : REAL; r : REFERENCE TO REAL; END_VAR r REF= |", "a r "},
      {"PROGRAM X VAR a : ARRAY[0..1] OF Pt; e : INT; f : REAL; END_VAR f := a[|", "e size "},
      {"PROGRAM X VAR a : Pump; e : BOOL; END_VAR a(|", "run := sum := flow => e "},
      {"PROGRAM X VAR a : Pump; e : BOOL; f : INT; END_VAR a(sum := |", "f "},
      {"PROGRAM X VAR d : Color; END_VAR d := SEL(TRUE, |", "Red Green Blue d "},
      {"PROGRAM X VAR d : Color; END_VAR d := MUX(0, Red, MAX(|", "Red Green Blue d "},
      {"PROGRAM X VAR d : Color; e : INT; END_VAR d := MUX(|", "K := IN0 := IN1 := EN := "},
      {"PROGRAM X VAR d : Color; END_VAR IF NOT EQ(d, |", "Red Green Blue d "},
      {"PROGRAM X VAR d : ARRAY[0..1] OF Pt; END_VAR IF R| = d[1 + (0)].c THEN", "Red "},
      {"PROGRAM X VAR ifs : INT; END_VAR IF|", "IF ifs IF ... END_IF "},
      {"PROGRAM X VAR yes, anno, no : BOOL; END_VAR yes := NO|", "no NOT anno "},
      {"TEST 'x' VAR e : BOOL; f : INT; END_VAR ASSERT_EQ(f, |", "f "},
  };
  Queried queried;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    std::string text = std::string(kAllKinds) + row.code;
    const std::size_t cursor = text.rfind('|');
    queried.analyse({{"all.st", text.erase(cursor, 1)}});
    const auto list = completionAt(queried.view(),
                                   vel::TextLocation(0, static_cast<std::uint32_t>(cursor)), true);
    std::string labels;
    for (const Proposal& proposal : list.proposals) {
      if (labels.size() < std::strlen(row.first)) labels += proposal.label + ' ';
    }
    EXPECT_EQ(labels, row.first);
  }
}

TEST(Completion, LaysSnippetsOutAsTheFormatterDoes) {
  const struct {
    const char* code;  // `|` is the cursor
    bool sections;     // which of the snippets stand there
  } rows[] = {{"|\n", false},
              {"PROGRAM X\n  |\nEND_PROGRAM\n", false},
              {"PROGRAM X\n|\n  RETURN;\nEND_PROGRAM\n", true},
              {"CONFIGURATION C\n  |\nEND_CONFIGURATION\n", false}};
  std::size_t snippets = 0;
  Queried queried;
  for (const auto& row : rows) {
    std::string code = row.code;
    const std::size_t cursor = code.find('|');
    const std::size_t indent = cursor > 0 && code[cursor - 1] == ' ' ? 2 : 0;
    queried.analyse({{"all.st", code.erase(cursor, 1)}});
    const auto list = completionAt(queried.view(),
                                   vel::TextLocation(0, static_cast<std::uint32_t>(cursor)), true);
    for (const Proposal& proposal : list.proposals) {
      const bool section = proposal.label.substr(0, 3) == "VAR";
      if (proposal.kind != Proposal::Kind::Snippet || section != row.sections) continue;
      const bool holds = proposal.label[0] == 'C' || proposal.label.substr(0, 3) == "RES";
      const char* const body = section                                 ? "a : INT;"
                               : proposal.label.substr(0, 4) == "TYPE" ? "INT"
                               : holds && proposal.label[1] != 'A'     ? "TASK t(PRIORITY := 1);"
                                                                       : "RETURN;";
      std::string text = std::regex_replace(proposal.text, std::regex("\\$0"), body);
      text = std::regex_replace(text, std::regex(R"(\$\{\d:([^}]*)\})"), "$1");
      text = std::regex_replace(text, std::regex("\t"), "  ");
      text = std::regex_replace(text, std::regex("\n"), '\n' + std::string(indent, ' '));
      SourceManager sources;
      sources.add("all.st", std::string(code).insert(cursor, text));
      const Formatting formatting = formatSource(sources, 0);
      EXPECT_TRUE(formatting.errors.empty()) << text;
      EXPECT_TRUE(formatting.edits.empty()) << text;
      ++snippets;
    }
  }
  EXPECT_GT(snippets, 18U);
}

TEST(SignatureHelp, KnowsTheCallAndTheParameter) {
  const struct {
    const char* code;    // as above
    const char* label;   // empty for no call
    const char* active;  // the parameter; empty for none
  } rows[] = {
      {"PROGRAM X total := Twice(|", "Twice(n : INT, more => BOOL) : INT", "n : INT"},
      {"PROGRAM X total := Twice(n := |", "Twice(n : INT, more => BOOL) : INT", "n : INT"},
      {"PROGRAM X total := Twice(1, more => |);", "Twice(n : INT, more => BOOL) : INT",
       "more => BOOL"},
      {"PROGRAM X total := Twice(1, |", "Twice(n : INT, more => BOOL) : INT", "more => BOOL"},
      {"PROGRAM X total := Twice(none := |", "Twice(n : INT, more => BOOL) : INT", ""},
      {"PROGRAM X total := LIMIT(0, Twice(2), |", "LIMIT(MN, IN, MX)", "MX"},
      {"PROGRAM X total := LIMIT(0, (total + |) * 2", "LIMIT(MN, IN, MX)", "IN"},
      {"PROGRAM X VAR a : Pts; END_VAR a[ABS(1) + |].x := 1;", "", ""},
      {"PROGRAM X total := LIMIT(0, ABS(|", "ABS(IN)", "IN"},
      {"PROGRAM X total := ADD(1, 2, 3, |", "ADD(IN1, IN2, ...)", "IN2"},
      {"PROGRAM X total := MUX(K := 1, IN3 := |", "MUX(K, IN0, IN1, ...)", "IN1"},
      {"PROGRAM X total := MAX(1, ABS(2), |", "MAX(IN1, IN2, ...)", "IN2"},
      {"PROGRAM X total := LIMIT(IN := 1, |", "LIMIT(MN, IN, MX)", "MN"},
      {"PROGRAM X total := LIMIT(MX |:= 1, MN := 0)", "LIMIT(MN, IN, MX)", "MX"},
      {"PROGRAM X total := LIMIT(MX := 1,| MN := 0)", "LIMIT(MN, IN, MX)", "MN"},
      {"PROGRAM X total := LIMIT(0, |, MX := 3)", "LIMIT(MN, IN, MX)", "IN"},
      {"PROGRAM X total := LIMIT(M|X := 3)", "LIMIT(MN, IN, MX)", "MX"},
      {"PROGRAM X IF AND(total > 1, |", "AND(IN1, IN2, ...)", "IN2"},
      {"PROGRAM X IF total > 1 AND (|", "", ""},
      {"PROGRAM X VAR s : STRING; END_VAR s := CONCAT('a|", "CONCAT(IN1, IN2, ...)", "IN1"},
      {"PROGRAM X total := REAL_TO_INT(|", "REAL_TO_INT(IN) : INT", "IN"},
      {"PROGRAM X VAR p : ARRAY[0..1] OF Pump; END_VAR p[total](TRUE, |",
       "Pump(run : BOOL, flow => INT, sum : INT)", "sum : INT"},
      {"PROGRAM X VAR t : TON; END_VAR t(Q => total, PT := |\nEND_PROGRAM",
       "TON(IN : BOOL, PT : TIME, Q => BOOL, ET => TIME)", "PT : TIME"},
      {"PROGRAM X total := ATAN2(1.0, |", "ATAN2(Y : LREAL, X : LREAL) : LREAL", "X : LREAL"},
      {"TEST 'x' ASSERT_NEAR(1.0, 2.0, |", "ASSERT_NEAR(a, b, tolerance, text)", "tolerance"},
      {"CONFIGURATION C TASK t(PRIORITY := |", "t(INTERVAL, SINGLE, PRIORITY)", "PRIORITY"},
      {"CONFIGURATION C PROGRAM m : Main(|", "Main(start : BOOL)", "start : BOOL"},
      {"PROGRAM X Twice(1); |", "", ""},
      {"PROGRAM X // Twice(|", "", ""},
      {"FUNCTION Twice2 : INT VAR_INPUT a : INT b : REAL; END_VAR END_FUNCTION PROGRAM X total := "
       "Twice2(1, |",
       "Twice2(a : INT, b : REAL) : INT", "b : REAL"},
  };
  Queried queried;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    std::string text = std::string(kAllKinds) + row.code;
    const std::size_t cursor = text.rfind('|');
    queried.analyse({{"all.st", text.erase(cursor, 1)}});
    const auto help =
        signatureAt(queried.view(), vel::TextLocation(0, static_cast<std::uint32_t>(cursor)));
    EXPECT_EQ(help ? help->label : "", row.label);
    if (!help) continue;
    const Span at = help->active ? help->parameters[*help->active].label : Span{};
    EXPECT_EQ(help->label.substr(at.begin, at.end - at.begin), row.active);
  }
}

}  // namespace
}  // namespace refhost
