// A host of the kit's own parts, which answers all else as the kit does.
#pragma once

#include "host/expression.h"
#include "hostkit/device_map.h"
#include "hostkit/services.h"
#include "hostkit/symbol_table.h"

struct KitHost : hostkit::Answers, hostkit::Services {
  KitHost() : Services(this) {}

  // Of an expression the type recorded on it.
  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& /*unit*/,
                      std::vector<vel::VELMessage>& /*messages*/) override {
    const auto* const node = dynamic_cast<const Expression*>(&expression);
    return {node != nullptr ? node->basicType() : vel::BasicDataType::None, ""};
  }
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override {
    return symbols.find(name, unit, kind);
  }
  bool addUnit(vel::SymbolPOU* unit) override { return symbols.addUnit(unit); }
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    return memory.parse(text, out);
  }
  vel::HeapRawAddr place(const vel::HeapAddress& address) override { return memory.raw(address); }

  hostkit::SymbolTable symbols;
  hostkit::DeviceMap memory{{}};
};
