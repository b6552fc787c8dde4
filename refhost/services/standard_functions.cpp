#include "refhost/services/standard_functions.h"

#include <algorithm>
#include <cstddef>

#include "hostkit/folding.h"
#include "hostkit/operator_traits.h"
#include "refhost/spelling.h"

namespace refhost {
namespace {

using FunctionKind = StandardFunction::Kind;

constexpr auto kNone = ExprKind::Literal;

// clang-format off
constexpr StandardFunction kFunctions[] = {
    {"ADD", FunctionKind::Operation,  ExprKind::Add,          {"IN1", "IN2"}, true},
    {"SUB", FunctionKind::Operation,  ExprKind::Subtract,     {"IN1", "IN2"}, false},
    {"MUL", FunctionKind::Operation,  ExprKind::Multiply,     {"IN1", "IN2"}, true},
    {"DIV", FunctionKind::Operation,  ExprKind::Divide,       {"IN1", "IN2"}, false},
    {"MOD", FunctionKind::Operation,  ExprKind::Modulo,       {"IN1", "IN2"}, false},
    {"AND", FunctionKind::Operation,  ExprKind::And,          {"IN1", "IN2"}, true},
    {"OR",  FunctionKind::Operation,  ExprKind::Or,           {"IN1", "IN2"}, true},
    {"XOR", FunctionKind::Operation,  ExprKind::Xor,          {"IN1", "IN2"}, true},
    {"GT",  FunctionKind::Comparison, ExprKind::Greater,      {"IN1", "IN2"}, true},
    {"GE",  FunctionKind::Comparison, ExprKind::GreaterEqual, {"IN1", "IN2"}, true},
    {"EQ",  FunctionKind::Comparison, ExprKind::Equal,        {"IN1", "IN2"}, true},
    {"LE",  FunctionKind::Comparison, ExprKind::LessEqual,    {"IN1", "IN2"}, true},
    {"LT",  FunctionKind::Comparison, ExprKind::Less,         {"IN1", "IN2"}, true},
    {"NE",  FunctionKind::Comparison, ExprKind::NotEqual,     {"IN1", "IN2"}, false},

    {"MUL_TIME",  FunctionKind::Operation, ExprKind::Multiply, {"IN1", "IN2"}, false},
    {"MUL_LTIME", FunctionKind::Operation, ExprKind::Multiply, {"IN1", "IN2"}, false},
    {"MULTIME",   FunctionKind::Operation, ExprKind::Multiply, {"IN1", "IN2"}, false},
    {"DIV_TIME",  FunctionKind::Operation, ExprKind::Divide,   {"IN1", "IN2"}, false},
    {"DIV_LTIME", FunctionKind::Operation, ExprKind::Divide,   {"IN1", "IN2"}, false},
    {"DIVTIME",   FunctionKind::Operation, ExprKind::Divide,   {"IN1", "IN2"}, false},
    {"TIME",      FunctionKind::Clock,     kNone,         {},             false},
    {"__ISVALIDREF", FunctionKind::IsBound,  kNone,           {"IN"},         false},
    {"LOWER_BOUND",  FunctionKind::Bound,    kNone,           {"ARR", "DIM"}, false, "low"},
    {"UPPER_BOUND",  FunctionKind::Bound,    kNone,           {"ARR", "DIM"}, false, "high"},

    {"LEN",     FunctionKind::Count, kNone, {"IN"},                   false, "length"},
    {"LEFT",    FunctionKind::Part,  kNone, {"IN", "L"},              false, "left"},
    {"RIGHT",   FunctionKind::Part,  kNone, {"IN", "L"},              false, "right"},
    {"MID",     FunctionKind::Part,  kNone, {"IN", "L", "P"},         false, "mid"},
    {"CONCAT",  FunctionKind::Join,  kNone, {"IN1", "IN2"},           true,  "concat"},
    {"INSERT",  FunctionKind::Join,  kNone, {"IN1", "IN2", "P"},      false, "insert"},
    {"DELETE",  FunctionKind::Part,  kNone, {"IN", "L", "P"},         false, "delete"},
    {"REPLACE", FunctionKind::Join,  kNone, {"IN1", "IN2", "L", "P"}, false, "replace"},
    {"FIND",    FunctionKind::Count, kNone, {"IN1", "IN2"},           false, "find"},
};
// clang-format on

}  // namespace

int StandardFunction::inputs() const {
  return static_cast<int>(std::find(formals.begin(), formals.end(), std::string_view()) -
                          formals.begin());
}

int StandardFunction::position(std::string_view formal) const {
  for (int i = 0; i < inputs(); ++i) {
    if (equalIgnoringCase(formals[static_cast<std::size_t>(i)], formal)) return i;
  }
  const int number = extensible ? numberedInput(formal, "IN") : -1;
  return number > 0 ? number - 1 : -1;
}

bool StandardFunction::takesText(int index) const {
  return index >= inputs() || formals[static_cast<std::size_t>(index)].substr(0, 2) == "IN";
}

void forEachStandardFunction(const std::function<void(const StandardFunction&)>& visit) {
  for (const StandardFunction& function : kFunctions) visit(function);
}

void offerStandardFunctions(Spelling& spelling,
                            const std::function<bool(const StandardFunction&)>& accepts) {
  for (const StandardFunction& function : kFunctions) {
    if (accepts(function)) spelling.offer(function.name);
  }
}

const StandardFunction* standardFunction(std::string_view name) {
  for (const StandardFunction& function : kFunctions) {
    if (equalIgnoringCase(function.name, name)) return &function;
  }
  return nullptr;
}

}  // namespace refhost
