#include <algorithm>

#include "core/operator.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/standard_functions.h"
#include "refhost/syntax/parser.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

using FunctionKind = StandardFunction::Kind;

// The highest number of code units that the argument can have.
int maxStringLength(const ASTNode& text) {
  if (const Literal* const literal = literalOf(text)) {
    return static_cast<int>(literal->value.text.size());
  }
  const auto& expr = static_cast<const Expr&>(text);
  if (expr.kind == ExprKind::Call) {
    const auto& call = static_cast<const Call&>(*expr.leaf(0));
    const bool passesOn =
        call.op() != nullptr &&
        (call.traits()->chooses() || call.traits()->result == OperatorTraits::Result::Passed);
    int longest = 0;
    for (int i = 0; passesOn && i < call.leaf(1)->leavesCount(); ++i) {
      const ASTNode& value = *call.leaf(1)->leaf(i);
      if (isText(typeOf(value))) longest = std::max(longest, maxStringLength(value));
    }
    if (passesOn) return longest;
  }
  return expr.dataType != nullptr ? stringLength(*expr.dataType) : StringType::kDefaultLength;
}

bool containsCall(const ASTNode& whole) {
  return anyNode(whole, [](const ASTNode& node) { return kindOf(node) == NodeKind::Invocation; });
}

}  // namespace

vel::SymbolDataType* StandardCalls::callStandard(Call& call) {
  const StandardFunction& function = *call.standard();
  const ASTNode* const list = call.leaf(1);
  if (list->type() != vel::ASTType::ParameterList) {
    say(*list, message::kNotAValue, TreeBuilder::source(*list));
    return nullptr;
  }
  parts_.calls.takeEnabling(call, nullptr);
  const auto positionOf = [&](std::string_view formal) { return function.position(formal); };
  if (!parts_.calls.orderArguments(call, positionOf)) return nullptr;
  const int count = list->leavesCount();
  if (count < function.inputs()) {
    say(call, message::kTooFewArguments, function.name);
    return nullptr;
  }
  if (count > function.inputs() && !function.extensible) {
    say(*list->leaf(function.inputs()), message::kTooManyArguments, function.name);
    return nullptr;
  }
  if (function.kind == FunctionKind::Clock)
    return services_.symbols.elementary(BasicDataType::Time);
  if (function.kind == FunctionKind::Bound) return callBound(call);
  if (function.kind == FunctionKind::IsBound) return callIsBound(*call.leaf(1));
  // A call becomes a chain of binary operators, one level deeper for each input.
  if (count > kMaxNesting - nestedInputs_) {
    say(call, message::kNestingTooDeep, std::to_string(kMaxNesting));
    return nullptr;
  }
  nestedInputs_ += count;
  const bool text =
      function.kind != FunctionKind::Operation && function.kind != FunctionKind::Comparison;
  Type* const type = text ? callStringFunction(call) : callOperation(call);
  nestedInputs_ -= count;
  return type;
}

// A constant if the array has fixed bounds and the dimension is constant.
vel::SymbolDataType* StandardCalls::callBound(Call& call) {
  ASTNode& list = *call.leaf(1);
  const Expr& array = parts_.expressions.analyseArray(list, 0);
  const Expr& dimension = parts_.expressions.analyseLeaf(list, 1);
  if (array.dataType == nullptr || dimension.dataType == nullptr) return nullptr;
  const auto* const fixed = dynamic_cast<const ArrayType*>(array.dataType);
  const OpenArrayType* const open = asOpenArray(array.dataType);
  if (fixed == nullptr && open == nullptr) {
    say(array, message::kNoElements, TreeBuilder::source(array), displayName(array.dataType));
    return nullptr;
  }
  if (!isInteger(typeOf(dimension))) {
    say(dimension, message::kSubscriptType, describe(dimension));
    return nullptr;
  }
  const Integer count =
      fixed != nullptr ? static_cast<int>(fixed->bounds.size()) : open->dimensions;
  const auto number = constantInteger(dimension);
  if (number && (*number < 1 || *number > count)) {
    say(dimension, message::kSubscriptRange, TreeBuilder::source(dimension), "1", textOf(count));
    return nullptr;
  }
  Type* const result = services_.symbols.elementary(BasicDataType::DInt);
  for (Integer i = 1; fixed != nullptr && i <= count; ++i) {
    const Bounds& bounds = fixed->bounds[static_cast<std::size_t>(i - 1)];
    const bool lower = std::string_view(call.standard()->cName) == "low";
    const Integer bound = lower ? bounds.low : bounds.high;
    if (number && *number != i) continue;
    if (!fits(bound, BasicDataType::DInt)) {
      say(array, message::kConstantTooLarge, textOf(bound), displayName(result));
      return nullptr;
    }
    if (!number) continue;
    call.constant =
        tree_.make<TypedConstant>(static_cast<std::uint64_t>(bound), BasicDataType::DInt);
  }
  return result;
}

