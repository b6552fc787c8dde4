#include "refhost/semantics/suggestions.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/operator_inputs.h"
#include "hostkit/operator_traits.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/standard_functions.h"
#include "refhost/services/test_functions.h"
#include "refhost/spelling.h"

namespace refhost {
namespace {

// True if the argument list names the parameter.
bool gives(const ASTNode& list, std::string_view parameter) {
  for (int i = 0; i < list.leavesCount(); ++i) {
    const ASTNode& argument = *list.leaf(i);
    const bool named = kindOf(argument) == NodeKind::Argument;
    if (named && equalIgnoringCase(vel::TreeBuilder::source(*argument.leaf(0)), parameter)) {
      return true;
    }
  }
  return false;
}

// The nearest of the parameters that are left, or all of them if none is near and they are few.
void addNearest(Remarks& said, const SourceRange& where, std::string_view name,
                const std::vector<std::string>& left) {
  constexpr std::size_t kFew = 8;
  Spelling spelling(name);
  std::string listed;
  for (const std::string& parameter : left) {
    spelling.offer(parameter);
    listed += (listed.empty() ? "" : ", ") + parameter;
  }
  Suggestions::add(said, where, spelling);
  if (!spelling.best().empty() || left.empty() || left.size() > kFew) return;
  said.note(where, "not given yet: " + listed);
}

bool isAny(const VarSymbol& /*variable*/) { return true; }

// True if `has` is true for each name that the arguments of the call have, but EN and ENO.
template <typename Has>
bool hasInputs(const Call& call, Has has) {
  const ASTNode* const list = call.parameters();
  for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
    if (kindOf(*list->leaf(i)) != NodeKind::Argument) continue;
    const std::string_view name = vel::TreeBuilder::source(*list->leaf(i)->leaf(0));
    const bool enabling = equalIgnoringCase(name, "EN") || equalIgnoringCase(name, "ENO");
    if (!enabling && !has(name)) return false;
  }
  return true;
}

const Expr* operationAround(const ASTNode& where) {
  const ASTNode* const parent = where.parent();
  const bool isExpr = parent != nullptr && parent->type() == vel::ASTType::Expression;
  return isExpr ? static_cast<const Expr*>(parent) : nullptr;
}

// True of the control variable of a FOR.
bool isCounter(const ASTNode& where) {
  const ASTNode* const start = where.parent();
  const ASTNode* const loop = start != nullptr ? start->parent() : nullptr;
  return loop != nullptr && start->leaf(0) == &where && loop->leaf(0) == start &&
         statementKindOf(*loop) == StatementKind::For;
}

// True if the operator or access around `where` takes a value of the type.
bool suits(const vel::SymbolDataType& type, const ASTNode& where) {
  const BasicDataType basic = type.dataType();
  if (isCounter(where)) return isInteger(basic);
  const Expr* const operation = operationAround(where);
  if (operation == nullptr) return true;
  const bool plain = !isComposite(&type);
  const bool pointer = basic == BasicDataType::Pointer;
  switch (formOf(operation->kind)) {
    case ExprForm::Access:
      if (operation->kind == ExprKind::Dereference) return pointer;
      if (operation->kind == ExprKind::Part) return isInteger(valueType(&type));
      if (operation->leaf(0) != &where) return isInteger(valueType(&type));
      return pointer || asOpenArray(&type) != nullptr ||
             dynamic_cast<const ArrayType*>(&type) != nullptr;
    case ExprForm::Unary:
    case ExprForm::Arithmetic:
      if (operation->kind == ExprKind::Not) return isInteger(basic) || basic == BasicDataType::Bool;
      return plain && basic != BasicDataType::Bool && !isText(basic);
    case ExprForm::Logic:
      return isInteger(basic) || basic == BasicDataType::Bool;
    case ExprForm::Comparison:
      return plain;
    default:
      return true;
  }
}

}  // namespace

void Suggestions::add(Remarks& said, const SourceRange& where, const Spelling& spelling) {
  if (spelling.best().empty()) return;
  said.note(where, "did you mean '" + spelling.best() + "'?").fix(where, spelling.best());
}

template <typename Accepts>
void Suggestions::offerVariables(Spelling& spelling, Accepts accepts) const {
  const UnitSymbol* const unit = context_.unit;
  const UnitSymbol* const outer = unit != nullptr ? unit->outer : nullptr;
  for (const UnitSymbol* const owner :
       {unit, outer, static_cast<const UnitSymbol*>(services_.symbols.globals())}) {
    if (owner == nullptr) continue;
    for (const auto& variable : owner->variables()) {
      const bool seen =
          variable->role != Role::EdgeState && (owner != outer || variable->role != Role::Temp);
      if (seen && accepts(*variable)) spelling.offer(variable->name());
    }
  }
}

