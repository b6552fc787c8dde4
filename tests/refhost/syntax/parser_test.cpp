#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "refhost/syntax/parsed.h"

namespace {

using refhost::ASTNode;
using refhost::Expr;
using refhost::kindOf;
using refhost::NodeKind;

using Rows = std::vector<std::pair<std::string, std::string>>;

// `source` is the body of a program.
std::string statementsOf(const std::string& source) {
  const Parsed parsed("PROGRAM p " + source + " END_PROGRAM");
  return parsed.errors() + parsed.statements();
}

TEST(Parser, GivesExpressionsTheirPrecedence) {
  const Rows rows = {
      {"a OR b XOR c AND d = e < f + g * h ** i",
       "(or a (xor b (and c (= d (< e (+ f (* g (** h i))))))))"},
      {"a OR b AND_THEN c = d OR_ELSE e.%X7 AND f",
       "(or_else (or a (and_then b (= c d))) (and (bit 7 e) f))"},
      {"a ** b * c + d > e <> f & g XOR h OR i",
       "(or (xor (and (<> (> (+ (* (** a b) c) d) e) f) g) h) i)"},
      {"-a ** b ** NOT c", "(** (** (neg a) b) (not c))"},
      {"a - b - c / d MOD e", "(- (- a b) (mod (/ c d) e))"},
      {"a <= b >= c", "(>= (<= a b) c)"},
      {"(a + b) * ((c))", "(* (+ a b) c)"},
      {"a-1", "(- a 1)"},
      {"a - -1", "(- a -1)"},
      {"-1 ** - 2", "(** -1 - 2)"},
      {"-(1) + +a", "(+ (neg 1) a)"},
      {"- - 1", "(neg - 1)"},
      {"NOT NOT -a", "(not (not (neg a)))"},
      {"-REAL#1.5 + -16#F - -T#5s", "(- (+ -REAL#1.5 -16#F) (neg T#5s))"},
      {"%IX0.3 AND %QW2 OR m.3", "(or (and %IX0.3 %QW2) (bit 3 m))"},
      {"a.b.c.7 = D10.3 + l.%D1.%w1.%B0.3",
       "(= (bit 7 (. (. a b) c)) (+ (bit 3 D10) (bit 3 (bits:8 0 (bits:16 16 (bits:32 32 l))))))"},
      {"timer.retain + x.at", "(+ (. timer retain) (. x at))"},
      {"1_000 + 2#10_01 + 1.5e-3 + TRUE + 'a$'b' + \"q\" + D#2026-11-21",
       "(+ (+ (+ (+ (+ (+ 1_000 2#10_01) 1.5e-3) TRUE) 'a$'b') \"q\") D#2026-11-21)"},
  };
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(statementsOf("r := " + source + ";"), "(:= r " + expected + ")\n") << source;
  }
}

TEST(Parser, WrapsCallsThatAreNotAWholeRightSide) {
  const Rows rows = {
      {"y := f(a, 1);", "(:= y f[a 1])"},
      {"y := ((F(G(x))));", "(:= y F[{G[x]}])"},
      {"y := -f() + (g());", "(:= y (+ (neg {f[]}) {g[]}))"},
      {"_f(x := g(1), y => v.w, NOT q => %QX0.1);",
       "(call _f[x:={g[1]} y=>(. v w) not q=>%QX0.1])"},
      {"IF f() THEN END_IF", "(if {f[]} [])"},
      {"FOR i := f() TO g() BY h() DO END_FOR", "(for (:= i f[]) {g[]} {h[]} [])"},
      {"CASE f() OF g(): ; END_CASE", "(case {f[]} (of (labels {g[]}) []))"},
      {"REPEAT UNTIL f() END_REPEAT", "(repeat [] {f[]})"},
      {"WHILE NOT f(NOT a) DO END_WHILE", "(while (not {f[(not a)]}) [])"},
  };
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(statementsOf(source), expected + "\n") << source;
  }
}

TEST(Parser, UnderstandsEveryStatement) {
  const Rows rows = {
      {";;", ""},
      {"IF a THEN b := 1; ELSIF c THEN ; ELSIF d THEN e := 2; ELSE f := 3; END_IF;",
       "(if a [(:= b 1)] c [] d [(:= e 2)] [(:= f 3)])\n"},
      {"case x of 1, 3..5, -2: a := 1; b := 2; k + 1: 7: c := 3; else d := 4; end_case",
       "(case x (of (labels 1 (.. 3 5) -2) [(:= a 1) (:= b 2)]) (of (labels (+ k 1)) [])"
       " (of (labels 7) [(:= c 3)]) [(:= d 4)])\n"},
      {"FOR i := 1 TO 10 DO EXIT; CONTINUE; END_FOR RETURN;",
       "(for (:= i 1) 10 _ [(exit) (continue)])\n(return)\n"},
      {"WHILE a DO b.c := d; END_WHILE; %QX1.0 := x;",
       "(while a [(:= (. b c) d)])\n(:= %QX1.0 x)\n"},
      {"REPEAT a := 1; UNTIL b END_REPEAT;", "(repeat [(:= a 1)] b)\n"},
      {"a (* 1 (* 2 *) ** ( *) := // x\r\n {pragma} /* y */ 1;", "(:= a 1)\n"},
  };
  for (const auto& [source, expected] : rows) EXPECT_EQ(statementsOf(source), expected) << source;
}

