#include "refhost/emit/call_writer.h"

#include <fmt/format.h>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/literal_text.h"
#include "refhost/emit/initial_writer.h"
#include "refhost/operator_calls.h"

namespace refhost {

using vel::TreeBuilder;

namespace {

// A macro that chooses among its arguments has their common type in C. For a ULINT and a LINT that
// is not the type of the call, in which the program goes on to compare and compute.
bool needsCastToResult(const Call& call) {
  const BasicDataType result = call.basicType();
  if (!isInteger(result) || !call.traits()->chooses() ||
      call.traits()->has(OperatorTraits::kCastsOperands)) {
    return false;
  }
  const vel::ASTNode& list = *call.leaf(1);
  for (int i = 0; i < list.leavesCount(); ++i) {
    const ElementaryType* const row = elementaryType(typeOf(*list.leaf(i)));
    if (row != nullptr && row->type != result && isNumber(row->type) && row->size >= 4) return true;
  }
  return false;
}

// True if the call gives a literal of REAL as it is, which is a double in C unless it is rounded.
bool passesLiteral(const Call& call) {
  const Call* inner = &call;
  while (inner->traits() != nullptr && inner->traits()->result == OperatorTraits::Result::Passed) {
    const vel::ASTNode& operand = *inner->leaf(1)->leaf(0);
    const Literal* const literal = literalOf(operand);
    if (literal != nullptr) return isSingle(literal->value.real);
    if (kindOf(operand) != NodeKind::Invocation) return false;
    inner = static_cast<const Call*>(&operand);
  }
  return false;
}

using Uses = ExpressionWriter::Uses;

Uses usesOfOperands(const Call& call) {
  const OperatorTraits& traits = *call.traits();
  const bool repeated = traits.has(OperatorTraits::kRepeatsReals)
                            ? isFloat(typeOf(*call.leaf(1)->leaf(0)))
                            : traits.has(OperatorTraits::kRepeatsOperands);
  if (repeated) return Uses::Repeated;
  return traits.chooses() ? Uses::AtMostOnce : Uses::Once;
}

}  // namespace

std::vector<const vel::ASTNode*> parametersOf(const Call& call) {
  std::vector<const vel::ASTNode*> parameters;
  const vel::ASTNode* const list = call.parameters();
  for (int i = 0; list != nullptr && i < list->leavesCount(); ++i)
    parameters.push_back(list->leaf(i));
  return parameters;
}

const Binding* bindingOf(const std::vector<Binding>& bindings, const VarSymbol* parameter) {
  for (const Binding& binding : bindings) {
    if (binding.parameter == parameter) return &binding;
  }
  return nullptr;
}
const Expr* valueOf(const std::vector<Binding>& bindings, const VarSymbol* parameter) {
  const Binding* const binding = bindingOf(bindings, parameter);
  return binding != nullptr ? binding->value : nullptr;
}

std::string CallWriter::plainText(const Call& call) {
  if (call.op() != nullptr) return operatorCallText(call);
  if (call.standard() != nullptr) return standardCallText(call);
  if (call.givesAddress) {
    const auto& operand = static_cast<const Expr&>(*call.leaf(1)->leaf(0));
    return expressions_.inOrder(PlaceWriter::partsOf(operand), Uses::Once, [&] {
      return fmt::format("({})({})", typeText(file_.names, call.dataType),
                         places_.pointerTo(operand, operand.dataType));
    });
  }
  return call.function() != nullptr ? functionCallText(call) : std::string();
}

void CallWriter::record(const Call& call, const UnitSymbol& callee) {
  file_.services.addCall(file_.services.calls.currentUnit, callee.name(), call.pos());
}

std::string CallWriter::typedText(const Call& call) {
  std::string text = plainText(call);
  if (call.op() == nullptr) return text;
  if (call.traits()->has(OperatorTraits::kGivesSize)) return "(u32)" + text;
  if (needsCastToResult(call)) {
    return fmt::format("({})({})", elementaryType(call.basicType())->cType, text);
  }
  if (call.basicType() != BasicDataType::Real) return text;
  // The runtime's functions compute in LREAL, and so do macros with literals.
  if (file_.services.operators->isFCOperator(call.op()->name)) return "(f32)" + text;
  return call.traits()->chooses() || passesLiteral(call) ? "(f32)(" + text + ")" : text;
}

std::string CallWriter::operatorCallText(const Call& call) {
  const std::size_t before = file_.messages.count();
  const auto enter = [&](const auto& operation) {
    return callGuarded(*call.op(), call, file_.messages, operation);
  };
  if (file_.usedOperators.insert(call.op()).second) {
    file_.staticTexts.push_back(enter([&] { return call.op()->staticCode(&expressions_); }));
  }
  file_.services.calls.currentLocation = call.pos();
  if (call.traits()->family == OperatorFamily::BitOfParameter) {
    body_.companions.insert(static_cast<const Expr&>(*call.leaf(1)->leaf(0)).symbol);
  }
  const auto generate = [&] {
    return enter([&] { return call.op()->generate(&expressions_, const_cast<Call*>(&call)); });
  };
  const Uses uses = usesOfOperands(call);
  const bool ordered = (uses == Uses::Repeated && hasCompoundOperand(call)) ||
                       (file_.effects.any() && call.traits()->givesValue());
  const auto operands = [&] {
    const auto* const place = call.traits()->has(OperatorTraits::kGivesAddress)
                                  ? static_cast<const Expr*>(call.leaf(1)->leaf(0))
                                  : nullptr;
    return place != nullptr ? PlaceWriter::partsOf(*place) : parametersOf(call);
  };
  std::string text = ordered ? expressions_.inOrder(operands(), uses, generate) : generate();
  if (text.empty()) {
    if (file_.messages.count() > before) return text;  // the operator's failure has been reported
    file_.messages.report(rangeOf(call), message::kNothingGenerated,
                          {TreeBuilder::source(*call.leaf(0))});
  } else if (call.givesAddress && call.basicType() != BasicDataType::Pointer) {
    // The address of a device, which has no type.
    text.insert(0, "(u32)(uintptr_t)");
  }
  return text;
}

std::string CallWriter::companionOf(const Expr* value) {
  const bool variable = value != nullptr && value->dataType != nullptr &&
                        (value->kind == ExprKind::Variable || value->kind == ExprKind::Member);
  if (!variable || !places_.of(*value).hasAddress()) return "(vel_bit_param){0}";
  return fmt::format("(vel_bit_param){{{}, {}}}", places_.pointerTo(*value, value->dataType),
                     bitCount(*value->dataType));
}

std::string CallWriter::storeOutput(const Binding& output, std::string value) {
  const vel::SymbolDataType* const type = output.parameter->dataType();
  if (output.named != nullptr && output.named->negated) {
    value = valueType(type) == BasicDataType::Bool
                ? "!" + value
                : fmt::format("({})~{}", cType(valueType(type)), value);
  }
  return places_.store(*output.value, value, valueType(type));
}

std::string CallWriter::argumentText(const Expr& value, const vel::SymbolDataType* type) {
  const BasicDataType to = valueType(type);
  std::string text;
  if (to == BasicDataType::LTime) {
    expressions_.converted(value, to, text);
    return text;
  }
  expressions_.append(value, text);
  if (to == BasicDataType::Pointer) {
    const char* const number = isInteger(typeOf(value)) ? "(uintptr_t)" : "";
    return fmt::format("({}){}{}", typeText(file_.names, type), number, enclosed(text));
  }
  const BasicDataType from = typeOf(value);
  if (from == BasicDataType::Pointer) return "(uintptr_t)" + enclosed(text);
  // What is computed of constants is a constant in C.
  const bool computed = value.kind == ExprKind::Call || value.kind >= ExprKind::Negate;
  const bool narrows = computed && isInteger(to) && isInteger(from) && !widens(from, to);
  return narrows ? fmt::format("({}){}", cType(to), enclosed(text)) : text;
}

std::string CallWriter::operandText(const Call& call) {
  std::string value = typedText(call);
  if (call.enable == nullptr && call.enabled == nullptr) return value;
  const std::string enable =
      call.enable != nullptr ? expressions_.expressionText(call.enable->leaf(1)) : std::string("1");
  const std::string zero = zeroText(file_.names, call.dataType);
  if (call.enabled == nullptr) return fmt::format("(({}) ? ({}) : {})", enable, value, zero);
  const std::string flag = body_.newName();
  const std::string choice = fmt::format("{} ? ({}) : {}", flag, value, zero);
  // A text may be printed into a buffer that ends with the statement expression.
  const bool text = isTextType(call.dataType);
  const std::string result = text ? body_.temporary(call.dataType) : body_.newName();
  const std::string kept =
      text ? storeText(file_.names, call.dataType, {Place::Kind::Object, result}, choice,
                       valueType(call.dataType))
           : fmt::format("__auto_type {} = {}", result, choice);
  return fmt::format("({{ u8 {} = {}; {}; {}; {}; }})", flag, enable, kept,
                     storeEnabled(call, flag), result);
}

std::string CallWriter::storeEnabled(const Call& call, const std::string& flag) {
  const auto& target = static_cast<const Expr&>(*call.enabled->leaf(1));
  return places_.store(target, call.enabled->negated ? "!" + flag : flag, BasicDataType::Bool);
}

// The outputs are stored behind the call in the same expression, before the result is used.
std::string CallWriter::functionCallText(const Call& call) {
  const auto& function = *call.function();
  record(call, function);
  const std::vector<Binding> bindings = bindArguments(call, function);
  std::vector<const vel::ASTNode*> operands;
  std::vector<const vel::ASTNode*> places;
  for (const Binding& binding : bindings) {
    operands.push_back(binding.value);
    if (binding.parameter->role != Role::Input || binding.parameter->indirect) {
      places.push_back(binding.value);
    }
  }
  // The call may change what the places of its outputs depend on.
  const auto write = [&] {
    std::string held;
    for (const Binding& binding : bindings) {
      const bool output = binding.parameter->role == Role::Output;
      if (!output || !PlaceWriter::canMove(*binding.value) || places_.isHeld(*binding.value)) {
        continue;
      }
      held += places_.hold(*binding.value) + ' ';
    }
    std::string text = functionCallText(call, bindings);
    return held.empty() ? text : "({ " + held + text + "; })";
  };
  std::string text = expressions_.inOrder(operands, ExpressionWriter::Uses::Once, write, places);
  for (const vel::ASTNode* const place : places) places_.release(static_cast<const Expr&>(*place));
  return text;
}

std::string CallWriter::functionCallText(const Call& call, const std::vector<Binding>& bindings) {
  const auto& function = *call.function();
  std::string arguments;
  std::string stores;
  for (int i = 0; i < function.paramsCount(); ++i) {
    const auto* const parameter = static_cast<const VarSymbol*>(function.param(i));
    const vel::SymbolDataType* const type = parameter->dataType();
    const bool text = type != nullptr && isText(type->dataType());
    const Expr* const given = valueOf(bindings, parameter);
    const Expr* const value = given != nullptr                ? given
                              : parameter->initial != nullptr ? parameter->initial
                                                              : parameter->typeInitial;
    if (!arguments.empty()) arguments += ", ";
    if (parameter->role == Role::Output) {
      const std::string output = body_.temporary(type);
      arguments += text ? output : "&" + output;
      if (given != nullptr) stores += ", " + storeOutput(*bindingOf(bindings, parameter), output);
    } else if (parameter->indirect) {
      // The analysis reports calls that omit such a parameter, but for references.
      arguments += value != nullptr ? places_.passed(*value, *parameter) : "NULL";
    } else if (value != nullptr && value->kind < ExprKind::ArrayValue) {
      arguments += argumentText(*value, type);
    } else if (isComposite(type) && file_.startValues.differFromZero(*parameter)) {
      arguments += InitialWriter(file_, body_, expressions_).text(*parameter);
    } else if (isComposite(type) || text) {
      arguments += zeroText(file_.names, type);
    } else {
      appendInteger(implicitInitial(type), arguments);
    }
    if (parameter->isBitParameter() && parameter->role == Role::Input) {
      arguments += ", " + companionOf(given);
    }
  }
  const vel::SymbolDataType* const resultType =
      function.result != nullptr ? function.result->dataType() : nullptr;
  const bool textResult = resultType != nullptr && isText(resultType->dataType());
  std::string result;
  if (textResult) {
    if (!arguments.empty()) arguments += ", ";
    result = body_.temporary(resultType);
    arguments += result;
  }
  std::string text = fmt::format("{}({})", file_.names.of(function).name, arguments);
  if (stores.empty()) return text;
  if (resultType == nullptr) return fmt::format("{}{}", text, stores);
  if (textResult) return fmt::format("({}{}, {})", text, stores, result);
  result = body_.temporary(resultType);
  return fmt::format("({} = {}{}, {})", result, text, stores, result);
}

}  // namespace refhost
