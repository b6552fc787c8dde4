// A host whose every answer is drawn from the fuzzer's input: it keeps what the contract
// promises and nothing else.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <memory>
#include <string>
#include <vector>

#include "hostkit/services.h"
#include "hostkit/tree.h"

namespace fuzz {

class FuzzHost final : public hostkit::Answers, public hostkit::Services {
 public:
  FuzzHost();

  // Of the input being run; null while the registry is built.
  FuzzedDataProvider* input = nullptr;

  // What stays the same for an input, which draws it first: the notation, the settings, and
  // which services this host has.
  void drawSettings();

  bool chance() { return input != nullptr && input->ConsumeBool(); }
  // A type's number: one the contract names or any other.
  vel::BasicDataType type();
  // A name, an address, an operand, or any bytes.
  std::string text();

  const std::string& translate(const std::string& format) override;
  vel::DeviceMemory* deviceMemory() override { return hasMemory_ ? this : nullptr; }
  vel::CallTree* callTree() override { return keepsCalls_ ? this : nullptr; }
  vel::OpManagerAPI* operatorManager() override { return knowsRegistry_ ? operators : nullptr; }
  vel::ProjectSettings* projectSettings() override { return hasSettings_ ? &settings : nullptr; }

  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                      std::vector<vel::VELMessage>& messages) override;
  // A symbol of a kind that `kind` asks for, or null.
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override;
  bool addUnit(vel::SymbolPOU* unit) override;
  int rate(vel::BasicDataType target, vel::BasicDataType source, const char* sourceText,
           const std::string& unit) override;
  bool isWritable(vel::ASTNode& invocation, const std::string& text, const std::string& unit,
                  std::vector<vel::VELMessage>& messages) override;
  vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit) override;
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override;
  vel::HeapRawAddr place(const vel::HeapAddress& address) override;
  vel::BasicDataType addressType(const vel::HeapAddress& address) override;
  vel::JapanComponent components(const std::string& text) override;
  std::string expressionText(vel::ASTNode& expression) override;
  std::string variableText(vel::SymbolVar& variable, const std::string& unit) override;
  std::string typeText(vel::SymbolDataType& type) override;

 private:
  template <class Kept>
  Kept* keep(std::unique_ptr<Kept> symbol);

  bool hasMemory_ = true;
  bool keepsCalls_ = true;
  bool knowsRegistry_ = true;
  bool hasSettings_ = true;
  bool translates_ = false;
  std::string translation_;
  std::vector<std::unique_ptr<vel::Symbol>> pool_;
  std::vector<std::unique_ptr<vel::SymbolPOU>> units_;  // of the registered operators
};

class FuzzGenerator final : public hostkit::TextGenerator {
 public:
  explicit FuzzGenerator(FuzzHost& host) : TextGenerator(host), host_(host) {}

  const char* optionText(const char* /*name*/) override {
    option_ = host_.text();
    return option_.c_str();
  }

 private:
  FuzzHost& host_;
  std::string option_;  // until the next is asked for
};

// The syntax tree of one input.
class FuzzTree {
 public:
  explicit FuzzTree(FuzzHost& host) : host_(host) {}

  // A call of `name` or of anything else, well-formed or not, under parents of any kind;
  // null at times.
  vel::ASTNode* call(const std::string& name);

 private:
  using Leaves = hostkit::Tree::Leaves;

  vel::ASTNode* node(int depth);
  Leaves leaves(int depth);
  vel::ASTNode* invocation(const std::string& name, int depth);
  // A text that may be null.
  const char* textOrNull();
  template <class Node, class... Arguments>
  Node* add(Leaves leaves, Arguments... arguments);

  FuzzHost& host_;
  hostkit::Tree tree_;
};

}  // namespace fuzz