template <typename Accepts>
void Suggestions::offerValues(Spelling& spelling, Accepts accepts) const {
  services_.symbols.forEachValue([&](std::string_view name, const NamedValue* value) {
    if (value == nullptr || accepts(value->dataType())) spelling.offer(name);
  });
  if (context_.unit == nullptr) return;
  for (const auto& [known, value] : context_.unit->namedValues) {
    if (value == nullptr || accepts(value->dataType())) spelling.offer(known);
  }
}

// True if a name of the type can stand at `where`. An unknown type fits everywhere.
bool Suggestions::fits(const Type* type, const ASTNode& where, const Type* wanted) {
  if (type == nullptr) return true;
  if (!suits(*type, where)) return false;
  if (wanted == nullptr) return true;
  const std::size_t first = messages_.count();
  const bool target = context_.sought == Sought::Place;
  parts_.assignments.check(target ? type : wanted, target ? wanted : type, where);
  const bool accepted = !hasErrorFrom(first);
  messages_.drop(first);
  return accepted;
}

void Suggestions::addName(Remarks& said, const ASTNode& where, std::string_view name,
                          const Type* wanted) {
  Spelling spelling(name);
  const auto accepts = [&](const Type* type) { return fits(type, where, wanted); };
  switch (context_.sought) {
    case Sought::Value: {
      offerVariables(spelling,
                     [&](const VarSymbol& variable) { return accepts(variable.dataType()); });
      offerValues(spelling, accepts);
      const Type* const flag = services_.symbols.elementary(BasicDataType::Bool);
      if (accepts(flag)) spelling.offer("TRUE");
      if (accepts(flag)) spelling.offer("FALSE");
      const bool pointer = wanted != nullptr && wanted->dataType() == BasicDataType::Pointer;
      if (pointer) spelling.offer("NULL");
      break;
    }
    case Sought::Place:
      offerVariables(spelling, [&](const VarSymbol& variable) {
        return !variable.constant && accepts(variable.dataType());
      });
      break;
    case Sought::Whole:
    case Sought::WholePlace:
      offerVariables(spelling, [](const VarSymbol& variable) {
        const Type* const type = variable.dataType();
        return isInstance(type) || dynamic_cast<const StructType*>(type) != nullptr;
      });
      if (context_.sought == Sought::WholePlace) break;
      for (const EnumType* const type : services_.symbols.enumerations()) {
        spelling.offer(type->name());
      }
      break;
    case Sought::Constant:
      offerVariables(spelling, [&](const VarSymbol& variable) {
        return variable.constant && accepts(variable.dataType());
      });
      offerValues(spelling, accepts);
      break;
  }
  add(said, rangeOf(where), spelling);
}

void Suggestions::addTypedValue(Remarks& said, const ASTNode& where, std::string_view name) {
  const std::size_t mark = name.find('#');
  const std::string_view value = name.substr(mark + 1);
  Spelling spelling(name.substr(0, mark));
  const bool isTruth = equalIgnoringCase(value, "TRUE") || equalIgnoringCase(value, "FALSE");
  if (isTruth) spelling.offer("BOOL");
  const std::vector<const EnumType*> enumerations = services_.symbols.enumerations();
  for (const EnumType* const type : enumerations) spelling.offer(type->name());
  if (spelling.best().empty()) return;
  std::string meant = spelling.best() + "#";
  for (const EnumType* const type : enumerations) {
    if (type->name() != spelling.best()) continue;
    Spelling spellingOfValue(value);
    for (const auto& known : type->values()) spellingOfValue.offer(known->name());
    if (spellingOfValue.best().empty()) return;
    meant += spellingOfValue.best();
  }
  if (meant.back() == '#') meant += value;
  said.note(rangeOf(where), "did you mean '" + meant + "'?").fix(rangeOf(where), meant);
}

// Offers what may be called and takes the number of arguments, which is not known of all.
template <typename Accepts>
void Suggestions::offerCallees(Spelling& spelling, const Call& call, Accepts takes) const {
  constexpr int kMany = std::numeric_limits<int>::max();
  const ASTNode* const parent = call.parent();
  // A call of an instance has no value.
  if (parent != nullptr && statementKindOf(*parent) == StatementKind::Call) {
    offerVariables(spelling,
                   [](const VarSymbol& variable) { return isInstance(variable.dataType()); });
  }
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() != vel::POUType::Function) continue;
    const auto parameters =
        std::count_if(unit->variables().begin(), unit->variables().end(),
                      [](const auto& variable) { return variable->isParameter(); });
    // EN and ENO may be given as well.
    const auto has = [unit](std::string_view name) { return unit->variable(name) != nullptr; };
    if (!hasInputs(call, has)) continue;
    if (takes(0, static_cast<int>(parameters) + 2)) spelling.offer(unit->name());
  }
  std::vector<std::string> operators;
  services_.operators->operatorNames(operators);
  for (const std::string& known : operators) {
    const OperatorTraits& traits = hostkit::operatorTraits(known);
    const int count = static_cast<int>(inputNames(services_, known).size());
    const auto has = [&](std::string_view name) {
      return operatorInput(services_, known, name) >= 0;
    };
    if (!hasInputs(call, has)) continue;
    const bool any = traits.family == OperatorFamily::Other;
    const bool more = any || traits.has(OperatorTraits::kExtensible);
    if (takes(any ? 0 : count, more ? kMany : count + 2)) spelling.offer(known);
  }
  offerStandardFunctions(spelling, [&](const StandardFunction& function) {
    const auto has = [&function](std::string_view name) { return function.position(name) >= 0; };
    return hasInputs(call, has) &&
           takes(function.inputs(), function.extensible ? kMany : function.inputs() + 2);
  });
  if (takes(1, 1)) spelling.offer("REF");
  if (parts_.tests.isInTest()) offerTestFunctions(spelling);
}

