// Program units that a host creates itself.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/symbol.h"

namespace hostkit {

// Owns the data type of its instances if it is a function block.
class Unit : public vel::SymbolPOU {
 public:
  Unit(vel::InternalInterface* ii, const std::string& name, vel::POUType type);

  // Takes ownership.
  vel::SymbolVar* addParameter(std::unique_ptr<vel::SymbolVar> parameter);
  // Not owned; outlives the unit.
  void addParameter(vel::SymbolVar& parameter) { params_.push_back(&parameter); }
  // Adds an input without a type, for an operator, since operators check the types themselves.
  void addInput(const std::string& name);

 private:
  std::unique_ptr<vel::SymbolFBType> instanceType_;
  std::vector<std::unique_ptr<vel::SymbolVar>> parameters_;
};

}  // namespace hostkit
