#include "refhost/semantics/suggestions.h"

#include <string>
#include <vector>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/operator_inputs.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/standard_functions.h"
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

bool isAny(const VarSymbol& /*variable*/) { return true; }

}  // namespace

void Suggestions::add(Remarks& said, const SourceRange& where, const Spelling& spelling) {
  if (spelling.best().empty()) return;
  said.note(where, "did you mean '" + spelling.best() + "'?").fix(where, spelling.best());
}

template <typename Accepts>
void Suggestions::offerVariables(Spelling& spelling, Accepts accepts) const {
  for (const UnitSymbol* const owner : {context_.unit, services_.symbols.globals()}) {
    if (owner == nullptr) continue;
    for (const auto& variable : owner->variables()) {
      if (variable->role != Role::EdgeState && accepts(*variable)) spelling.offer(variable->name());
    }
  }
}

void Suggestions::offerValues(Spelling& spelling) const {
  services_.symbols.offerValues(spelling);
  if (context_.unit == nullptr) return;
  for (const auto& [known, value] : context_.unit->namedValues) spelling.offer(known);
}

void Suggestions::addName(Remarks& said, const ASTNode& where, std::string_view name) {
  Spelling spelling(name);
  switch (context_.sought) {
    case Sought::Value:
      offerVariables(spelling, isAny);
      offerValues(spelling);
      for (const std::string_view value : {"TRUE", "FALSE", "NULL"}) spelling.offer(value);
      break;
    case Sought::Place:
      offerVariables(spelling, [](const VarSymbol& variable) { return !variable.constant; });
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
      offerVariables(spelling, [](const VarSymbol& variable) { return variable.constant; });
      offerValues(spelling);
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

void Suggestions::addCallee(Remarks& said, const ASTNode& where, std::string_view name) {
  Spelling spelling(name);
  offerVariables(spelling,
                 [](const VarSymbol& variable) { return isInstance(variable.dataType()); });
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() == vel::POUType::Function) spelling.offer(unit->name());
  }
  std::vector<std::string> operators;
  services_.operators->operatorNames(operators);
  for (const std::string& known : operators) spelling.offer(known);
  offerStandardFunctions(spelling);
  spelling.offer("REF");
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
      if (variable->isParameter()) spelling.offer(variable->name());
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
  Spelling spelling(vel::TreeBuilder::source(*argument.leaf(0)));
  for (const auto& variable : callee.variables()) {
    const bool fits =
        variable->isParameter() && (variable->role == Role::Output) == argument.output;
    if (fits && !gives(list, variable->name())) spelling.offer(variable->name());
  }
  add(said, rangeOf(*argument.leaf(0)), spelling);
}

void Suggestions::addInput(Remarks& said, const Call& call, const Argument& argument) {
  if (argument.output) return;
  Spelling spelling(vel::TreeBuilder::source(*argument.leaf(0)));
  const auto offer = [&](std::string_view input) {
    if (!gives(*call.leaf(1), input)) spelling.offer(input);
  };
  if (call.op() != nullptr) {
    for (const std::string& input : inputNames(services_, call.op()->name)) offer(input);
  } else if (call.standard() != nullptr) {
    for (const std::string_view input : call.standard()->formals) offer(input);
  }
  add(said, rangeOf(*argument.leaf(0)), spelling);
}

}  // namespace refhost
