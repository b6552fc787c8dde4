// The simplest host that keeps every duty, made of the kit's ready parts.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

#include "hostkit/device_map.h"
#include "hostkit/hosttest/host_under_test.h"
#include "hostkit/literal.h"
#include "hostkit/plugin_library.h"
#include "hostkit/services.h"
#include "hostkit/symbol_table.h"
#include "hostkit/tree.h"

class KitHost : public hosttest::HostUnderTest, public hostkit::Answers {
 public:
  // Loads the plugin; false when it cannot be loaded.
  bool start();

  vel::InternalInterface& services() override { return services_; }
  vel::Generator& generator() override { return generator_; }
  vel::ASTNode* parse(const std::vector<hosttest::Unit>& units,
                      const std::string& statement) override;
  void accepted(vel::ASTNode& invocation, const std::string& resultType) override;
  bool setNotation(int notation) override {
    services_.notation = notation;
    return true;
  }
  bool setLocalIo(const std::string& ranges) override {
    services_.settings.localIoAddress = ranges;
    return true;
  }

  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                      std::vector<vel::VELMessage>& messages) override;
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override;
  bool addUnit(vel::SymbolPOU* unit) override { return table_.addUnit(unit); }
  bool isWritable(vel::ASTNode& invocation, const std::string& text, const std::string& unit,
                  std::vector<vel::VELMessage>& messages) override;
  vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit) override;
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    return map_.parse(text, out);
  }
  vel::HeapRawAddr place(const vel::HeapAddress& address) override { return map_.raw(address); }

 protected:
  using Span = hostkit::Tree::Span;
  static constexpr auto kWrapper = static_cast<Expression::Operator>(2);  // around a call

  // Steps of making and accepting a call, for hosts that do one of them wrong.
  virtual Span span(std::string_view source, std::size_t offset) {
    return {source, vel::TextLocation(0, static_cast<std::uint32_t>(offset))};
  }
  virtual Expression* literal(Span span, const hostkit::LiteralValue& value) {
    return tree_->literal(span, value.type, value.typeName, value.fixedType);
  }
  // An operator takes the neighbours of a call for the target of an assignment.
  virtual vel::ASTNode* nested(Span span, Invocation* call) {
    return tree_->expression(span, kWrapper, {call});
  }
  virtual void recordTypes(vel::ASTNode& invocation);
  virtual vel::HeapRawAddr placeState() { return map_.allocateState(); }

  hostkit::SymbolTable table_;  // types and operators
  std::unique_ptr<hostkit::Tree> tree_;
  hostkit::Services services_{this};

 private:
  void declare(const hosttest::Unit& unit);
  vel::SymbolDataType* type(const std::string& name) const {
    return static_cast<vel::SymbolDataType*>(table_.find(name.c_str(), "", vel::Symbol::DataType));
  }
  // Of the text at `offset` of the statement.
  vel::ASTNode* expression(std::string_view source, std::size_t offset);
  Invocation* call(std::string_view source, std::size_t offset);

  std::unique_ptr<hostkit::SymbolTable> program_;  // units and variables
  std::set<std::string> constants_;
  std::map<const vel::ASTNode*, DataTypeInfo> results_;  // of accepted calls
  std::vector<Invocation*> within_;                      // calls among parameters, inner ones first
  std::string unit_;
  hostkit::DeviceMap map_{{}};
  hostkit::TextGenerator generator_{services_};
  hostkit::PluginLibrary library_;
};
