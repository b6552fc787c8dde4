// A host whose every answer is drawn from the fuzzer's input: it keeps what the contract
// promises and nothing else.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hostkit/elementary_types.h"
#include "hostkit/services.h"
#include "hostkit/unit.h"

namespace fuzz {

using vel::BasicDataType;
using Messages = std::vector<vel::VELMessage>;

class FuzzHost final : public hostkit::Answers, public hostkit::Services {
 public:
  FuzzHost() : Services(this) {
    std::vector<vel::SymbolDataType*> types = {nullptr};
    const auto addType = [&](const char* name, BasicDataType type) {
      types.push_back(keep<vel::SymbolDataType>(name, type));
    };
    for (const hostkit::ElementaryType& row : hostkit::elementaryTypes()) {
      if (row.name != nullptr) addType(row.name, row.type);
    }
    addType("Named", BasicDataType::Derived);
    addType("Struct", BasicDataType::Structure);
    addType("Enum", BasicDataType::Enumeration);
    addType("INVALID", BasicDataType::None);
    for (vel::SymbolDataType* const type : types) {
      for (const std::int32_t kind : {4, 8, 12}) keep<vel::SymbolVar>("v", type, kind);
      keep<PlacedVariable>("v", type);
    }
    for (const auto type : {vel::POUType::Program, vel::POUType::Function,
                            vel::POUType::FunctionBlock, vel::POUType::Operator}) {
      for (int inputs = 0; inputs < 4; ++inputs) {
        auto* const unit = keep<hostkit::Unit>(this, "U", type);
        if (inputs == 3) unit->addParameter(nullptr);
        for (int i = 0; i < inputs; ++i) unit->addInput("in");
        if (inputs == 3) {
          unit->addParameter(std::make_unique<vel::SymbolVar>("x", types[2], 8));
          unit->addParameter(std::make_unique<vel::SymbolVar>("y", nullptr, 4));
        }
      }
    }
    keep<vel::SymbolTyped>("t", nullptr);
    keep<vel::SymbolTyped>("t", types[2]);
  }

  // Of the input being run; null while the registry is built.
  FuzzedDataProvider* input = nullptr;

  // What stays the same for an input, which draws it first: the notation, the settings, and
  // which services this host has.
  void drawSettings() {
    settings.localIoAddress = text();
    notation = input->ConsumeIntegralInRange(-1, 2);
    translates_ = chance();
    // Most hosts have them all.
    const auto lacks = input->ConsumeIntegralInRange(0, 31);
    lacks_ = (lacks & 16) == 0 ? 0 : lacks;
  }

  bool chance() { return input != nullptr && input->ConsumeBool(); }
  // A type's number: one the contract names or any other.
  BasicDataType type() {
    if (input == nullptr) return BasicDataType::None;
    const int drawn = input->ConsumeIntegralInRange(-1, 31);
    return static_cast<BasicDataType>(drawn < 31 ? drawn : input->ConsumeIntegral<int>());
  }
  // A name, an address, an operand, or any bytes.
  std::string text() {
    constexpr std::array<const char*, 20> kWords = {
        "x",    "y.3",  "%IX0.1",         "%QB7", "%MW10", "X1",       "Y10",  "M5",
        "D0.3", "5",    "-128",           "'a'",  "TRUE",  "REAL#1.5", "st.x", "a + b",
        "BYTE", "WORD", "I:0-16;Q:0-16;", "_"};
    if (input == nullptr) return {};
    const auto which = input->ConsumeIntegralInRange<std::size_t>(0, kWords.size() + 3);
    return which < kWords.size() ? kWords[which] : input->ConsumeRandomLengthString(40);
  }

