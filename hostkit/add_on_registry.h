// The registry that an add-on is given.
#pragma once

#include <string>
#include <vector>

#include "core/op_manager_api.h"
#include "core/operator.h"

namespace hostkit {

// Forwards to the plugin's registry. Records the names of the operators that are registered and
// the reason why the first refused one is refused.
class AddOnRegistry final : public vel::OpManagerAPI {
 public:
  explicit AddOnRegistry(vel::OpManagerAPI& registry) : registry_(registry) {}

  // Empty when no operator was refused.
  const std::string& refusal() const { return refusal_; }
  const std::vector<std::string>& taken() const { return taken_; }

  bool registerOperator(vel::STOperator* op) override {
    const bool known = op != nullptr && registry_.findOperator(op->name) != nullptr;
    if (registry_.registerOperator(op)) {
      taken_.push_back(op->name);
      return true;
    }
    if (refusal_.empty()) {
      refusal_ = op == nullptr ? "registers nothing as an operator"
                               : "its operator '" + op->name + "' is refused: " +
                                     (known ? "the name is taken" : "the host has no place for it");
    }
    return false;
  }
  vel::STOperator* findOperator(const std::string& name) override {
    return registry_.findOperator(name);
  }
  bool isFCOperator(const std::string& name) override { return registry_.isFCOperator(name); }
  int operatorCount() override { return registry_.operatorCount(); }
  void operatorNames(std::vector<std::string>& names) override { registry_.operatorNames(names); }
  void clearOperators() override { registry_.clearOperators(); }

 private:
  vel::OpManagerAPI& registry_;
  std::string refusal_;
  std::vector<std::string> taken_;
};

}  // namespace hostkit
