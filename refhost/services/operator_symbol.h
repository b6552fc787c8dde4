// Function-call operators as the host declares them: functions with their inputs.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/symbol.h"

namespace refhost {

class Services;

class OperatorSymbol final : public vel::SymbolPOU {
 public:
  OperatorSymbol(vel::InternalInterface* ii, const std::string& name)
      : SymbolPOU(ii, name, vel::POUType::Function, nullptr) {}

  // The input's type is the operator's own to check.
  void addInput(std::string_view name) {
    inputs_.push_back(
        std::make_unique<vel::SymbolVar>(std::string(name), nullptr, vel::SymbolVar::kInput));
    params_.push_back(inputs_.back().get());
  }

 private:
  std::vector<std::unique_ptr<vel::SymbolVar>> inputs_;
};

// Declares every function-call operator of the registry: the registry itself makes
// no program units for them.
void declareFunctionOperators(Services& services);

// The position of an operator's input `formal` among its parameters, -1 when it has
// none of that name: calls may name their arguments.
int operatorInput(std::string_view operatorName, std::string_view formal);

// `IN3` is 3; -1 for a text that is not the prefix and a number.
int numberedInput(std::string_view formal, std::string_view prefix);

// True for parameter `index` of an operator that may name a type, an address or a unit.
bool namesOperand(std::string_view operatorName, int index);

// True for the operators whose result is one of their parameters as it stands.
bool choosesAmongValues(std::string_view operatorName);

// True for the operators that put their parameters beside casts or operators of their
// own, without parentheses.
bool writesParametersBare(std::string_view operatorName);

// True for the operators that remember what they were given, or read what the program does
// not hold: each call counts.
bool countsCalls(std::string_view operatorName);

// False for the operators that are statements in C, and so have no value.
bool givesValue(std::string_view operatorName);

}  // namespace refhost