  const std::string& translate(const std::string& format) override {
    if (!translates_) return format;
    translation_ = format;
    return translation_;
  }
  vel::DeviceMemory* deviceMemory() override { return (lacks_ & 1) != 0 ? nullptr : this; }
  vel::CallTree* callTree() override { return (lacks_ & 2) != 0 ? nullptr : this; }
  vel::OpManagerAPI* operatorManager() override { return (lacks_ & 4) != 0 ? nullptr : operators; }
  vel::ProjectSettings* projectSettings() override {
    return (lacks_ & 8) != 0 ? nullptr : &settings;
  }

  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& /*unit*/,
                      Messages& messages) override {
    if (input->ConsumeIntegralInRange(0, 9) == 9) {
      messages.push_back({expression.pos(), -1, 1, 0xF0002, "complaint", "", ""});
    }
    const BasicDataType drawn = type();
    return {drawn, chance() ? text() : AstNodeHelper::basicDataTypeText(drawn)};
  }
  // A symbol of a kind that `kind` asks for, or null.
  vel::Symbol* find(const char* /*name*/, const char* /*unit*/, vel::Symbol::Type kind) override {
    if (input == nullptr) return nullptr;
    const auto first = input->ConsumeIntegralInRange<std::size_t>(0, pool_.size());
    for (std::size_t i = first; i < pool_.size(); ++i) {
      if ((pool_[i]->symbolType() & kind) != 0) return pool_[i].get();
    }
    return nullptr;
  }
  bool addUnit(vel::SymbolPOU* unit) override {
    units_.emplace_back(unit);
    return true;
  }
  int rate(BasicDataType /*target*/, BasicDataType /*source*/, const char* /*sourceText*/,
           const std::string& /*unit*/) override {
    return input->ConsumeIntegralInRange(-4, 1);
  }
  bool isWritable(vel::ASTNode& invocation, const std::string& text, const std::string& /*unit*/,
                  Messages& messages) override {
    if (chance()) return true;
    messages.push_back({invocation.pos(), -1, 1, 0xF0003, text, "", ""});
    return false;
  }
  vel::SymbolDataType* resolve(vel::ASTNode& /*typeSpec*/, vel::VarContainer& /*unit*/) override {
    return static_cast<vel::SymbolDataType*>(find("", "", vel::Symbol::DataType));
  }
  bool parseAddress(const std::string& /*text*/, vel::HeapAddress& out) override {
    if (!chance()) return false;
    out.area = input->ConsumeIntegralInRange(0U, 4U);
    out.unitSize = input->ConsumeIntegralInRange(0U, 9U);
    out.position = input->ConsumeIntegral<std::uint32_t>();
    if (chance()) out.bitIndex = input->ConsumeIntegralInRange(0U, 64U);
    return true;
  }
  vel::HeapRawAddr place(const vel::HeapAddress& /*address*/) override {
    return {input->ConsumeIntegral<std::uint32_t>()};
  }
  BasicDataType addressType(const vel::HeapAddress& /*address*/) override { return type(); }
  vel::JapanComponent components(const std::string& /*text*/) override {
    return {text(), text(), text()};
  }
  std::string expressionText(vel::ASTNode& /*expression*/) override { return text(); }
  std::string variableText(vel::SymbolVar& /*variable*/, const std::string& /*unit*/) override {
    return text();
  }
  std::string typeText(vel::SymbolDataType& /*type*/) override { return text(); }

 private:
  struct PlacedVariable final : vel::SymbolVar {
    PlacedVariable(const std::string& name, vel::SymbolDataType* type)
        : SymbolVar(name, type, 100) {
      fixedAddress_ = true;
      iecAddress_.area = 1;
      backendAddress_.address = 77;
    }
  };

  template <class Kept, class... Arguments>
  Kept* keep(Arguments&&... arguments) {
    auto symbol = std::make_unique<Kept>(std::forward<Arguments>(arguments)...);
    Kept* const kept = symbol.get();
    pool_.push_back(std::move(symbol));
    return kept;
  }

  int lacks_ = 0;  // services: a bit for each
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

}  // namespace fuzz
