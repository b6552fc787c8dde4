#include "refhost/services/operator_traits.h"

#include <algorithm>
#include <initializer_list>

namespace refhost {
namespace {

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::any_of(names.begin(), names.end(), [name](std::string_view each) {
    return each.size() == name.size() && each.front() == name.front() && each == name;
  });
}

}  // namespace

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
