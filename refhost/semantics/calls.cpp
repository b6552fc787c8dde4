#include <algorithm>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "host/ast_node_helper.h"
#include "hostkit/edge_state.h"
#include "hostkit/operator_inputs.h"
#include "refhost/operator_calls.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/standard_functions.h"
#include "refhost/services/test_functions.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

vel::SymbolDataType* Calls::analyseCall(Call& call, const Type* wanted) {
  if (call.analysed) return call.dataType;
  call.analysed = true;
  const std::string_view name = TreeBuilder::source(*call.leaf(0));
  VarSymbol* const variable = parts_.names.variableNamed(name);
  if (call.leaf(0)->type() == vel::ASTType::Expression) {
    call.instance = static_cast<Expr*>(call.leaf(0));
  } else if (variable != nullptr && isInstance(variable->dataType())) {
    call.instance = nameOfInstance(call);
  }
  if (call.instance != nullptr) return callInstance(call);
  call.callee = &calleeNamed(static_cast<const Text&>(*call.leaf(0)).text());
  // The program means its own unit, which has been refused.
  if (call.op() != nullptr && context_.hidden.count(name) != 0) return nullptr;
  if (call.op() != nullptr || call.function() != nullptr) {
    call.dataType = call.op() != nullptr ? callOperator(call, wanted) : callFunction(call);
    call.setBasicType(valueType(call.dataType));
    return call.dataType;
  }
  if (call.standard() != nullptr) {
    call.dataType = parts_.standardCalls.callStandard(call);
    call.accepted = call.dataType != nullptr;
    return call.dataType;
  }
  if (call.testFunction() != nullptr) {
    parts_.tests.callFunction(call);
    return nullptr;
  }
  if (equalIgnoringCase(name, "REF")) return callReference(call);
  const bool known =
      variable != nullptr || services_.symbols.find(std::string(name), {}, Symbol::All) != nullptr;
  if (variable != nullptr && variable->dataType() == nullptr) return nullptr;
  if (parts_.tests.refusesMock(call)) return nullptr;
  Remarks* const said =
      sayUnknown(*call.leaf(0), known ? message::kNotCallable : message::kUnknownName, name);
  if (said != nullptr && !known) parts_.suggestions.addCallee(*said, call, name);
  return nullptr;
}

// Looks `name`, which is interned, up among the operators, then the program's functions, then the
// standard functions.
const Callee& Calls::calleeNamed(const char* name) {
  Callee*& known = callees_[name];
  if (known != nullptr) return *known;
  known = tree_.make<Callee>();
  Callee& callee = *known;
  callee.op = services_.operators->findOperator(name);
  if (callee.op != nullptr) {
    callee.traits = &hostkit::operatorTraits(callee.op->name);
    return callee;
  }
  const StandardFunction* const standard = standardFunction(name);
  // The prelude declares no standard function of the table, so it need not be parsed for one.
  UnitSymbol* const unit =
      standard != nullptr ? services_.symbols.unit(name) : parts_.declarations.unitNamed(name);
  if (unit != nullptr && unit->type() == vel::POUType::Function) {
    callee.function = unit;
  } else if (standard != nullptr) {
    callee.standard = standard;
  } else {
    callee.test = testFunction(name);
  }
  return callee;
}

void Calls::requireValue(const Call& call, const Type* type) {
  const bool value = call.op() != nullptr ? call.traits()->givesValue() : type != nullptr;
  const UnitSymbol* const function = call.function();
  if (function != nullptr && context_.mayMiss(function)) return;
  if (call.accepted && !value) {
    say(call, message::kNoResult, TreeBuilder::source(*call.leaf(0)));
  }
}

