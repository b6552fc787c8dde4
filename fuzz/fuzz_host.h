// A host whose every answer is drawn from the fuzzer's input: it keeps what the
// contract promises and nothing else.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/call_tree.h"
#include "host/declaration.h"
#include "host/device_memory.h"
#include "host/expression.h"
#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/project_settings.h"
#include "host/symbol_manager.h"
#include "host/text.h"

namespace fuzz {

class FuzzHost final : public vel::InternalInterface {
 public:
  FuzzHost();
  ~FuzzHost() override;

  // Of the input being run; null while the registry is built.
  FuzzedDataProvider* input = nullptr;
  vel::OpManagerAPI* registry = nullptr;

  // Settings are asked for by reference, so that each input draws them first.
  void drawSettings();

  bool chance() { return input != nullptr && input->ConsumeBool(); }
  // A type's number: one the contract names or any other.
  vel::BasicDataType type();
  // A name, an address, an operand, or any bytes.
  std::string text();
  // A symbol of a kind that `kind` asks for, or null.
  vel::Symbol* symbol(vel::Symbol::Type kind);
  vel::HeapAddress address();
  void keep(vel::SymbolPOU* unit) { units_.emplace_back(unit); }

  vel::SymbolManager* symbolManager() override { return &symbols_; }
  const std::string& translate(const std::string& format) override {
    return *translations_.insert(format).first;
  }
  vel::DeviceMemory* deviceMemory() override { return &memory_; }
  vel::CallTree* callTree() override { return &calls_; }
  vel::OpManagerAPI* operatorManager() override { return registry; }
  int addressNotation() override { return notation_; }
  vel::ProjectSettings* projectSettings() override { return &settings_; }

  struct Symbols final : vel::SymbolManager {
    explicit Symbols(FuzzHost& owner) : host(owner) {}
    FuzzHost& host;
  };
  struct Memory final : vel::DeviceMemory {
    explicit Memory(FuzzHost& owner) : host(owner) {}
    FuzzHost& host;
  };

 private:
  struct Calls final : vel::CallTree {};

  Symbols symbols_{*this};
  Memory memory_{*this};
  Calls calls_;
  vel::ProjectSettings settings_;
  int notation_ = 0;
  std::set<std::string> translations_;
  std::vector<std::unique_ptr<vel::Symbol>> pool_;
  std::vector<std::unique_ptr<vel::SymbolPOU>> units_;  // of the registered operators
};

class FuzzGenerator final : public vel::Generator {
 public:
  explicit FuzzGenerator(FuzzHost& host) : Generator(&host), host_(host) {}

  const char* optionText(const char*) override {
    option_ = host_.text();
    return option_.c_str();
  }
  std::string typeText(vel::SymbolDataType*) override { return host_.text(); }
  std::string variableText(vel::SymbolVar*, int, const std::string&) override {
    return host_.text();
  }
  std::string expressionText(vel::ASTNode*) override { return host_.text(); }
  std::string prepareConstant(const std::string& text, vel::BasicDataType) override { return text; }

 private:
  FuzzHost& host_;
  std::string option_;
};

// The syntax tree of one input.
class FuzzTree {
 public:
  explicit FuzzTree(FuzzHost& host);
  ~FuzzTree();

  // A call of `name` or of anything else, well-formed or not, under parents of any
  // kind; null at times.
  vel::ASTNode* call(const std::string& name);

 private:
  using Leaves = std::vector<vel::ASTNode*>;

  vel::ASTNode* node(int depth);
  Leaves leaves(int depth);
  vel::ASTNode* invocation(const std::string& name, int depth);
  template <class Node, class... Arguments>
  vel::ASTNode* add(Leaves leaves, Arguments... arguments);
  const char* keep(std::string text) { return texts_.emplace_back(std::move(text)).c_str(); }

  FuzzHost& host_;
  std::vector<std::unique_ptr<vel::ASTNode>> nodes_;
  std::deque<std::string> texts_;
  std::deque<Leaves> leaves_;
};

}  // namespace fuzz
