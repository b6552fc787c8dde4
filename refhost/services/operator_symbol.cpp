#include "refhost/services/operator_symbol.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "core/op_manager_api.h"
#include "refhost/services/folded.h"
#include "refhost/services/services.h"

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

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::any_of(names.begin(), names.end(), [name](std::string_view each) {
    return each.size() == name.size() && each.front() == name.front() && each == name;
  });
}

}  // namespace

void declareFunctionOperators(Services& services) {
  std::vector<std::string> names;
  services.operators->operatorNames(names);
  for (const std::string& name : names) {
    if (!services.operators->isFCOperator(name)) continue;
    auto symbol = std::make_unique<OperatorSymbol>(&services, name);
    for (const std::string_view formal : {"IN", "IN1", "IN2"}) {
      if (operatorInput(name, formal) >= 0) symbol->addInput(formal);
    }
    services.symbols.add(std::move(symbol));
  }
}

int numberedInput(std::string_view formal, std::string_view prefix) {
  if (formal.size() <= prefix.size() || !equalFolded(formal.substr(0, prefix.size()), prefix)) {
    return -1;
  }
  int number = -1;
  const auto [end, error] =
      std::from_chars(formal.data() + prefix.size(), formal.data() + formal.size(), number);
  return error == std::errc() && end == formal.data() + formal.size() ? number : -1;
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
    const int number = numberedInput(formal, "IN");
    return number >= 1 ? number - 1 : -1;
  }
  if (equalFolded(operatorName, "MUX")) {
    if (equalFolded(formal, "K")) return 0;
    const int number = numberedInput(formal, "IN");
    return number >= 0 ? number + 1 : -1;
  }
  // Everything else has one input.
  return equalFolded(formal, "IN") ? 0 : -1;
}

bool namesOperand(std::string_view operatorName, int index) {
  const bool zone = isOneOf(operatorName, {"IZSET", "IZRST", "ZSET", "ZRST"});
  if (index == 1) return zone;
  return index == 0 && (zone || isOneOf(operatorName, {"SIZEOF", "ADR", "IRDBIT", "IWRBIT",
                                                       "_READIDIRECT", "_WRITEODIRECT"}));
}

bool choosesAmongValues(std::string_view operatorName) {
  return isOneOf(operatorName, {"LIMIT", "MAX", "MIN", "MUX", "SEL"});
}

bool writesParametersBare(std::string_view operatorName) {
  return isOneOf(operatorName, {"MUX", "ROL", "ROR"});
}

bool countsCalls(std::string_view operatorName) {
  return isOneOf(operatorName, {"MEP", "MEF", "_READIDIRECT"});
}

bool givesValue(std::string_view operatorName) {
  return !isOneOf(operatorName, {"IRDBIT", "IWRBIT", "_WRITEODIRECT", "IZSET", "IZRST", "ZSET",
                                 "ZRST", "SETBITOFPARAM"});
}

}  // namespace refhost