void Suggestions::addCallee(Remarks& said, const Call& call, std::string_view name) {
  const ASTNode& where = *call.leaf(0);
  const int given = call.parameters() != nullptr ? call.parameters()->leavesCount() : 0;
  Spelling fitting(name);
  offerCallees(fitting, call,
               [given](int least, int most) { return given >= least && given <= most; });
  if (!fitting.best().empty()) return add(said, rangeOf(where), fitting);
  Spelling spelling(name);
  offerCallees(spelling, call, [](int, int) { return true; });
  if (!spelling.best().empty()) return add(said, rangeOf(where), spelling);
  Spelling spellingOfBlock(name);
  offerBlocks(spellingOfBlock);
  if (spellingOfBlock.best().empty()) return;
  said.note(rangeOf(where),
            "only instances of the function block '" + spellingOfBlock.best() + "' can be called");
}

void Suggestions::offerBlocks(Spelling& spelling) const {
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() == vel::POUType::FunctionBlock) spelling.offer(unit->name());
  }
  context_.prelude.offerBlocks(spelling);
}

void Suggestions::offerTypes(Spelling& spelling) const {
  services_.symbols.offerTypes(spelling);
  offerBlocks(spelling);
}

void Suggestions::addGlobal(Remarks& said, const ASTNode& where, std::string_view name) {
  if (services_.symbols.globals() == nullptr) return;
  Spelling spelling(name);
  for (const auto& variable : services_.symbols.globals()->variables()) {
    spelling.offer(variable->name());
  }
  add(said, rangeOf(where), spelling);
}

void Suggestions::addType(Remarks& said, const SourceRange& where, std::string_view name) {
  Spelling spelling(name);
  offerTypes(spelling);
  add(said, where, spelling);
}

void Suggestions::addOperand(Remarks& said, const ASTNode& where, std::string_view name) {
  Spelling spelling(name);
  offerVariables(spelling, isAny);
  offerTypes(spelling);
  add(said, rangeOf(where), spelling);
}

void Suggestions::addMember(Remarks& said, const SourceRange& where, std::string_view name,
                            const Type* type) {
  Spelling spelling(name);
  if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    for (const auto& variable : instance->unit->variables()) {
      const bool target = context_.sought == Sought::Place || context_.sought == Sought::WholePlace;
      // Outputs are not written from outside.
      const bool fits = (variable->isParameter() && variable->role != Role::InOut) ||
                        parts_.tests.sees(*variable);
      if (fits && !(target && variable->role == Role::Output)) spelling.offer(variable->name());
    }
  } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
    for (const auto& member : structure->members()) spelling.offer(member->name());
  } else if (const auto* const enumeration = dynamic_cast<const EnumType*>(type)) {
    for (const auto& value : enumeration->values()) spelling.offer(value->name());
  }
  add(said, where, spelling);
}

void Suggestions::addParameter(Remarks& said, const ASTNode& list, const Argument& argument,
                               const UnitSymbol& callee) {
  std::vector<std::string> left;
  for (const auto& variable : callee.variables()) {
    const bool fits =
        variable->isParameter() && (variable->role == Role::Output) == argument.output;
    if (fits && !gives(list, variable->name())) left.emplace_back(variable->name());
  }
  const ASTNode& formal = *argument.leaf(0);
  addNearest(said, rangeOf(formal), vel::TreeBuilder::source(formal), left);
}

void Suggestions::addInput(Remarks& said, const Call& call, const Argument& argument) {
  if (argument.output) return;
  std::vector<std::string> left;
  if (call.op() != nullptr) {
    left = inputNames(services_, call.op()->name);
  } else if (call.standard() != nullptr) {
    left.assign(call.standard()->formals.begin(), call.standard()->formals.end());
  }
  const auto mayNotFollow = [&](const std::string& input) {
    return input.empty() || gives(*call.leaf(1), input);
  };
  left.erase(std::remove_if(left.begin(), left.end(), mayNotFollow), left.end());
  const ASTNode& formal = *argument.leaf(0);
  addNearest(said, rangeOf(formal), vel::TreeBuilder::source(formal), left);
}

}  // namespace refhost
