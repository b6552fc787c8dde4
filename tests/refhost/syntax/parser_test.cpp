#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "refhost/syntax/parsed.h"

namespace {

using refhost::ASTNode;
using refhost::kindOf;
using refhost::NodeKind;

// Every expression and call in the order of a walk, which tells precedences.
TEST(Parser, GivesEveryNodeItsSpan) {
  const std::pair<const char*, const char*> rows[] = {
      {"y := ((a) + b) * c;", "y|((a) + b) * c|(a) + b|a|b|c|"},
      {"y := (LIMIT( 0, (x) , 1 ));", "y|LIMIT( 0, (x) , 1 )|0|x|1|"},
      {"y := - 1 + (f (2));", "y|- 1 + (f (2))|- 1|f (2)|f (2)|2|"},
      {"f(a := (b), c => d.e);", "f(a := (b), c => d.e)|b|d.e|d|"},
      {"y := a OR b XOR c & d = e < f + g * h;",
       "y|a OR b XOR c & d = e < f + g * h|a|b XOR c & d = e < f + g * h|b|c & d = e < f + g * "
       "h|c|d = e < f + g * h|d|e < f + g * h|e|f + g * h|f|g * h|g|h|"},
      {"y := a ** b * c >= d <> e AND f;",
       "y|a ** b * c >= d <> e AND f|a ** b * c >= d <> e|a ** b * c >= d|a ** b * c|a ** "
       "b|a|b|c|d|e|f|"},
      {"y := a OR b AND_THEN c OR_ELSE d;",
       "y|a OR b AND_THEN c OR_ELSE d|a OR b AND_THEN c|a|b AND_THEN c|b|c|d|"},
      {"y := -a ** b ** NOT c;", "y|-a ** b ** NOT c|-a ** b|-a|a|b|NOT c|c|"},
      {"y := a - b - -1 MOD - - 1;", "y|a - b - -1 MOD - - 1|a - b|a|b|-1 MOD - - 1|-1|- - 1|- 1|"},
      {"y := a <= b > c.d.7;", "y|a <= b > c.d.7|a <= b|a|b|c.d.7|c.d|c|"},
  };
  for (const auto& [source, expected] : rows) {
    const Parsed parsed(std::string("PROGRAM p ") + source + " END_PROGRAM");
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
