#include "refhost/services/test_functions.h"

#include <algorithm>
#include <iterator>

#include "hostkit/folding.h"
#include "refhost/kit.h"
#include "refhost/spelling.h"

namespace refhost {
namespace {

using Kind = TestFunction::Kind;

constexpr auto kNone = ExprKind::Literal;

constexpr TestFunction kFunctions[] = {
    {"ASSERT_EQ", Kind::Comparison, ExprKind::Equal, true},
    {"ASSERT_NEQ", Kind::Comparison, ExprKind::NotEqual, true},
    {"ASSERT_GT", Kind::Comparison, ExprKind::Greater, true},
    {"ASSERT_LT", Kind::Comparison, ExprKind::Less, true},
    {"ASSERT_GE", Kind::Comparison, ExprKind::GreaterEqual, true},
    {"ASSERT_LE", Kind::Comparison, ExprKind::LessEqual, true},
    {"ASSERT_TRUE", Kind::Condition, kNone, true},
    {"ASSERT_FALSE", Kind::Condition, kNone, false},
    {"ASSERT_NEAR", Kind::Near, ExprKind::Less, true},
    {"ADVANCE_TIME", Kind::Advance, kNone, true},
};

}  // namespace

const TestFunction* testFunction(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(kFunctions), std::end(kFunctions),
                   [name](const TestFunction& row) { return equalIgnoringCase(row.name, name); });
  return found != std::end(kFunctions) ? found : nullptr;
}

void offerTestFunctions(Spelling& spelling) {
  for (const TestFunction& function : kFunctions) spelling.offer(function.name);
}

bool isMockFunction(std::string_view name) {
  constexpr std::string_view kWords[] = {"MOCK", "STUB", "FAKE"};
  return std::any_of(std::begin(kWords), std::end(kWords), [name](std::string_view word) {
    return equalIgnoringCase(name.substr(0, word.size()), word) &&
           (name.size() == word.size() || name[word.size()] == '_');
  });
}

}  // namespace refhost
