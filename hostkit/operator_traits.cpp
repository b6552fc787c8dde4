#include "hostkit/operator_traits.h"

#include <charconv>
#include <cstddef>

#include "hostkit/folding.h"

namespace hostkit {
namespace {

using Family = OperatorFamily;
using T = OperatorTraits;
using Result = OperatorTraits::Result;

// A name belongs to the first row that it matches.
// clang-format off
constexpr OperatorTraits kRows[] = {
    {"SEL",           Family::Selection,  {"G", "IN0", "IN1"},  Result::Chosen, 1},
    {"LIMIT",         Family::Selection,  {"MN", "IN", "MX"},   Result::Chosen, 0, 0,
     T::kCompares | T::kRepeatsOperands},
    {"MIN",           Family::Selection,  {"IN1", {}, {}},      Result::Chosen, 0, 0,
     T::kCompares | T::kExtensible | T::kRepeatsOperands},
    {"MAX",           Family::Selection,  {"IN1", {}, {}},      Result::Chosen, 0, 0,
     T::kCompares | T::kExtensible | T::kRepeatsOperands},
    {"MUX",           Family::Selection,  {"K", "IN0", {}},     Result::Chosen, 1, 0,
     T::kExtensible | T::kCastsOperands | T::kWritesOperandsBare},
    {"SHL",           Family::Shift,      {"IN", "N", {}},      Result::Computed, 0, 0,
     T::kRepeatsOperands | T::kShiftsLeft},
    {"SHR",           Family::Shift,      {"IN", "N", {}},      Result::Computed, 0, 0,
     T::kRepeatsOperands},
    {"ROL",           Family::Rotation,   {"IN", "N", {}},      Result::Computed, 0, 0,
     T::kWritesOperandsBare | T::kRepeatsOperands},
    {"ROR",           Family::Rotation,   {"IN", "N", {}},      Result::Computed, 0, 0,
     T::kWritesOperandsBare | T::kRepeatsOperands},
    {"MEP",           Family::Edge,       {"IN", {}, {}},       Result::Computed, 0, 0, T::kRemembers},
    {"MEF",           Family::Edge,       {"IN", {}, {}},       Result::Computed, 0, 0, T::kRemembers},
    {"MOVE",          Family::Assignment, {"IN", {}, {}},       Result::Passed},
    {"ADR",           Family::Reference,  {"IN", {}, {}},       Result::Located, 0, 1, T::kGivesAddress},
    {"SIZEOF",        Family::Reference,  {"IN", {}, {}},       Result::Located, 0, 1, T::kGivesSize},
    {"EXPT",          Family::Numeric,    {"IN1", "IN2", {}}},
    {"ABS",           Family::Numeric},
    {"ACOS",          Family::Numeric},
    {"ASIN",          Family::Numeric},
    {"ATAN",          Family::Numeric},
    {"COS",           Family::Numeric},
    {"SIN",           Family::Numeric},
    {"TAN",           Family::Numeric},
    {"EXP",           Family::Numeric},
    {"LN",            Family::Numeric},
    {"LOG",           Family::Numeric},
    {"SQRT",          Family::Numeric},
    {"IRDBIT",        Family::DirectIo,   {"IN", "OUT", {}},    Result::Computed, 0, 1, T::kGivesNoValue | T::kNeedsCapitals},
    {"IWRBIT",        Family::DirectIo,   {"OUT", "IN", {}},    Result::Computed, 0, 1, T::kGivesNoValue},
    {"_READIDIRECT",  Family::DirectIo,   {"IN", {}, {}},       Result::Computed, 0, 1, T::kReadsDevices | T::kNeedsCapitals},
    {"_WRITEODIRECT", Family::DirectIo,   {"OUT", "IN", {}},    Result::Computed, 0, 1, T::kGivesNoValue},
    {"IZSET",         Family::DirectIo,   {"IN", {}, {}},       Result::Computed, 0, 2, T::kGivesNoValue | T::kNeedsCapitals},
    {"IZRST",         Family::DirectIo,   {"IN", {}, {}},       Result::Computed, 0, 2, T::kGivesNoValue | T::kNeedsCapitals},
    {"ZSET",          Family::Zone,       {"IN", {}, {}},       Result::Computed, 0, 2, T::kGivesNoValue},
    {"ZRST",          Family::Zone,       {"IN", {}, {}},       Result::Computed, 0, 2, T::kGivesNoValue},
    {"GETBITOFPARAM", Family::BitOfParameter, {"IN", "N", {}},  Result::Computed, 0, 1},
    {"SETBITOFPARAM", Family::BitOfParameter, {"IN", "N", "VALUE"}, Result::Computed, 0, 1,
     T::kGivesNoValue},
    {"TRUNC",         Family::Truncation},
    {"BCD_TO_INT",    Family::BcdConversion},
    {"INT_TO_BCD",    Family::BcdConversion},
    {"TO_STRING",     Family::StringConversion, {"IN", {}, {}}, Result::Converted, 0, 0, T::kGivesText},
    {"TO_WSTRING",    Family::StringConversion, {"IN", {}, {}}, Result::Converted, 0, 0, T::kGivesText},
    {"TO_BOOL",       Family::Conversion, {"IN", {}, {}},       Result::ComparedTo0},
    {"TO_*",          Family::GenericConversion, {"IN", {}, {}}, Result::Converted, 0, 0, T::kRepeatsReals},
    {"STRING_TO_*",   Family::StringConversion},
    {"WSTRING_TO_*",  Family::StringConversion},
    {"LTIME_TO_STRING",  Family::StringConversion, {"IN", {}, {}}, Result::Computed, 0, 0, T::kTakesLTime},
    {"LTIME_TO_WSTRING", Family::StringConversion, {"IN", {}, {}}, Result::Computed, 0, 0, T::kTakesLTime},
    {"*_TO_STRING",   Family::StringConversion},
    {"*_TO_WSTRING",  Family::StringConversion},
    {"LTIME_TO_*",    Family::Conversion, {"IN", {}, {}},       Result::Computed, 0, 0, T::kTakesLTime},
    {"*_TO_*",        Family::Conversion, {"IN", {}, {}},       Result::Computed, 0, 0, T::kRepeatsReals},
};
// clang-format on
constexpr OperatorTraits kUnknown{"*", Family::Other,      {"IN", {}, {}}, Result::Computed, 0,
                                  0,   T::kRepeatsOperands};

bool matches(std::string_view pattern, std::string_view name) {
  const std::size_t star = pattern.find('*');
  if (star == std::string_view::npos) return equalIgnoringCase(pattern, name);
  if (name.size() < star || !equalIgnoringCase(pattern.substr(0, star), name.substr(0, star))) {
    return false;
  }
  for (std::size_t rest = star + 1; rest <= name.size(); ++rest) {
    if (matches(pattern.substr(star + 1), name.substr(rest))) return true;
  }
  return false;
}

}  // namespace

const char* familyName(OperatorFamily family) {
  switch (family) {
    case Family::Conversion:
      return "conversion";
    case Family::GenericConversion:
      return "generic conversion";
    case Family::Truncation:
      return "truncation";
    case Family::StringConversion:
      return "string conversion";
    case Family::BcdConversion:
      return "BCD conversion";
    case Family::Selection:
      return "selection";
    case Family::Shift:
      return "shift";
    case Family::Rotation:
      return "rotation";
    case Family::Edge:
      return "edge";
    case Family::Assignment:
      return "assignment";
    case Family::Numeric:
      return "numeric";
    case Family::Reference:
      return "reference";
    case Family::DirectIo:
      return "direct I/O";
    case Family::Zone:
      return "zone";
    case Family::BitOfParameter:
      return "bit of parameter";
    case Family::Other:
      break;
  }
  return "other";
}

int OperatorTraits::position(std::string_view formal) const {
  const int count = inputCount();
  for (int i = 0; i < count; ++i) {
    if (equalIgnoringCase(inputs[static_cast<std::size_t>(i)], formal)) return i;
  }
  if (!has(kExtensible)) return -1;
  const std::string_view last = inputs[static_cast<std::size_t>(count - 1)];
  const std::string_view prefix = last.substr(0, last.size() - 1);
  const int first = last.back() - '0';
  const int number = numberedInput(formal, prefix);
  return number > first ? count - 1 + number - first : -1;
}

int OperatorTraits::inputCount() const {
  int count = 0;
  for (const std::string_view input : inputs) count += input.empty() ? 0 : 1;
  return count;
}

const OperatorTraits& operatorTraits(std::string_view name) {
  for (const OperatorTraits& row : kRows) {
    if (matches(row.names, name)) return row;
  }
  return kUnknown;
}

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

}  // namespace hostkit