TEST(Parser, UnderstandsUnitsAndDeclarations) {
  const Parsed parsed(
      "FUNCTION f : STRING[9] VAR_INPUT a, b : INT; END_VAR f := a; END_FUNCTION\n"
      "Function_Block fb VAR_OUTPUT q : BOOL; END_VAR VAR_IN_OUT r : REAL; END_VAR\n"
      "END_FUNCTION_BLOCK\n"
      "FUNCTION g END_FUNCTION\n"
      "PROGRAM p VAR CONSTANT RETAIN n : INT := -5; END_VAR VAR NON_RETAIN RETAIN END_VAR\n"
      "VAR_TEMP x AT %IX0.0 : BOOL; y AT D10.3 : BOOL := f(1); z AT M1 : fb; w : WSTRING(n); "
      "END_VAR\n"
      "END_PROGRAM");
  EXPECT_EQ(parsed.errors(), "");
  EXPECT_EQ(parsed.units(),
            "(function f STRING<9> [(input (decl INT _ _ a b))] [(:= f a)])\n"
            "(function_block fb _ [(output (decl BOOL _ _ q)) (in_out (decl REAL _ _ r))] [])\n"
            "(function g _ [] [])\n"
            "(program p _ [(var constant retain (decl INT -5 _ n)) (var retain)"
            " (temp (decl BOOL _ %IX0.0 x) (decl BOOL {f[1]} D10.3 y) (decl fb _ M1 z)"
            " (decl WSTRING<n> _ _ w))] [])\n");
}

TEST(Parser, GivesEveryNodeItsSpan) {
  // Every expression and call in the order of a walk.
  const Rows rows = {
      {"y := ((a) + b) * c;", "y|((a) + b) * c|(a) + b|a|b|c|"},
      {"y := (LIMIT( 0, (x) , 1 ));", "y|LIMIT( 0, (x) , 1 )|0|x|1|"},
      {"y := - 1 + (f (2));", "y|- 1 + (f (2))|- 1|f (2)|f (2)|2|"},
      {"f(a := (b), c => d.e);", "f(a := (b), c => d.e)|b|d.e|d|"},
  };
  for (const auto& [source, expected] : rows) {
    const Parsed parsed("PROGRAM p " + source + " END_PROGRAM");
    std::string spans;
    const auto walk = [&](const auto& self, const ASTNode& node) -> void {
      const std::string_view text = vel::TreeBuilder::source(node);
      EXPECT_EQ(parsed.sources.text(0).substr(node.pos().offset(), text.size()), text);
      if (node.type() == vel::ASTType::Expression || kindOf(node) == NodeKind::Invocation) {
        spans.append(text).append("|");
      }
      for (int i = 0; i < node.leavesCount(); ++i) self(self, *node.leaf(i));
    };
    walk(walk, *parsed.tree.units[0]->leaf(refhost::Unit::kBody));
    EXPECT_EQ(spans, expected) << source;
  }
  EXPECT_EQ(Parsed("PROGRAM p\tx:=1; END_PROGRAM").tree.units[0]->leaf(3)->pos().offset(), 10U);
}

TEST(Parser, RefusesWhatIsNestedTooDeep) {
  const auto repeat = [](int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
  };
  const auto ifs = [&](int count) {
    return repeat(count, "IF a THEN ") + "x := 1; " + repeat(count, "END_IF;");
  };
  const auto parens = [&](int count) { return repeat(count, "(") + "a" + repeat(count, ")"); };
  const std::string tooDeep[] = {ifs(1100),
                                 ifs(10'000),
                                 "x := " + parens(1001) + ";",
                                 "x := " + parens(100'000) + ";",
                                 "x := a" + repeat(1100, ".a") + ";",
                                 "x := " + repeat(100'000, "NOT ") + "a;",
                                 "x := " + repeat(400, "f(") + repeat(400, ")") + ";"};
  for (const std::string& body : tooDeep) {
    const Parsed parsed("PROGRAM p " + body + " END_PROGRAM PROGRAM q y := 2; END_PROGRAM");
    ASSERT_EQ(parsed.messages.size(), 1U) << body.substr(0, 40) << "\n" << parsed.errors();
    EXPECT_EQ(parsed.messages[0].text, "Nested deeper than 1000 levels;");
    ASSERT_EQ(parsed.tree.units.size(), 2U) << body.substr(0, 40);
  }
  for (const std::string& body :
       {ifs(990), "x := " + parens(990) + ";", "x := a" + repeat(20'000, " + a") + ";"}) {
    EXPECT_EQ(Parsed("PROGRAM p " + body + " END_PROGRAM").errors(), "");
  }
}

}  // namespace