vel::SymbolDataType* StandardCalls::callIsBound(ASTNode& list) {
  const Expr& reference = parts_.expressions.analyseLeaf(list, 0);
  if (reference.dataType == nullptr) return nullptr;
  if (referenceNamed(reference) != nullptr)
    return services_.symbols.elementary(BasicDataType::Bool);
  say(reference, message::kNotAReference, TreeBuilder::source(reference));
  return nullptr;
}

// Replaces the call by an expression of operators, which takes over the arguments as its leaves.
vel::SymbolDataType* StandardCalls::callOperation(Call& call) {
  const StandardFunction& function = *call.standard();
  const ASTNode& list = *call.leaf(1);
  const int count = list.leavesCount();
  const auto join = [&](ExprKind op, ASTNode* left, ASTNode* right) {
    Expr* const expr = tree_.makeBinary(op, left, right);
    TreeBuilder::setSpan(*expr, call.pos(), TreeBuilder::source(call));
    return expr;
  };
  auto* whole = static_cast<Expr*>(list.leaf(0));
  for (int i = 1; i < count; ++i) {
    if (function.kind == FunctionKind::Operation) {
      whole = join(function.operation, whole, list.leaf(i));
      continue;
    }
    // GT(a, b, c) becomes a > b AND b > c, which evaluates b twice.
    if (i + 1 < count && containsCall(*list.leaf(i))) {
      say(*list.leaf(i), message::kNotSupported, "Calls between the inputs of a comparison are");
      return nullptr;
    }
    Expr* const pair = join(function.operation, list.leaf(i - 1), list.leaf(i));
    whole = i == 1 ? pair : join(ExprKind::And, whole, pair);
  }
  call.operation = whole;
  parts_.expressions.analyse(*whole);
  return whole->dataType;
}

vel::SymbolDataType* StandardCalls::callStringFunction(Call& call) {
  const StandardFunction& function = *call.standard();
  ASTNode& list = *call.leaf(1);
  const std::size_t first = messages_.count();
  BasicDataType kind = BasicDataType::None;
  int length = 0;
  bool known = true;
  for (int i = 0; i < list.leavesCount(); ++i) {
    const Expr& input = parts_.expressions.analyseLeaf(list, i);
    const BasicDataType type = typeOf(input);
    known = known && input.dataType != nullptr;
    if (!known || hasErrorFrom(first)) continue;
    if (function.takesText(i) ? !isText(type) : !isInteger(type)) {
      const BasicDataType text = kind != BasicDataType::None ? kind : BasicDataType::String;
      say(input, message::kCannotConvert, describe(input),
          elementaryType(function.takesText(i) ? text : BasicDataType::Int)->name);
    } else if (function.takesText(i)) {
      if (kind != BasicDataType::None && type != kind) {
        say(input, message::kOperandTypes, function.name,
            displayName(services_.symbols.elementary(kind)),
            displayName(services_.symbols.elementary(type)));
      }
      kind = type;
      if (i == 0 || function.kind == FunctionKind::Join) length += maxStringLength(input);
    }
  }
  if (!known || hasErrorFrom(first)) return nullptr;
  if (function.kind == FunctionKind::Count) return services_.symbols.elementary(BasicDataType::Int);
  Type* const result =
      services_.symbols.stringType(kind, std::clamp(length, 1, StringType::kMaxLength));
  parts_.sizes.countTemporary(result);
  return result;
}

}  // namespace refhost
