// A host that answers as the test says and records what it is asked.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/ast_node_helper.h"
#include "host/call_tree.h"
#include "host/declaration.h"
#include "host/device_memory.h"
#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/project_settings.h"
#include "host/symbol_manager.h"

// A device address that the host knows; `raw` is its place in memory, `type` that of
// its unit.
struct FakeAddress {
  vel::HeapAddress address;
  std::uint32_t raw = 0;
  vel::BasicDataType type = vel::BasicDataType::None;
  vel::JapanComponent parts;
};

// Expressions have the type that their text names: `i`, `i1` and `i + 1` are INT, see
// the table in fake_host.cpp. Translation puts "~" before a format.
class FakeHost : public vel::InternalInterface,
                 public vel::SymbolManager,
                 public vel::CallTree,
                 public vel::DeviceMemory {
 public:
  static DataTypeInfo typeOf(const std::string& text);

  // Answers.
  int rating = 0;                    // of compareDataType
  int notation = 0;                  // of addresses
  std::set<std::string> readOnly;    // recorded and refused, with a host message, when written
  std::set<std::string> complaints;  // expressions whose type is asked for with a host message
  std::set<std::string> refusedUnits;
  std::map<std::string, FakeAddress> addresses;    // by text, letter case included
  static constexpr std::uint32_t kNoPlace = 4000;  // of addresses that the host does not know
  vel::OpManagerAPI* registry = nullptr;
  vel::ProjectSettings settings;
  // Declares a unit with parameters of these kinds; the latest of a name counts. A
  // kind below 0 stands for a parameter that is missing.
  void declare(const std::string& name, vel::POUType type, const std::vector<int>& kinds);
  // Symbols beside those that texts name, by scope and name: `P:x`.
  std::map<std::string, std::unique_ptr<vel::Symbol>> named;
  // Adds a variable to them that is kept at `raw`, where the program has put it when
  // `address` is not empty.
  void place(const std::string& scopeAndName, std::uint32_t raw,
             const vel::HeapAddress& address = {});

  // Records: comparisons, type specifications resolved, and edges of the call tree.
  std::vector<std::string> calls;
  std::vector<std::unique_ptr<vel::SymbolPOU>> units;
  std::string takeCalls();

  // Every message as `@OFFSET E C0040 TEXT` (W for a warning), one per line; fails the
  // test when a record is not of the agreed form.
  static std::string describe(const std::vector<vel::VELMessage>& messages);

  vel::SymbolManager* symbolManager() override;
  const std::string& translate(const std::string& format) override;
  vel::DeviceMemory* deviceMemory() override;
  vel::CallTree* callTree() override;
  vel::OpManagerAPI* operatorManager() override;
  int addressNotation() override;
  vel::ProjectSettings* projectSettings() override;

  // The symbol that a text names.
  vel::Symbol* symbolOf(const std::string& name, vel::Symbol::Type kind);
  // What is known of an address; of another, what the host answers then.
  FakeAddress known(const std::string& text) const;
  FakeAddress known(const vel::HeapAddress& address) const;

 private:
  std::map<std::string, std::string> translations_;
  std::vector<std::unique_ptr<vel::Symbol>> symbolsMade_;
};

// The C text of an expression is its source with a prime (`x'`), of a type its name
// with `_t`.
class FakeGenerator : public vel::Generator {
 public:
  explicit FakeGenerator(FakeHost& host) : Generator(&host) {}

  std::map<std::string, std::string> options;
  std::map<std::string, std::string> texts;  // of expressions that have another

  const char* optionText(const char* name) override;
  std::string typeText(vel::SymbolDataType* type) override;
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& pouName) override;
  std::string expressionText(vel::ASTNode* expression) override;
  std::string prepareConstant(const std::string& text, vel::BasicDataType type) override;
};
