#include "hostkit/unit.h"

#include <utility>

namespace hostkit {

Unit::Unit(vel::InternalInterface* ii, const std::string& name, vel::POUType type)
    : SymbolPOU(ii, name, type, nullptr) {
  if (type != vel::POUType::FunctionBlock) return;
  instanceType_ = std::make_unique<vel::SymbolFBType>(name);
  fbType_ = instanceType_.get();
}

vel::SymbolVar* Unit::addParameter(std::unique_ptr<vel::SymbolVar> parameter) {
  params_.push_back(parameter.get());
  parameters_.push_back(std::move(parameter));
  return params_.back();
}

void Unit::addInput(const std::string& name) {
  addParameter(std::make_unique<vel::SymbolVar>(name, nullptr, vel::SymbolVar::kInput));
}

}  // namespace hostkit
