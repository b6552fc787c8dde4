#pragma once

#include <string>
#include <vector>

#include "hostkit/device_map.h"
#include "hostkit/services.h"
#include "refhost/services/call_graph.h"
#include "refhost/services/configuration.h"
#include "refhost/services/layout.h"
#include "refhost/services/open_places.h"
#include "refhost/services/symbol_table.h"

namespace refhost {

// The services that the reference host passes to the plugin. They answer from the symbol table and
// from the results of the analysis in the tree.
class Services final : public hostkit::Answers, public hostkit::Services {
 public:
  Services(int addressNotation, DeviceMap::Sizes sizes) : hostkit::Services(this), memory(sizes) {
    notation = addressNotation;
  }

  bool usesDeviceLetters() const { return notation == 1; }

  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                      std::vector<vel::VELMessage>& messages) override;
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override {
    return symbols.find(name, unit, kind);
  }
  bool addUnit(vel::SymbolPOU* unit) override;
  bool isWritable(vel::ASTNode& invocation, const std::string& text, const std::string& unit,
                  std::vector<vel::VELMessage>& messages) override;
  vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit) override;
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    return memory.parse(text, out);
  }
  vel::HeapRawAddr place(const vel::HeapAddress& address) override { return memory.raw(address); }
  void addCall(const std::string& caller, const std::string& callee,
               vel::TextLocation where) override;

  // True while an operator takes an enumeration as its base type, because the host has checked that
  // only values of one enumeration meet.
  bool enumerationsAreNumbers = false;

  SymbolTable symbols;
  DeviceMap memory;
  CallGraph calls;
  Configuration configuration;
  Layouts layouts;
  ConfiguredVariables configured;
};

}  // namespace refhost
