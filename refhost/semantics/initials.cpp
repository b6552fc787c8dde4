#include <algorithm>

#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

// No array has so many elements; the sum of two such numbers is a LINT.
constexpr std::int64_t kMostElements = std::int64_t{1} << 61;

}  // namespace

void Initials::analyseInitial(const Type* to, ASTNode& parent, int index) {
  auto& given = static_cast<Expr&>(*parent.leaf(index));
  if (given.kind == ExprKind::ArrayValue || given.kind == ExprKind::Repeat) {
    analyseArrayValue(to, given);
    return;
  }
  if (given.kind == ExprKind::StructValue) {
    analyseStructValue(to, given);
    return;
  }
  const Expr& value = parts_.expressions.analyseLeaf(parent, index, to);
  if (to != nullptr && to->dataType() == BasicDataType::FunctionBlock) {
    say(value, message::kInitialParts, TreeBuilder::source(value), displayName(to));
    return;
  }
  parts_.assignments.check(to, value.dataType, value);
}

void Initials::analyseDeclared(const Type* to, VarDecl& declaration) {
  const ASTNode& spec = *declaration.leaf(VarDecl::kType);
  if (!isReferenceSpec(spec)) {
    if (declaration.binds) {
      const ASTNode& name = *declaration.leaf(VarDecl::kFirstName);
      say(name, message::kNotAReference, TreeBuilder::source(name));
    }
    analyseInitial(to, declaration, VarDecl::kInitial);
    return;
  }
  const ASTNode& name = *declaration.leaf(VarDecl::kFirstName);
  analyseBound(TreeBuilder::source(name), to, declaration, VarDecl::kInitial);
}

void Initials::analyseBound(std::string_view name, const Type* to, ASTNode& parent, int index) {
  auto& given = static_cast<Expr&>(*parent.leaf(index));
  if (formOf(given.kind) == ExprForm::Parts) {
    if (to != nullptr)
      say(given, message::kNotBindable, name, TreeBuilder::source(given), displayName(to));
  } else {
    parts_.assignments.checkBound(name, to, parts_.expressions.analyseLeaf(parent, index));
  }
}

void Initials::analyseArrayValue(const Type* to, Expr& value) {
  const auto* const array = dynamic_cast<const ArrayType*>(to);
  if (array == nullptr) {
    if (to != nullptr) {
      say(value, message::kInitialParts, TreeBuilder::source(value), displayName(to));
    }
    return;
  }
  analyseValues(ArrayValues(*array, value), value);
}

void Initials::analyseValues(const ArrayValues& values, Expr& list) {
  const std::int64_t count =
      list.kind == ExprKind::Repeat ? countRepeated(values, list) : countItems(values, list, 0);
  const std::int64_t most = values.capacity();
  if (count <= most) return;
  say(list, message::kTooManyValues, std::to_string(most), values.rows ? "rows" : "elements",
      values.dimension == 0 ? "array" : "row");
}

// Analyses the leaves of `list` from `first` on and returns the number of rows or elements that
// they initialise; kMostElements for every larger number.
std::int64_t Initials::countItems(const ArrayValues& values, Expr& list, int first) {
  std::int64_t count = 0;
  for (int i = first; i < list.leavesCount(); ++i) {
    repeatByName(list, i);
    auto& item = static_cast<Expr&>(*list.leaf(i));
    if (item.kind == ExprKind::Repeat) {
      count += countRepeated(values, item);
    } else if (!values.rows) {
      analyseInitial(values.array.element, list, i);
      ++count;
    } else if (item.kind == ExprKind::ArrayValue) {
      analyseValues(values.row(item), item);
      ++count;
    } else {
      const ArrayType row = values.rowType();
      say(item, message::kInitialParts, TreeBuilder::source(item), displayName(&row));
      return 0;
    }
    if (count >= kMostElements) return kMostElements;
  }
  return count;
}

std::int64_t Initials::countRepeated(const ArrayValues& values, Expr& repeat) {
  const auto times = parts_.expressions.requireConstant(repeat, 0);
  const std::int64_t each = repeat.leavesCount() > 1 ? countItems(values, repeat, 1) : 1;
  if (!times) return 0;
  if (*times < 0) {
    const ASTNode& number = *repeat.leaf(0);
    say(number, message::kRepetitions, TreeBuilder::source(number), textOf(*times));
    return 0;
  }
  const Integer count = *times * each;
  return static_cast<std::int64_t>(std::min<Integer>(count, kMostElements));
}

// `N(0)` is parsed as a call. If N is a constant, it becomes a repetition.
void Initials::repeatByName(Expr& list, int index) {
  auto& item = static_cast<Expr&>(*list.leaf(index));
  if (item.kind != ExprKind::Call) return;
  const ASTNode& call = *item.leaf(0);
  const std::string_view name = TreeBuilder::source(*call.leaf(0));
  const VarSymbol* const variable = parts_.names.variableNamed(name);
  if (variable == nullptr || !variable->constant) return;
  Expr* const count = tree_.make<Expr>(ExprKind::Variable);
  TreeBuilder::setSpan(*count, call.leaf(0)->pos(), name);
  std::vector<ASTNode*> leaves{count};
  for (int i = 0; i < call.leaf(1)->leavesCount(); ++i) leaves.push_back(call.leaf(1)->leaf(i));
  Expr* const repeat = tree_.make<Expr>(ExprKind::Repeat);
  TreeBuilder::setSpan(*repeat, item.pos(), TreeBuilder::source(item));
  tree_.setLeaves(*repeat, leaves);
  TreeBuilder::setLeaf(list, index, repeat);
}

void Initials::analyseStructValue(const Type* to, Expr& value) {
  if (to == nullptr) return;
  const bool hasMembers = isComposite(to) && to->dataType() != BasicDataType::Derived;
  if (!hasMembers) {
    say(value, message::kInitialParts, TreeBuilder::source(value), displayName(to));
    return;
  }
  FoldedMap<const ASTNode*> given;
  for (int i = 0; i < value.leavesCount(); ++i) {
    ASTNode& field = *value.leaf(i);
    const char* const name = static_cast<const Text&>(*field.leaf(0)).text();
    const VarSymbol* const member = memberOf(to, name);
    if (member == nullptr || member->role == Role::InOut || member->role == Role::Temp) {
      const SourceRange where = rangeOf(*field.leaf(0));
      Remarks* const said =
          sayUnknownPart(where, message::kUnknownMember, to, name, displayName(to), name);
      if (said != nullptr) parts_.suggestions.addMember(*said, where, name, to);
      continue;
    }
    const auto [first, isNew] = given.emplace(name, &field);
    if (!isNew) sayTwice(field, name, *first->second);
    if (member->reference) {
      analyseBound(member->name(), member->dataType(), field, 1);
    } else {
      analyseInitial(member->dataType(), field, 1);
    }
  }
}

}  // namespace refhost
