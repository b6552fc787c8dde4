#include "refhost/semantics/bindings.h"

#include <array>
#include <charconv>

namespace refhost {
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

// `IN3` is 3; -1 for a text that is not the prefix and a number.
int numbered(std::string_view formal, std::string_view prefix) {
  if (formal.size() <= prefix.size() || !equalFolded(formal.substr(0, prefix.size()), prefix)) {
    return -1;
  }
  int number = -1;
  const auto [end, error] =
      std::from_chars(formal.data() + prefix.size(), formal.data() + formal.size(), number);
  return error == std::errc() && end == formal.data() + formal.size() ? number : -1;
}

}  // namespace

std::vector<Binding> bindArguments(const Call& call, const UnitSymbol& unit) {
  std::vector<VarSymbol*> positions;
  for (const auto& variable : unit.variables()) {
    if (variable->varKind() == vel::SymbolVar::kInput ||
        variable->varKind() == vel::SymbolVar::kInOut) {
      positions.push_back(variable.get());
    }
  }
  std::vector<Binding> bindings;
  const ASTNode* const list = call.leaf(1);
  const int count = list != nullptr ? list->leavesCount() : 0;
  for (int i = 0; i < count; ++i) {
    Binding binding;
    binding.node = list->leaf(i);
    if (kindOf(*binding.node) == NodeKind::Argument) {
      binding.named = static_cast<const Argument*>(binding.node);
      const auto* const formal = static_cast<const Text*>(binding.node->leaf(0));
      VarSymbol* const parameter = unit.variable(formal->text());
      if (parameter != nullptr && parameter->isParameter()) binding.parameter = parameter;
      binding.value = static_cast<Expr*>(binding.node->leaf(1));
    } else {
      const auto position = static_cast<std::size_t>(i);
      if (position < positions.size()) binding.parameter = positions[position];
      binding.value = static_cast<Expr*>(binding.node);
    }
    bindings.push_back(binding);
  }
  return bindings;
}

int operatorInput(std::string_view operatorName, std::string_view formal) {
  for (const Formals& row : kFormals) {
    if (!equalFolded(row.name, operatorName)) continue;
    for (std::size_t i = 0; i < row.inputs.size(); ++i) {
      if (!row.inputs[i].empty() && equalFolded(row.inputs[i], formal)) return static_cast<int>(i);
    }
    return -1;
  }
  if (equalFolded(operatorName, "MIN") || equalFolded(operatorName, "MAX")) {
    const int number = numbered(formal, "IN");
    return number >= 1 ? number - 1 : -1;
  }
  if (equalFolded(operatorName, "MUX")) {
    if (equalFolded(formal, "K")) return 0;
    const int number = numbered(formal, "IN");
    return number >= 0 ? number + 1 : -1;
  }
  // Everything else has one input.
  return equalFolded(formal, "IN") ? 0 : -1;
}

}  // namespace refhost
