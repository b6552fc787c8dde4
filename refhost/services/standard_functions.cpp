#include "refhost/services/standard_functions.h"

#include <algorithm>
#include <cstddef>

#include "hostkit/folding.h"
#include "hostkit/operator_traits.h"
#include "refhost/spelling.h"

namespace refhost {
namespace {

using Kind = StandardFunction::Kind;

constexpr auto kNone = ExprKind::Literal;

// clang-format off
constexpr StandardFunction kFunctions[] = {
    {"ADD", Kind::Operation,  ExprKind::Add,          {"IN1", "IN2"}, true},
    {"SUB", Kind::Operation,  ExprKind::Subtract,     {"IN1", "IN2"}, false},
    {"MUL", Kind::Operation,  ExprKind::Multiply,     {"IN1", "IN2"}, true},
    {"DIV", Kind::Operation,  ExprKind::Divide,       {"IN1", "IN2"}, false},
    {"MOD", Kind::Operation,  ExprKind::Modulo,       {"IN1", "IN2"}, false},
    {"AND", Kind::Operation,  ExprKind::And,          {"IN1", "IN2"}, true},
    {"OR",  Kind::Operation,  ExprKind::Or,           {"IN1", "IN2"}, true},
    {"XOR", Kind::Operation,  ExprKind::Xor,          {"IN1", "IN2"}, true},
    {"GT",  Kind::Comparison, ExprKind::Greater,      {"IN1", "IN2"}, true},
    {"GE",  Kind::Comparison, ExprKind::GreaterEqual, {"IN1", "IN2"}, true},
    {"EQ",  Kind::Comparison, ExprKind::Equal,        {"IN1", "IN2"}, true},
    {"LE",  Kind::Comparison, ExprKind::LessEqual,    {"IN1", "IN2"}, true},
    {"LT",  Kind::Comparison, ExprKind::Less,         {"IN1", "IN2"}, true},
    {"NE",  Kind::Comparison, ExprKind::NotEqual,     {"IN1", "IN2"}, false},

    {"MUL_TIME",  Kind::Operation, ExprKind::Multiply, {"IN1", "IN2"}, false},
    {"MUL_LTIME", Kind::Operation, ExprKind::Multiply, {"IN1", "IN2"}, false},
    {"MULTIME",   Kind::Operation, ExprKind::Multiply, {"IN1", "IN2"}, false},
    {"DIV_TIME",  Kind::Operation, ExprKind::Divide,   {"IN1", "IN2"}, false},
    {"DIV_LTIME", Kind::Operation, ExprKind::Divide,   {"IN1", "IN2"}, false},
    {"DIVTIME",   Kind::Operation, ExprKind::Divide,   {"IN1", "IN2"}, false},
    {"TIME",      Kind::Clock,     kNone,         {},             false},
    {"__ISVALIDREF", Kind::IsBound,  kNone,           {"IN"},         false},
    {"LOWER_BOUND",  Kind::Bound,    kNone,           {"ARR", "DIM"}, false, "low"},
    {"UPPER_BOUND",  Kind::Bound,    kNone,           {"ARR", "DIM"}, false, "high"},

    {"LEN",     Kind::Count, kNone, {"IN"},                   false, "length"},
    {"LEFT",    Kind::Part,  kNone, {"IN", "L"},              false, "left"},
    {"RIGHT",   Kind::Part,  kNone, {"IN", "L"},              false, "right"},
    {"MID",     Kind::Part,  kNone, {"IN", "L", "P"},         false, "mid"},
    {"CONCAT",  Kind::Join,  kNone, {"IN1", "IN2"},           true,  "concat"},
    {"INSERT",  Kind::Join,  kNone, {"IN1", "IN2", "P"},      false, "insert"},
    {"DELETE",  Kind::Part,  kNone, {"IN", "L", "P"},         false, "delete"},
    {"REPLACE", Kind::Join,  kNone, {"IN1", "IN2", "L", "P"}, false, "replace"},
    {"FIND",    Kind::Count, kNone, {"IN1", "IN2"},           false, "find"},
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
