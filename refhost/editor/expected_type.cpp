#include "refhost/editor/expected_type.h"

#include <string>

#include "core/operator.h"
#include "refhost/editor/node_search.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/bindings.h"
#include "refhost/services/standard_functions.h"
#include "refhost/services/test_functions.h"

namespace refhost {

using Type = vel::SymbolDataType;
using vel::ASTType;

namespace {

// Goes from an expression outwards until something tells its type.
class Surroundings {
 public:
  explicit Surroundings(const Services& services) : services_(services) {}

  const Type* typeFor(const ASTNode& value) {
    const ASTNode* node = &value;
    while (node->parent() != nullptr) {
      const ASTNode& parent = *node->parent();
      bool passes = false;  // the parent wants of this part what is wanted of itself
      const Type* const type = typeIn(parent, *node, passes);
      if (type != nullptr || !passes) return type != nullptr ? type : otherwise_;
      node = &parent;
    }
    return otherwise_;
  }

 private:
  const Type* elementary(BasicDataType type) const { return services_.symbols.elementary(type); }

  const Type* typeIn(const ASTNode& parent, const ASTNode& part, bool& passes) {
    if (parent.type() == ASTType::Expression) {
      return typeInOperation(static_cast<const Expr&>(parent), part, passes);
    }
    if (parent.type() == ASTType::ParameterList) {
      const Call* const call = callIn(parent.parent());
      return call != nullptr ? argumentType(*call, part, passes) : nullptr;
    }
    switch (kindOf(parent)) {
      case NodeKind::Invocation:
        passes = part.type() == ASTType::ParameterList;
        return nullptr;
      case NodeKind::Argument:
        passes = &part != parent.leaf(0);
        return nullptr;
      case NodeKind::VarDecl:
        return declaredType(static_cast<const VarDecl&>(parent));
      default:
        return typeInStatement(parent, part);
    }
  }

  const Type* typeInOperation(const Expr& operation, const ASTNode& part, bool& passes) {
    const auto other = [&] {
      const ASTNode& left = *operation.leaf(0);
      return typeHolding(services_, &left == &part ? *operation.leaf(1) : left);
    };
    switch (formOf(operation.kind)) {
      case ExprForm::Call:
        passes = true;
        return nullptr;
      case ExprForm::Unary:
        passes = true;
        if (operation.kind == ExprKind::Not) otherwise_ = elementary(BasicDataType::Bool);
        return nullptr;
      case ExprForm::Arithmetic: {
        passes = true;
        const Type* const type = other();
        const ASTNode& left = *operation.leaf(0);
        const bool number = isUntypedNumber(&left == &part ? *operation.leaf(1) : left);
        // A number fits beside any type that is wanted of the result.
        if (number) otherwise_ = type;
        return number ? nullptr : type;
      }
      case ExprForm::Comparison:
        return other();
      case ExprForm::Logic:
        passes = true;
        otherwise_ = elementary(BasicDataType::Bool);
        return other();
      case ExprForm::Access:
        return operation.kind == ExprKind::Element && operation.leaf(0) != &part
                   ? elementary(BasicDataType::Int)
                   : nullptr;
      case ExprForm::Literal:
      case ExprForm::Variable:
      case ExprForm::Parts:
        break;
    }
    return nullptr;
  }

  const Type* argumentType(const Call& call, const ASTNode& argument, bool& passes) const {
    const auto* const instance = call.instance != nullptr
                                     ? dynamic_cast<const InstanceType*>(call.instance->dataType)
                                     : nullptr;
    const UnitSymbol* const unit = instance != nullptr ? instance->unit : call.function();
    if (unit != nullptr) {
      for (const Binding& binding : bindArguments(call, *unit)) {
        if (binding.node == &argument && binding.parameter != nullptr) {
          return binding.parameter->dataType();
        }
      }
      return nullptr;
    }
    const ASTNode& list = *call.parameters();
    int index = 0;
    while (index < list.leavesCount() && list.leaf(index) != &argument) ++index;
    if (call.testFunction() != nullptr) return testedType(*call.testFunction(), list, index);
    if (const Type* const type = operandType(services_, call, index)) return type;
    const StandardFunction* const standard = call.standard();
    if (call.op() != nullptr && !call.traits()->chooses()) {
      const OperatorFamily family = call.traits()->family;
      passes = call.traits()->result == OperatorTraits::Result::Passed ||
               family == OperatorFamily::Numeric || family == OperatorFamily::Shift ||
               family == OperatorFamily::Rotation;
      return nullptr;
    }
    if (call.op() == nullptr && standard == nullptr) return nullptr;
    // All operands are of one type, which may be that of the result.
    const int first = call.op() != nullptr ? call.traits()->firstChoice : 0;
    for (int i = first; i < list.leavesCount(); ++i) {
      const ASTNode& other = *list.leaf(i);
      if (&other == &argument || isUntypedNumber(other)) continue;
      if (const Type* const type = dataTypeOf(other)) return type;
    }
    passes = standard == nullptr || standard->kind == StandardFunction::Kind::Operation;
    return nullptr;
  }

