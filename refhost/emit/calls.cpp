#include <fmt/format.h>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/literal_text.h"
#include "refhost/emit/c_generator.h"
#include "refhost/operator_calls.h"

namespace refhost {
namespace {

// The argument for a parameter; null when the call leaves it out.
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

// C gives what a macro chooses the type in which all its values meet: of a ULINT and a LINT
// that is not the result's, by which the program compares and computes on.
bool meetsElsewhere(const Call& call) {
  const BasicDataType result = call.basicType();
  if (!isInteger(result) || !call.traits->chooses() ||
      call.traits->has(OperatorTraits::kCastsOperands)) {
    return false;
  }
  const vel::ASTNode& list = *call.leaf(1);
  for (int i = 0; i < list.leavesCount(); ++i) {
    const ElementaryType* const row = elementaryType(typeOf(*list.leaf(i)));
    if (row != nullptr && row->type != result && isNumber(row->type) && row->size >= 4) return true;
  }
  return false;
}

// By a subscript or a pointer, which costs time.
bool isLookedFor(const vel::ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return false;
  const Expr::Access access = static_cast<const Expr&>(node).access;
  return access == Expr::Access::Element || access == Expr::Access::Dereference;
}

}  // namespace

using vel::TreeBuilder;

std::string CGenerator::callText(const Call& call) {
  if (call.op != nullptr) return operatorText(call);
  if (call.standard != nullptr) return standardText(call);
  if (call.givesAddress) {
    const auto& operand = static_cast<const Expr&>(*call.leaf(1)->leaf(0));
    return fmt::format("({})({})", typeText(call.dataType), pointerTo(operand, operand.dataType));
  }
  return call.symbol != nullptr ? functionText(call) : std::string();
}

void CGenerator::recordCall(const Call& call, const UnitSymbol& callee) {
  services_.addCall(unit_->name(), callee.name(), call.pos());
}

std::string CGenerator::typedText(const Call& call) {
  std::string text = callText(call);
  if (call.op == nullptr) return text;
  if (call.traits->has(OperatorTraits::kGivesSize)) return "(u32)" + text;
  if (meetsElsewhere(call)) {
    return fmt::format("({})({})", elementaryType(call.basicType())->cType, text);
  }
  if (call.basicType() != BasicDataType::Real) return text;
  // The runtime's functions compute in LREAL, and macros with literals do.
  if (services_.operators->isFCOperator(call.op->name)) return "(f32)" + text;
  return call.traits->chooses() ? "(f32)(" + text + ")" : text;
}

std::string CGenerator::operatorText(const Call& call) {
  const std::size_t before = messages_.size();
  const auto enter = [&](const auto& operation) {
    return entered(*call.op, call.pos(), messages_, operation);
  };
  if (usedOperators_.insert(call.op).second) {
    staticTexts_.push_back(enter([&] { return call.op->staticCode(this); }));
  }
  services_.calls.currentLocation = call.pos();
  if (call.traits->family == OperatorFamily::BitOfParameter) {
    companions_.insert(static_cast<const Expr&>(*call.leaf(1)->leaf(0)).symbol);
  }
  const auto generate = [&] {
    return enter([&] { return call.op->generate(this, const_cast<Call*>(&call)); });
  };
  const bool anyOrder = !effects_.any() || !call.traits->givesValue();
  std::string text = anyOrder ? generate() : inOrder(parametersOf(call), true, generate);
  if (text.empty()) {
    if (messages_.size() > before) return text;  // what failed has been said
    report(messages_, call.pos(), message::kNothingGenerated, {TreeBuilder::source(*call.leaf(0))});
  } else if (call.givesAddress && call.basicType() != BasicDataType::Pointer) {
    // The address of something that has no type.
    text.insert(0, "(u32)(uintptr_t)");
  }
  return text;
}

std::string CGenerator::temporary(const Type* type) {
  std::string name = fmt::format("vel_t{}", ++temporaries_);
  declarations_ += "  " + declaration(type, name) + ";\n";
  return name;
}

std::string CGenerator::pointerTo(const Expr& value, const Type* type) {
  const Place place = placeOf(value);
  const bool text = type != nullptr && isText(type->dataType());
  return text ? place.load() : place.address(typeText(const_cast<Type*>(type)) + "*");
}

std::string CGenerator::companionOf(const Expr* value) {
  const bool variable =
      value != nullptr && value->dataType != nullptr &&
      (value->op() == Expression::Variable || value->access == Expr::Access::Member);
  if (!variable || placeOf(*value).isBit()) return "(vel_bit_param){0}";
  return fmt::format("(vel_bit_param){{{}, {}}}", pointerTo(*value, value->dataType),
                     bitCount(*value->dataType));
}

std::string CGenerator::storeOutput(const Binding& output, std::string value) {
  const Type* const type = output.parameter->dataType();
  if (output.named != nullptr && output.named->negated) {
    value = valueType(type) == BasicDataType::Bool
                ? "!" + value
                : fmt::format("({})~{}", cType(valueType(type)), value);
  }
  return store(*output.value, value, valueType(type));
}

std::string CGenerator::argumentText(const Expr& value, const Type* type) {
  const BasicDataType to = valueType(type);
  std::string text;
  if (to == BasicDataType::LTime) {
    converted(value, to, text);
    return text;
  }
  append(value, text);
  if (to == BasicDataType::Pointer) {
    const char* const number = isInteger(typeOf(value)) ? "(uintptr_t)" : "";
    return fmt::format("({}){}{}", typeText(const_cast<Type*>(type)), number, enclosed(text));
  }
  return typeOf(value) == BasicDataType::Pointer ? "(uintptr_t)" + enclosed(text) : text;
}

// A call in an expression. What its outputs give is stored behind it, before the
// result is used.
std::string CGenerator::functionText(const Call& call) {
  const auto& function = static_cast<const UnitSymbol&>(*call.symbol);
  recordCall(call, function);
  const std::vector<Binding> bindings = bindArguments(call, function);
  std::vector<const vel::ASTNode*> inputs;
  for (const Binding& binding : bindings) {
    if (binding.parameter->role == Role::Input) inputs.push_back(binding.value);
  }
  return inOrder(inputs, false, [&] { return functionText(call, bindings); });
}

std::string CGenerator::functionText(const Call& call, const std::vector<Binding>& bindings) {
  const auto& function = static_cast<const UnitSymbol&>(*call.symbol);
  std::string arguments;
  std::string stores;
  for (int i = 0; i < function.paramsCount(); ++i) {
    const auto* const parameter = static_cast<const VarSymbol*>(function.param(i));
    const Type* const type = parameter->dataType();
    const bool text = type != nullptr && isText(type->dataType());
    const Expr* const given = valueOf(bindings, parameter);
    const Expr* const value = given != nullptr                ? given
                              : parameter->initial != nullptr ? parameter->initial
                                                              : parameter->typeInitial;
    if (!arguments.empty()) arguments += ", ";
    if (parameter->role == Role::Output) {
      const std::string output = temporary(type);
      arguments += text ? output : "&" + output;
      if (given != nullptr) stores += ", " + storeOutput(*bindingOf(bindings, parameter), output);
    } else if (parameter->role == Role::InOut) {
      // The analysis lets no call pass that leaves one out.
      arguments += given != nullptr ? pointerTo(*given, type) : "NULL";
    } else if (value != nullptr && value->op() < op::kArrayValue) {
      arguments += argumentText(*value, type);
    } else if (isComposite(type) && startValues_.differFromZero(*parameter)) {
      arguments += initialText(*parameter);
    } else if (isComposite(type) || text) {
      arguments += zeroText(type);
    } else {
      appendInteger(implicitInitial(type), arguments);
    }
    if (parameter->isBitParameter() && parameter->role == Role::Input) {
      arguments += ", " + companionOf(given);
    }
  }
  const Type* const resultType = function.result != nullptr ? function.result->dataType() : nullptr;
  const bool textResult = resultType != nullptr && isText(resultType->dataType());
  if (textResult) {
    if (!arguments.empty()) arguments += ", ";
    arguments += temporary(resultType);
  }
  std::string text = fmt::format("{}({})", function.cName, arguments);
  if (stores.empty()) return text;
  if (resultType == nullptr) return fmt::format("{}{}", text, stores);
  if (textResult) return fmt::format("({}{}, vel_t{})", text, stores, temporaries_);
  const std::string result = temporary(resultType);
  return fmt::format("({} = {}{}, {})", result, text, stores, result);
}

void CGenerator::callStatement(const Call& call) {
  whenEnabled(call, [&] {
    if (call.leaf(0)->type() == vel::ASTType::Expression) {
      instanceCall(call);
      return;
    }
    const std::string text = callText(call);
    const bool value = call.dataType != nullptr;
    line(value ? "(void)(" + text + ");" : text + ";");
  });
}

// The instance; one that is looked for by a subscript or a pointer is looked for once.
Place CGenerator::calledInstance(const Call& call) {
  const auto& callee = static_cast<const Expr&>(*call.leaf(0));
  Place instance = placeOf(callee);
  if (!anyNode(callee, isLookedFor)) return instance;
  const std::string pointer = fmt::format("vel_t{}", ++temporaries_);
  declarations_ += fmt::format("  {}* {};\n", typeText(callee.dataType), pointer);
  line(fmt::format("{} = {};", pointer, pointerTo(callee, callee.dataType)));
  return {Place::Kind::Pointed, pointer};
}

void CGenerator::instanceCall(const Call& call) {
  const auto& callee = static_cast<const Expr&>(*call.leaf(0));
  const UnitSymbol& block = *static_cast<const InstanceType*>(callee.dataType)->unit;
  recordCall(call, block);
  const Place instance = calledInstance(call);
  const std::vector<Binding> bindings = bindArguments(call, block);
  for (const Binding& binding : bindings) {
    const VarSymbol& parameter = *binding.parameter;
    if (parameter.role == Role::Output) continue;
    const Place member = instance.member(parameter.cName);
    if (parameter.role == Role::InOut) {
      line(member.store(pointerTo(*binding.value, parameter.dataType())) + ";");
      continue;
    }
    std::string value;
    append(*binding.value, value);
    line(storeText(parameter.dataType(), member, value, typeOf(*binding.value)) + ";");
  }
  for (const auto& parameter : block.variables()) {
    if (!parameter->isBitParameter() || parameter->role != Role::Input) continue;
    const Place member = instance.member(companion(*parameter));
    line(member.store(companionOf(valueOf(bindings, parameter.get()))) + ";");
  }
  line(fmt::format("{}({});", block.cBody, instance.address({})));
  for (const Binding& binding : bindings) {
    const VarSymbol& parameter = *binding.parameter;
    if (parameter.role != Role::Output) continue;
    line(storeOutput(binding, instance.member(parameter.cName).load()) + ";");
  }
}

}  // namespace refhost