// REF(x), a reference to the variable x.
vel::SymbolDataType* Calls::callReference(Call& call) {
  ASTNode* const list = call.parameters();
  const std::string_view name = TreeBuilder::source(*call.leaf(0));
  if (list == nullptr) {
    say(*call.leaf(1), message::kNotAValue, TreeBuilder::source(*call.leaf(1)));
    return nullptr;
  }
  if (list->leavesCount() == 0) {
    say(call, message::kTooFewArguments, name);
    return nullptr;
  }
  if (list->leavesCount() > 1) {
    say(*list->leaf(1), message::kTooManyArguments, name);
    return nullptr;
  }
  if (list->leaf(0)->type() != vel::ASTType::Expression) {
    const ASTNode& formal = *list->leaf(0)->leaf(0);
    say(formal, message::kUnknownParameter, name, TreeBuilder::source(formal));
    return nullptr;
  }
  const Expr& operand = parts_.expressions.analyseLeaf(*list, 0);
  if (operand.dataType == nullptr) return nullptr;
  if (!parts_.expressions.hasAddress(operand) || !isWritable(operand)) {
    say(operand, message::kNoAddress, TreeBuilder::source(operand));
    return nullptr;
  }
  call.givesAddress = true;
  call.accepted = true;
  call.dataType = services_.symbols.pointerType(operand.dataType, true);
  call.setBasicType(BasicDataType::Pointer);
  return call.dataType;
}

vel::SymbolDataType* Calls::callFunction(Call& call) {
  UnitSymbol& function = *call.function();
  // An error in the result type has been reported at the declaration.
  call.accepted = function.result == nullptr || function.result->dataType() != nullptr;
  takeEnabling(call, &function);
  analyseArguments(call, function);
  return function.result != nullptr ? function.result->dataType() : nullptr;
}

// Makes a Variable of the name, so that callInstance() deals with expressions only.
Expr* Calls::nameOfInstance(const Call& call) {
  Expr* const access = tree_.make<Expr>(ExprKind::Variable);
  TreeBuilder::setSpan(*access, call.leaf(0)->pos(), TreeBuilder::source(*call.leaf(0)));
  return access;
}

vel::SymbolDataType* Calls::callInstance(Call& call) {
  parts_.expressions.analyse(*call.instance);
  const Expr& callee = *call.instance;
  const auto* const instance = dynamic_cast<const InstanceType*>(callee.dataType);
  if (instance != nullptr) {
    call.accepted = true;
    takeEnabling(call, instance->unit);
    analyseArguments(call, *instance->unit);
  } else if (callee.dataType != nullptr) {
    say(callee, message::kNotCallable, TreeBuilder::source(callee));
  }
  return nullptr;
}

