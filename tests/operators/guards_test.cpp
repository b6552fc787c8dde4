#include "hostkit/operator_traits.h"
#include "support/plugin.h"

namespace {

using Guards = PluginTest;

const vel::ASTNode* listOf(const vel::ASTNode* call) {
  return call != nullptr && call->leavesCount() > 1 ? call->leaf(1) : nullptr;
}

// Every operator against every tree that a faulty program can leave behind.
TEST_F(Guards, MalformedTreesNeverPass) {
  TestTree tree;
  const vel::ASTType kind{3};
  vel::ASTNode* empty = tree.node(kind, {});
  vel::ASTNode* noList = tree.node(kind, {nullptr, nullptr, nullptr});
  std::vector<vel::ASTNode*> trees = {nullptr,
                                      empty,
                                      tree.node(kind, {nullptr}),
                                      tree.node(kind, {empty}),
                                      noList,
                                      tree.node(vel::ASTType::Expression, {empty, empty})};
  // `@` stands for the operator's name.
  const std::vector<std::string> sources = {
      "@",      "@?",      "@{}",       "@{a}",       "(f(a))",         "()",      "?",
      "{a, b}", "@(,)",    "@(, a)",    "@(a, )",     "@(, b, c)",      "@(a,,c)", "@(a, b, )",
      "y := @", "y := @?", "y := @{a}", "y := @(,,)", "@(a, b, c, d, )"};
  std::vector<std::string> names;
  registry->operatorNames(names);
  for (const std::string& name : names) {
    std::vector<vel::ASTNode*> all = trees;
    for (std::string source : sources) {
      const std::size_t at = source.find('@');
      if (at != std::string::npos) source.replace(at, 1, name);
      all.push_back(tree.parse(source, nullptr));
    }
    for (vel::ASTNode* node : all) {
      SCOPED_TRACE(name + ": " + TestTree::text(node));
      const Verdict verdict = check(*find(name), node, "", "P");
      EXPECT_FALSE(verdict.accepted);
      const vel::ASTNode* list = listOf(node);
      const bool named = node != nullptr && node->leavesCount() > 0;
      if (named && TestTree::text(node->leaf(0)) == name) {
        const auto at = static_cast<int>(node->pos().offset());
        const std::string operand = list != nullptr && list->leavesCount() > 0 ? "a" : "";
        const std::set<std::string> said = {
            countMessage(at, name), abnormal(at, name), notAllowed(at, operand, name),
            message(at, "E C0046", "Identifier '" + operand + "' is not defined;"),
            message(at, "E C0032", "'a' expect 'BOOL' type;")};
        EXPECT_EQ(said.count(verdict.messages), 1U) << verdict.messages;
        if (list == nullptr) {
          EXPECT_EQ(verdict.messages, countMessage(at, name));
        }
      }
      // Every operator looks at its first parameter.
      if (list == nullptr || (list->leavesCount() > 0 && list->leaf(0) == nullptr)) {
        EXPECT_EQ(find(name)->generate(&generator, node), "");
      }
    }
  }
}

// At most the symbol table is asked for before the invocation is looked at.
TEST_F(Guards, NothingIsAskedAboutNothing) {
  const auto asksFirst = [](const std::string& name) {
    return hostkit::operatorTraits(name).family == hostkit::OperatorFamily::Numeric ||
           name == "MOVE" || name == "SIZEOF";
  };
  // Name and list are all that may be in an invocation of these, nothing is a fault like others.
  const std::set<std::string> countLeaves = {"IRDBIT", "IWRBIT",       "IZRST",
                                             "IZSET",  "_READIDIRECT", "_WRITEODIRECT"};
  TestTree tree;
  std::vector<std::string> names;
  registry->operatorNames(names);
  for (const std::string& name : names) {
    for (vel::ASTNode* nothing : {static_cast<vel::ASTNode*>(nullptr), tree.node({}, {})}) {
      if (nothing != nullptr && countLeaves.count(name) != 0) continue;
      host.asked.clear();
      const Verdict verdict = check(*find(name), nothing, "old", "P");
      EXPECT_EQ(verdict.resultType + verdict.messages, "old") << name;
      EXPECT_EQ(TestHost::take(host.asked), asksFirst(name) ? "symbols" : "") << name;
      EXPECT_FALSE(verdict.accepted) << name;
    }
  }
}

}  // namespace