  const Type* testedType(const TestFunction& function, const ASTNode& list, int index) const {
    if (index >= function.operands()) return elementary(BasicDataType::String);
    if (function.kind == TestFunction::Kind::Condition) return elementary(BasicDataType::Bool);
    if (function.kind == TestFunction::Kind::Advance) return elementary(BasicDataType::Time);
    const int other = index == 0 ? 1 : 0;
    return other < list.leavesCount() ? typeHolding(services_, *list.leaf(other)) : nullptr;
  }

  const Type* declaredType(const VarDecl& declaration) const {
    const ASTNode* const spec = declaration.leaf(VarDecl::kType);
    const bool plain = spec != nullptr && !isReferenceSpec(*spec);
    return plain ? static_cast<const TypeSpec*>(spec)->dataType : nullptr;
  }

  const Type* typeInStatement(const ASTNode& statement, const ASTNode& part) const {
    switch (statementKindOf(statement)) {
      case StatementKind::Assignment:
        if (statement.parent() != nullptr && &part == statement.leaf(0) &&
            statementKindOf(*statement.parent()) == StatementKind::For) {
          return counterType(*statement.parent());
        }
        return typeHolding(services_, *statement.leaf(&part == statement.leaf(0) ? 1 : 0));
      case StatementKind::If:
      case StatementKind::While:
      case StatementKind::Repeat:
        return elementary(BasicDataType::Bool);
      case StatementKind::Case:
        return elementary(BasicDataType::Int);
      case StatementKind::For: {
        const Type* const counter = dataTypeOf(*statement.leaf(0)->leaf(0));
        return counter != nullptr ? counter : counterType(statement);
      }
      case StatementKind::Bind:
      case StatementKind::Call:
      case StatementKind::Exit:
      case StatementKind::Continue:
      case StatementKind::Return:
        break;
    }
    return nullptr;
  }

  // The integer that holds the bounds and the step of a FOR whose control variable is unknown.
  const Type* counterType(const ASTNode& loop) const {
    const Type* found = elementary(BasicDataType::Int);
    const auto consider = [&](const ASTNode& value) {
      const Type* const type = typeHolding(services_, value);
      const bool integer = type != nullptr && isInteger(type->dataType());
      if (integer && widens(found->dataType(), type->dataType())) {
        found = elementary(type->dataType());
      }
    };
    consider(*loop.leaf(0)->leaf(1));
    consider(*loop.leaf(1));
    if (loop.leaf(2) != nullptr) consider(*loop.leaf(2));
    return found;
  }

  const Services& services_;
  const Type* otherwise_ = nullptr;  // what an operator takes unless more is known of it
};

}  // namespace

const Type* typeHolding(const Services& services, const ASTNode& value) {
  const Type* const type = dataTypeOf(value);
  if (type == nullptr && value.type() == ASTType::Expression &&
      isComparison(static_cast<const Expr&>(value).kind)) {
    return services.symbols.elementary(BasicDataType::Bool);
  }
  if (type == nullptr || !isUntypedNumber(value)) return type;
  // Beside a BOOL a literal 0 or 1 is one, too.
  const Literal* const literal = literalOf(value);
  const BasicDataType number = literal != nullptr ? literal->value.type : type->dataType();
  const BasicDataType usual = isFloat(number) ? BasicDataType::Real : BasicDataType::Int;
  return services.symbols.elementary(widens(number, usual) ? usual : number);
}

const Type* operandType(const Services& services, const Call& call, int index) {
  const auto elementary = [&services](BasicDataType type) {
    return services.symbols.elementary(type);
  };
  if (const StandardFunction* const standard = call.standard()) {
    const bool alike = standard->kind == StandardFunction::Kind::Operation ||
                       standard->kind == StandardFunction::Kind::Comparison;
    if (alike) return nullptr;
    return elementary(standard->takesText(index) ? BasicDataType::String : BasicDataType::Int);
  }
  if (call.op() == nullptr) return nullptr;
  const OperatorTraits& traits = *call.traits();
  if (index < traits.firstChoice) {
    return elementary(traits.has(OperatorTraits::kExtensible) ? BasicDataType::Int
                                                              : BasicDataType::Bool);
  }
  const bool shifts =
      traits.family == OperatorFamily::Shift || traits.family == OperatorFamily::Rotation;
  if (shifts && index > 0) return elementary(BasicDataType::Int);
  const std::string& name = call.op()->name;
  const std::size_t split = name.find("_TO_");
  return split != std::string::npos ? services.symbols.dataType(name.substr(0, split)) : nullptr;
}

const Type* expectedType(const Services& services, const ASTNode& value) {
  return Surroundings(services).typeFor(value);
}

}  // namespace refhost
