#include "hostkit/operator_inputs.h"

#include <memory>

#include "core/op_manager_api.h"
#include "hostkit/folding.h"
#include "hostkit/operator_traits.h"
#include "hostkit/unit.h"

namespace hostkit {
namespace {

// The inputs that an add-on gives for its operator; null when it gives none.
const std::vector<std::string>* describedInputs(const Services& services, std::string_view name) {
  if (services.descriptions == nullptr) return nullptr;
  const OperatorDescriptions::Entry* const entry = services.descriptions->find(name);
  return entry != nullptr && entry->namesInputs ? &entry->inputs : nullptr;
}

}  // namespace

int operatorInput(std::string_view operatorName, std::string_view formal) {
  return operatorTraits(operatorName).position(formal);
}

int operatorInput(const Services& services, std::string_view operatorName,
                  std::string_view formal) {
  const std::vector<std::string>* const inputs = describedInputs(services, operatorName);
  if (inputs == nullptr) return operatorInput(operatorName, formal);
  for (std::size_t i = 0; i < inputs->size(); ++i) {
    if (equalIgnoringCase((*inputs)[i], formal)) return static_cast<int>(i);
  }
  return -1;
}

std::vector<std::string> inputNames(const Services& services, std::string_view operatorName) {
  if (const auto* const inputs = describedInputs(services, operatorName)) return *inputs;
  std::vector<std::string> names;
  for (const std::string_view input : operatorTraits(operatorName).inputs) {
    if (!input.empty()) names.emplace_back(input);
  }
  return names;
}

void declareFunctionOperators(Services& services) {
  std::vector<std::string> names;
  services.operators->operatorNames(names);
  for (const std::string& name : names) {
    if (!services.operators->isFCOperator(name)) continue;
    auto unit = std::make_unique<Unit>(&services, name, vel::POUType::Function);
    for (const std::string& input : inputNames(services, name)) unit->addInput(input);
    if (services.answers.addUnit(unit.get())) static_cast<void>(unit.release());
  }
}

}  // namespace hostkit
