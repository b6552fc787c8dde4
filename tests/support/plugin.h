// The plugin, loaded as a host loads it.
#pragma once

#include <gtest/gtest.h>

#include <regex>
#include <stdexcept>
#include <string>

#include "core/operator.h"
#include "hostkit/plugin_library.h"
#include "support/test_host.h"
#include "support/test_tree.h"

// One call and all that comes of it. The result type is "old" before the check.
struct CallRow {
  const char* source;
  int rating;  // what the host answers to a comparison of types
  bool accepted;
  const char* resultType;
  std::string messages;         // as TestHost::describe
  const char* text = "";        // generated; not asked for when empty and the call is refused
  const char* calls = nullptr;  // TestHost::calls, one per line; null for any
};

// Messages of a host that does not translate, as one that does shows them: its own have
// codes beyond the plugin's, and one format of the plugin's is not translated.
inline std::string translated(const std::string& messages) {
  static const std::regex kTranslated("(@\\d+ [EW] C[0-9A-F]+ )(?!'.*' expect 'BOOL' type;)");
  return std::regex_replace(messages, kTranslated, "$1~");
}

// A host with the plugin in it.
class PluginTest : public ::testing::Test {
 protected:
  struct Verdict {
    bool accepted;
    std::string resultType;
    std::string messages;
  };

  PluginTest() {
    std::string error;
    if (!library.load(VELOPS_PLUGIN, &host, error)) throw std::runtime_error(error);
    registry = host.operators = library.registry();
  }

  vel::STOperator* find(const std::string& name) { return registry->findOperator(name); }

  // Declares a function of `inputs` inputs.
  void declare(const std::string& name, std::size_t inputs) {
    host.declare(name, vel::POUType::Function, std::vector<int>(inputs, vel::SymbolVar::kInput));
  }

  Verdict check(vel::STOperator& op, vel::ASTNode* call, const std::string& resultType,
                const std::string& unit) {
    std::vector<vel::VELMessage> messages(1);  // not the call's
    Verdict verdict{false, resultType, ""};
    verdict.accepted = op.check(&host, call, messages, verdict.resultType, unit);
    messages.erase(messages.begin());
    verdict.messages = TestHost::describe(messages);
    return verdict;
  }
  // With the messages as they are and, where there are any, once more translated.
  Verdict checkBothWays(vel::STOperator& op, vel::ASTNode* call, const std::string& resultType,
                        const std::string& unit) {
    const Verdict verdict = check(op, call, resultType, unit);
    if (verdict.messages.empty()) return verdict;
    const std::vector<std::string> calls = host.calls;
    host.translates = true;
    const Verdict again = check(op, call, resultType, unit);
    EXPECT_EQ(again.accepted, verdict.accepted);
    EXPECT_EQ(again.resultType, verdict.resultType);
    EXPECT_EQ(again.messages, translated(verdict.messages));
    host.translates = false;
    host.calls = calls;
    return verdict;
  }

  // Of the operator that is written, or of the one registered as `registered`.
  void expectRow(const CallRow& row, const std::string& registered = "") {
    SCOPED_TRACE(row.source);
    TestTree tree;
    Invocation* call = tree.parse(row.source);
    const std::string written = TestTree::text(call->leaf(0));
    const std::string name = registered.empty() ? written : registered;
    vel::STOperator* op = find(name);
    ASSERT_NE(op, nullptr) << name;

    host.rating = row.rating;
    host.calls.clear();
    const Verdict verdict = checkBothWays(*op, call, "old", "fallback");
    EXPECT_EQ(verdict.accepted, row.accepted);
    EXPECT_EQ(verdict.resultType, row.resultType);
    EXPECT_EQ(verdict.messages, row.messages);
    if (row.accepted || *row.text != 0) {
      EXPECT_EQ(op->generate(&generator, call), row.text);
    }
    if (row.calls != nullptr) {
      EXPECT_EQ(TestHost::take(host.calls), row.calls);
    }
  }

  void expectRows(const std::vector<CallRow>& rows, const std::string& registered = "") {
    for (const CallRow& row : rows) expectRow(row, registered);
  }

  // What check asks the host of the program, in order.
  std::string questions(const std::string& source) {
    TestTree tree;
    Invocation* call = tree.parse(source);
    host.asked.clear();
    check(*find(TestTree::text(call->leaf(0))), call, "", "");
    std::vector<std::string> asked;
    for (const std::string& each : host.asked) {
      if (each != "translate") asked.push_back(each);
    }
    return TestHost::take(asked);
  }

  TestHost host;
  TestGenerator generator{host};
  hostkit::PluginLibrary library;
  vel::OpManagerAPI* registry;
};

// Messages as TestHost::describe gives them.
inline std::string message(int at, const char* code, const std::string& text) {
  return "@" + std::to_string(at) + " " + code + " " + text;
}
inline std::string countMessage(int at, const std::string& name) {
  return message(at, "E C0040",
                 "Too many parameters, too few parameters, or no variables assigned to the "
                 "IN_OUT in PRG '" +
                     name + "';");
}
inline std::string notAllowed(int at, const std::string& text, const std::string& name) {
  return message(at, "E C0131", "'" + text + "' are not allowed to be '" + name + "' parameters;");
}
inline std::string abnormal(int at, const std::string& name) {
  return message(at, "E C0131", "'" + name + "' abnormal parameters;");
}
inline std::string cannotConvert(int at, const std::string& from, const std::string& to) {
  return message(at, "E C0032", "'" + from + "' cannot convert to '" + to + "' type;");
}
inline std::string mismatch(const std::string& name, const std::string& argument,
                            const std::string& type) {
  return message(0, "E C0032",
                 "'" + name + "' invocation '" + argument + "':'" + type + "' type mismatch;");
}
inline std::string loss(int at, const std::string& from, const std::string& to) {
  return message(at, "W C0197",
                 "Implicit conversion from type '" + from + "' to type '" + to +
                     "' : Possible loss of information;");
}
inline std::string notInteger(const char* code, const std::string& name, const std::string& text) {
  return message(0, code, "'" + name + "' param '" + text + "' not an 'Integer' type;");
}
