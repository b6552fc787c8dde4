#include "hostkit/operator_inputs.h"

#include <array>
#include <charconv>
#include <memory>

#include "core/op_manager_api.h"
#include "hostkit/folding.h"
#include "hostkit/unit.h"

namespace hostkit {
namespace {

struct Formals {
  std::string_view name;
  std::array<std::string_view, 3> inputs;
};

// clang-format off
constexpr std::array<Formals, 13> kFormals{{
    {"SEL",            {"G", "IN0", "IN1"}},
    {"LIMIT",          {"MN", "IN", "MX"}},
    {"EXPT",           {"IN1", "IN2", {}}},
    {"SHL",            {"IN", "N", {}}},
    {"SHR",            {"IN", "N", {}}},
    {"ROL",            {"IN", "N", {}}},
    {"ROR",            {"IN", "N", {}}},
    {"_READIDIRECT",   {"IN", {}, {}}},
    {"_WRITEODIRECT",  {"OUT", "IN", {}}},
    {"IRDBIT",         {"IN", "OUT", {}}},
    {"IWRBIT",         {"OUT", "IN", {}}},
    {"GETBITOFPARAM",  {"IN", "N", {}}},
    {"SETBITOFPARAM",  {"IN", "N", "VALUE"}},
}};
// clang-format on

// What an add-on tells of the operator's inputs; null when it tells nothing.
const std::vector<std::string>* describedInputs(const Services& services, std::string_view name) {
  if (services.descriptions == nullptr) return nullptr;
  const OperatorDescriptions::Entry* const entry = services.descriptions->find(name);
  return entry != nullptr && entry->namesInputs ? &entry->inputs : nullptr;
}

}  // namespace

int numberedInput(std::string_view formal, std::string_view prefix) {
  if (formal.size() <= prefix.size() ||
      !equalIgnoringCase(formal.substr(0, prefix.size()), prefix)) {
    return -1;
  }
  int number = -1;
  const auto [end, error] =
      std::from_chars(formal.data() + prefix.size(), formal.data() + formal.size(), number);
  return error == std::errc() && end == formal.data() + formal.size() ? number : -1;
}

int operatorInput(std::string_view operatorName, std::string_view formal) {
  for (const Formals& row : kFormals) {
    if (!equalIgnoringCase(row.name, operatorName)) continue;
    for (std::size_t i = 0; i < row.inputs.size(); ++i) {
      if (!row.inputs[i].empty() && equalIgnoringCase(row.inputs[i], formal))
        return static_cast<int>(i);
    }
    return -1;
  }
  if (equalIgnoringCase(operatorName, "MIN") || equalIgnoringCase(operatorName, "MAX")) {
    const int number = numberedInput(formal, "IN");
    return number >= 1 ? number - 1 : -1;
  }
  if (equalIgnoringCase(operatorName, "MUX")) {
    if (equalIgnoringCase(formal, "K")) return 0;
    const int number = numberedInput(formal, "IN");
    return number >= 0 ? number + 1 : -1;
  }
  // Everything else has one input.
  return equalIgnoringCase(formal, "IN") ? 0 : -1;
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

void declareFunctionOperators(Services& services) {
  std::vector<std::string> names;
  services.operators->operatorNames(names);
  for (const std::string& name : names) {
    if (!services.operators->isFCOperator(name)) continue;
    auto unit = std::make_unique<Unit>(&services, name, vel::POUType::Function);
    if (const auto* const inputs = describedInputs(services, name)) {
      for (const std::string& input : *inputs) unit->addInput(input);
    } else {
      for (const char* const input : {"IN", "IN1", "IN2"}) {
        if (operatorInput(name, input) >= 0) unit->addInput(input);
      }
    }
    if (services.answers.addUnit(unit.get())) static_cast<void>(unit.release());
  }
}

}  // namespace hostkit
