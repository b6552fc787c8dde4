#include "support/plugin.h"

namespace {

using Guards = PluginTest;

bool lacksParameters(const vel::ASTNode* call) {
  const vel::ASTNode* list = call != nullptr && call->leavesCount() > 1 ? call->leaf(1) : nullptr;
  bool lacks = list == nullptr;
  for (int i = 0; !lacks && i < list->leavesCount(); ++i) lacks = list->leaf(i) == nullptr;
  return lacks;
}

// Every operator against every tree that a faulty program can leave behind.
TEST_F(Guards, MalformedTreesNeverPass) {
  vel::TreeBuilder tree;
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
      all.push_back(tree.parse(source, ""));
    }
    for (vel::ASTNode* node : all) {
      SCOPED_TRACE(name + ": " + vel::TreeBuilder::text(node));
      std::vector<vel::VELMessage> messages;
      std::string resultType;
      EXPECT_FALSE(find(name)->check(&host, node, messages, resultType, "P"));
      FakeHost::describe(messages);
      if (lacksParameters(node)) {
        EXPECT_EQ(find(name)->generate(&generator, node), "");
      }
    }
  }
}

}  // namespace
