// The host of the benchmarks.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/ast_node_helper.h"
#include "host/expression.h"
#include "hostkit/answers.h"

// Returns answers prepared in advance, whatever the question, so that the host takes little of
// the measured time.
class ReadyAnswers final : public hostkit::Answers {
 public:
  struct Ready {
    vel::Symbol* dataType = nullptr;  // result of a lookup of that kind; not owned
    vel::Symbol* variable = nullptr;
    vel::Symbol* unit = nullptr;
    vel::Symbol* any = nullptr;
    vel::HeapAddress address;  // the empty address if no operand is an address
  };

  ReadyAnswers() = default;
  explicit ReadyAnswers(const Ready& ready) : ready_(ready) {}

  // Returns the type recorded on the expression.
  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& /*unit*/,
                      std::vector<vel::VELMessage>& /*messages*/) override {
    if (expression.type() != vel::ASTType::Expression) return {};
    const vel::BasicDataType type = static_cast<Expression&>(expression).basicType();
    return {type, AstNodeHelper::basicDataTypeText(type)};
  }
  vel::Symbol* find(const char* /*name*/, const char* /*unit*/, vel::Symbol::Type kind) override {
    if (kind == vel::Symbol::DataType) return ready_.dataType;
    if (kind == vel::Symbol::Variable) return ready_.variable;
    return kind == vel::Symbol::Pou ? ready_.unit : ready_.any;
  }
  // Deletes the unit, since nothing looks it up.
  bool addUnit(vel::SymbolPOU* unit) override {
    delete unit;
    return true;
  }
  bool parseAddress(const std::string& /*text*/, vel::HeapAddress& out) override {
    if (ready_.address.area == 0) return false;
    out = ready_.address;
    return true;
  }

 private:
  Ready ready_;
};

// A question with copies of its strings. Does not own its nodes and symbols.
using Request = std::function<void(hostkit::Answers&)>;

// Forwards every question to `answers` and appends it to `requests`. Owns neither.
class RecordingAnswers final : public hostkit::Answers {
 public:
  RecordingAnswers(hostkit::Answers& answers, std::vector<Request>& requests)
      : answers_(answers), requests_(requests) {}

  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                      std::vector<vel::VELMessage>& messages) override {
    requests_.emplace_back([&expression, unit](auto& host) {
      std::vector<vel::VELMessage> unread;
      host.typeOf(expression, unit, unread);
    });
    return answers_.typeOf(expression, unit, messages);
  }
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override {
    requests_.emplace_back([name = std::string(name), unit = std::string(unit), kind](auto& host) {
      host.find(name.c_str(), unit.c_str(), kind);
    });
    return answers_.find(name, unit, kind);
  }
  // Not recorded: no operation on an invocation adds units.
  bool addUnit(vel::SymbolPOU* unit) override { return answers_.addUnit(unit); }
  int rate(vel::BasicDataType target, vel::BasicDataType source, const char* sourceText,
           const std::string& unit) override {
    std::optional<std::string> text;
    if (sourceText != nullptr) text = sourceText;
    requests_.emplace_back([target, source, text, unit](auto& host) {
      host.rate(target, source, text ? text->c_str() : nullptr, unit);
    });
    return answers_.rate(target, source, sourceText, unit);
  }
  bool isWritable(vel::ASTNode& invocation, const std::string& text, const std::string& unit,
                  std::vector<vel::VELMessage>& messages) override {
    requests_.emplace_back([&invocation, text, unit](auto& host) {
      std::vector<vel::VELMessage> unread;
      host.isWritable(invocation, text, unit, unread);
    });
    return answers_.isWritable(invocation, text, unit, messages);
  }
  vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit) override {
    requests_.emplace_back([&typeSpec, &unit](auto& host) { host.resolve(typeSpec, unit); });
    return answers_.resolve(typeSpec, unit);
  }
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    requests_.emplace_back([text](auto& host) {
      vel::HeapAddress address;
      host.parseAddress(text, address);
    });
    return answers_.parseAddress(text, out);
  }
  vel::HeapRawAddr place(const vel::HeapAddress& address) override {
    requests_.emplace_back([address](auto& host) { host.place(address); });
    return answers_.place(address);
  }
  vel::BasicDataType addressType(const vel::HeapAddress& address) override {
    requests_.emplace_back([address](auto& host) { host.addressType(address); });
    return answers_.addressType(address);
  }
  vel::JapanComponent components(const std::string& text) override {
    requests_.emplace_back([text](auto& host) { host.components(text); });
    return answers_.components(text);
  }
  std::string expressionText(vel::ASTNode& expression) override {
    requests_.emplace_back([&expression](auto& host) { host.expressionText(expression); });
    return answers_.expressionText(expression);
  }
  std::string variableText(vel::SymbolVar& variable, const std::string& unit) override {
    requests_.emplace_back([&variable, unit](auto& host) { host.variableText(variable, unit); });
    return answers_.variableText(variable, unit);
  }
  std::string typeText(vel::SymbolDataType& type) override {
    requests_.emplace_back([&type](auto& host) { host.typeText(type); });
    return answers_.typeText(type);
  }
  const std::string& translate(const std::string& format) override {
    requests_.emplace_back([format](auto& host) { host.translate(format); });
    return answers_.translate(format);
  }
  void addCall(const std::string& caller, const std::string& callee,
               vel::TextLocation where) override {
    requests_.emplace_back(
        [caller, callee, where](auto& host) { host.addCall(caller, callee, where); });
    answers_.addCall(caller, callee, where);
  }

 private:
  hostkit::Answers& answers_;
  std::vector<Request>& requests_;
};
