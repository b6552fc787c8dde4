// The plugin, loaded as a host loads it.
#pragma once

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "support/fake_host.h"
#include "support/fake_tree.h"

// The plugin stays loaded: what it makes lives in it.
inline std::unique_ptr<vel::OpManagerAPI> loadPlugin(vel::InternalInterface* ii) {
  void* library = dlopen(VELOPS_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  auto* create = reinterpret_cast<decltype(&CreateOpManager)>(dlsym(library, "CreateOpManager"));
  return std::unique_ptr<vel::OpManagerAPI>(create(ii));
}

// One call and all that comes of it. The result type is "old" before the check.
struct CallRow {
  const char* source;
  int rating;  // what the host answers to a comparison of types
  bool accepted;
  const char* resultType;
  std::string messages;         // as FakeHost::describe
  const char* text = "";        // generated; not asked for when empty and the call is refused
  const char* calls = nullptr;  // asked of the host, one per line; null for any
};

// A host with the plugin in it.
class PluginTest : public ::testing::Test {
 protected:
  vel::STOperator* find(const std::string& name) { return host.registry->findOperator(name); }

  // Declares a function of `inputs` inputs.
  void declare(const std::string& name, std::size_t inputs) {
    host.declare(name, vel::POUType::Function, std::vector<int>(inputs, vel::SymbolVar::kInput));
  }

  // Of the operator that is written, or of the one registered as `registered`.
  void expectRow(const CallRow& row, const std::string& registered = "") {
    SCOPED_TRACE(row.source);
    vel::TreeBuilder tree;
    Invocation* call = tree.parse(row.source);
    const std::string written = vel::TreeBuilder::text(call->leaf(0));
    const std::string name = registered.empty() ? written : registered;
    vel::STOperator* op = find(name);
    ASSERT_NE(op, nullptr) << name;

    host.rating = row.rating;
    host.calls.clear();
    std::vector<vel::VELMessage> messages;
    std::string resultType = "old";
    EXPECT_EQ(op->check(&host, call, messages, resultType, "fallback"), row.accepted);
    EXPECT_EQ(resultType, row.resultType);
    EXPECT_EQ(FakeHost::describe(messages), row.messages);
    if (row.accepted || *row.text != 0) {
      EXPECT_EQ(op->generate(&generator, call), row.text);
    }
    if (row.calls != nullptr) {
      EXPECT_EQ(host.takeCalls(), row.calls);
    }
  }

  FakeHost host;
  FakeGenerator generator{host};
  std::unique_ptr<vel::OpManagerAPI> registry = loadPlugin(&host);

  PluginTest() { host.registry = registry.get(); }
};

// Messages as FakeHost::describe gives them.
inline std::string message(int at, const char* code, const std::string& text) {
  return "@" + std::to_string(at) + " " + code + " " + text;
}
inline std::string countMessage(int at, const std::string& name) {
  return message(at, "E C0040",
                 "~Too many parameters, too few parameters, or no variables assigned to the "
                 "IN_OUT in PRG '" +
                     name + "';");
}
inline std::string notAllowed(int at, const std::string& text, const std::string& name) {
  return message(at, "E C0131", "~'" + text + "' are not allowed to be '" + name + "' parameters;");
}
inline std::string abnormal(int at, const std::string& name) {
  return message(at, "E C0131", "~'" + name + "' abnormal parameters;");
}
inline std::string cannotConvert(int at, const std::string& from, const std::string& to) {
  return message(at, "E C0032", "~'" + from + "' cannot convert to '" + to + "' type;");
}
inline std::string mismatch(const std::string& name, const std::string& argument,
                            const std::string& type) {
  return message(0, "E C0032",
                 "~'" + name + "' invocation '" + argument + "':'" + type + "' type mismatch;");
}
inline std::string loss(int at, const std::string& from, const std::string& to) {
  return message(at, "W C0197",
                 "~Implicit conversion from type '" + from + "' to type '" + to +
                     "' : Possible loss of information;");
}
inline std::string notInteger(const char* code, const std::string& name, const std::string& text) {
  return message(0, code, "~'" + name + "' param '" + text + "' not an 'Integer' type;");
}