void Calls::analyseArguments(Call& call, UnitSymbol& callee) {
  if (call.parameters() == nullptr) {
    say(*call.leaf(1), message::kNotAValue, TreeBuilder::source(*call.leaf(1)));
    return;
  }
  parts_.sizes.countCall(callee);
  ASTNode* const list = call.parameters();
  for (const Binding& binding : bindArguments(call, callee)) {
    const Type* const wanted =
        binding.parameter != nullptr ? binding.parameter->dataType() : nullptr;
    const bool place = binding.parameter != nullptr && (binding.parameter->role == Role::Output ||
                                                        binding.parameter->role == Role::InOut);
    const Seeking seeking(context_, place ? Sought::Place : context_.sought);
    if (binding.named != nullptr) {
      parts_.expressions.analyseLeaf(*binding.node, 1, wanted);
    } else {
      parts_.expressions.analyseLeaf(*list, binding.index, wanted);
    }
  }
  const std::vector<Binding> bindings = bindArguments(call, callee);
  const auto isTooMuch = [](const Binding& binding) {
    return binding.parameter == nullptr && binding.named == nullptr;
  };
  const auto tooMuch = std::find_if(bindings.begin(), bindings.end(), isTooMuch);
  if (tooMuch != bindings.end()) {
    if (context_.mayMiss(&callee)) return;
    say(*tooMuch->node, message::kTooManyArguments, callee.name());
    return;
  }
  std::vector<const VarSymbol*> given;
  bool named = false;
  bool mistaken = false;  // an argument in a wrong place, of an unknown name, or a second of a name
  for (const Binding& binding : bindings) {
    if (named && binding.named == nullptr) {
      say(*binding.node, message::kMixedArguments, callee.name());
      mistaken = true;
      break;
    }
    named = binding.named != nullptr;
    if (binding.parameter == nullptr) {
      mistaken = true;
      if (context_.mayMiss(&callee)) continue;
      const ASTNode& formal = *binding.node->leaf(0);
      Remarks* const said =
          sayUnknownPart(rangeOf(formal), message::kUnknownParameter, &callee,
                         TreeBuilder::source(formal), callee.name(), TreeBuilder::source(formal));
      if (said != nullptr) parts_.suggestions.addParameter(*said, *list, *binding.named, callee);
      continue;
    }
    const auto before = std::find_if(bindings.begin(), bindings.end(), [&](const Binding& other) {
      return other.parameter == binding.parameter;
    });
    if (before->index != binding.index) {
      sayTwice(*binding.node, binding.parameter->name(), *before->node);
      mistaken = true;
      continue;
    }
    given.push_back(binding.parameter);
    const std::size_t first = messages_.count();
    checkArgument(binding, callee);
    if (!callee.standard && binding.parameter->declared != nullptr) {
      messages_.note(first, rangeOf(*binding.parameter->declared),
                     "the parameter is declared here");
    }
  }
  // It is probably meant for a parameter that is missing.
  if (mistaken) return;
  for (const auto& variable : callee.variables()) {
    const bool input = variable->role == Role::Input;
    const bool needed = (variable->indirect && !variable->reference) ||
                        (input && callee.standard && callee.type() == vel::POUType::Function);
    const bool missing =
        needed && std::find(given.begin(), given.end(), variable.get()) == given.end();
    if (!missing || context_.mayMiss(&callee)) continue;
    Remarks& said = variable->role == Role::InOut
                        ? say(call, message::kInOutMissing, variable->name(), callee.name())
                        : say(call, message::kTooFewArguments, callee.name());
    if (!callee.standard) said.note(rangeOf(*variable->declared), "the parameter is declared here");
  }
}

void Calls::checkArgument(const Binding& binding, const UnitSymbol& callee) {
  const VarSymbol& parameter = *binding.parameter;
  const bool output = parameter.role == Role::Output;
  if (binding.named != nullptr && binding.named->output != output) {
    say(*binding.node, message::kUnknownParameter, callee.name(), parameter.name())
        .note(rangeOf(*binding.node),
              output ? "it is an output: => stores it" : "it is no output: := gives it");
    return;
  }
  if (output) {
    const BasicDataType type =
        parameter.dataType() != nullptr ? parameter.dataType()->dataType() : BasicDataType::None;
    const bool negated = binding.named != nullptr && binding.named->negated;
    if (negated && type != BasicDataType::Bool && !isInteger(type)) {
      say(*binding.node, message::kOperandType, "NOT", displayName(parameter.dataType()));
    }
    if (parts_.expressions.requireWritable(*binding.value)) {
      parts_.assignments.check(binding.value->dataType, parameter.dataType(), *binding.value);
    }
  } else if (parameter.role == Role::InOut) {
    requirePassable(binding);
  } else if (asOpenArray(parameter.dataType()) != nullptr) {
    requirePassable(binding);
  } else if (parameter.reference) {
    parts_.assignments.checkBound(parameter.name(), parameter.dataType(), *binding.value);
  } else {
    parts_.assignments.check(parameter.dataType(), binding.value->dataType, *binding.value);
  }
}

// An in-out parameter is passed by reference: its argument must be a writable variable of the same
// type.
void Calls::requirePassable(const Binding& binding) {
  const Expr& value = *binding.value;
  const Type* const wanted = binding.parameter->dataType();
  if (value.dataType == nullptr || wanted == nullptr) return;
  const bool passable =
      parts_.expressions.hasAddress(value) && isPassable(*value.dataType, *wanted);
  if (binding.parameter->role == Role::Input) {
    if (passable) return;
    say(value, message::kNotBindable, binding.parameter->name(), TreeBuilder::source(value),
        displayName(wanted));
  } else if (!passable || isReadOnly(value)) {
    say(value, message::kNotPassable, TreeBuilder::source(value), binding.parameter->name(),
        displayName(wanted));
  }
}

}  // namespace refhost
