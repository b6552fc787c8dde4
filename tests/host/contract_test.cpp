#include <cstdio>

#include "support/plugin.h"

using vel::BasicDataType;
using vel::Symbol;

namespace {

// Calls the virtual operation in slot `slot` (from 1) of `object`. The destructor, in
// slot `destructor`, takes two entries of the table.
template <class Result, class... Arguments>
#if defined(__clang__)
__attribute__((no_sanitize("undefined")))
#endif
Result
callSlot(void* object, int destructor, int slot, Arguments... arguments) {
  void** table = *static_cast<void***>(object);
  void* entry = table[slot > destructor ? slot : slot - 1];
  return reinterpret_cast<Result (*)(void*, Arguments...)>(entry)(object, arguments...);
}

using Contract = PluginTest;

TEST_F(Contract, OperatorSlots) {
  vel::STOperator* op = find("MAX");
  TestTree tree;
  vel::ASTNode* call = tree.parse("MAX(i, i)");
  std::vector<vel::VELMessage> messages;
  std::string resultType;
  EXPECT_EQ(callSlot<std::string>(op, 1, 2, static_cast<vel::Generator*>(nullptr)),
            op->staticCode());
  EXPECT_TRUE((callSlot<bool, vel::InternalInterface*, vel::ASTNode*, std::vector<vel::VELMessage>&,
                        std::string&, const std::string&>(op, 1, 3, &host, call, messages,
                                                          resultType, "P")));
  EXPECT_EQ(callSlot<std::string>(op, 1, 4, static_cast<vel::Generator*>(&generator), call),
            "MAX((i'), (i'))");
}

TEST_F(Contract, RegistrySlots) {
  vel::OpManagerAPI* api = registry;
  using Name = const std::string&;
  EXPECT_FALSE(callSlot<bool>(api, 1, 2, static_cast<vel::STOperator*>(nullptr)));
  EXPECT_EQ((callSlot<vel::STOperator*, Name>(api, 1, 3, "max")), find("MAX"));
  EXPECT_TRUE((callSlot<bool, Name>(api, 1, 4, "SQRT")));
  std::vector<std::string> names;
  callSlot<void, std::vector<std::string>&>(api, 1, 6, names);
  EXPECT_EQ(callSlot<int>(api, 1, 5), static_cast<int>(names.size()));
  ASSERT_GT(names.size(), 0U);
  std::vector<std::unique_ptr<vel::STOperator>> operators;
  operators.reserve(names.size());
  for (const std::string& name : names) operators.emplace_back(find(name));
  callSlot<void>(api, 1, 7);
  EXPECT_EQ(api->operatorCount(), 0);
}

TEST(Symbols, FourthSlotNamesAType) {
  vel::SymbolDataType type("BYTE", BasicDataType::USInt);
  vel::SymbolTyped typed("alias", &type);
  EXPECT_EQ(callSlot<std::string>(static_cast<Symbol*>(&type), 1, 4), "BYTE");
  EXPECT_EQ(callSlot<vel::SymbolDataType*>(static_cast<Symbol*>(&typed), 1, 4), &type);
}

TEST(Plugin, ExportsItsEntryPointOnly) {
  std::unique_ptr<FILE, int (*)(FILE*)> nm(
      popen("nm -D --defined-only --format=posix " VELOPS_PLUGIN, "r"), pclose);
  ASSERT_NE(nm, nullptr);
  std::string symbols;
  for (int c = std::fgetc(nm.get()); c != EOF; c = std::fgetc(nm.get())) {
    symbols += static_cast<char>(c);
  }
  EXPECT_EQ(symbols.substr(0, symbols.find(' ')), "CreateOpManager");
  EXPECT_EQ(symbols.find('\n'), symbols.size() - 1) << symbols;
}

}  // namespace
