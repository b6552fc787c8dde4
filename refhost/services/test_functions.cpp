#include "refhost/services/test_functions.h"

#include <algorithm>
#include <iterator>

#include "hostkit/folding.h"
#include "refhost/kit.h"
#include "refhost/spelling.h"

namespace refhost {
namespace {

using TestKind = TestFunction::Kind;

constexpr auto kNoOperator = ExprKind::Literal;

constexpr TestFunction kTestFunctions[] = {
    {"ASSERT_EQ", TestKind::Comparison, ExprKind::Equal, true},
    {"ASSERT_NEQ", TestKind::Comparison, ExprKind::NotEqual, true},
    {"ASSERT_GT", TestKind::Comparison, ExprKind::Greater, true},
    {"ASSERT_LT", TestKind::Comparison, ExprKind::Less, true},
    {"ASSERT_GE", TestKind::Comparison, ExprKind::GreaterEqual, true},
    {"ASSERT_LE", TestKind::Comparison, ExprKind::LessEqual, true},
    {"ASSERT_TRUE", TestKind::Condition, kNoOperator, true},
    {"ASSERT_FALSE", TestKind::Condition, kNoOperator, false},
    {"ASSERT_NEAR", TestKind::Near, ExprKind::Less, true},
    {"ADVANCE_TIME", TestKind::Advance, kNoOperator, true},
};

}  // namespace

const TestFunction* testFunction(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(kTestFunctions), std::end(kTestFunctions),
                   [name](const TestFunction& row) { return equalIgnoringCase(row.name, name); });
  return found != std::end(kTestFunctions) ? found : nullptr;
}

void forEachTestFunction(const std::function<void(const TestFunction&)>& visit) {
  for (const TestFunction& function : kTestFunctions) visit(function);
}

void offerTestFunctions(Spelling& spelling) {
  for (const TestFunction& function : kTestFunctions) spelling.offer(function.name);
}

bool isMockFunction(std::string_view name) {
  constexpr std::string_view kWords[] = {"MOCK", "STUB", "FAKE"};
  return std::any_of(std::begin(kWords), std::end(kWords), [name](std::string_view word) {
    return equalIgnoringCase(name.substr(0, word.size()), word) &&
           (name.size() == word.size() || name[word.size()] == '_');
  });
}

}  // namespace refhost
