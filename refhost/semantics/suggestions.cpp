#include "refhost/semantics/suggestions.h"

#include <string>
#include <vector>

#include "core/op_manager_api.h"
#include "hostkit/operator_inputs.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/standard_functions.h"
#include "refhost/spelling.h"

namespace refhost {
namespace {

void add(Remarks& said, const SourceRange& where, const Spelling& spelling) {
  if (spelling.best().empty()) return;
  said.note(where, "did you mean '" + spelling.best() + "'?").fix(where, spelling.best());
}

}  // namespace

void Suggestions::offerVariables(Spelling& spelling, bool instances) const {
  for (const UnitSymbol* const owner : {context_.unit, services_.symbols.globals()}) {
    if (owner == nullptr) continue;
    for (const auto& variable : owner->variables()) {
      const bool offered = !instances || isInstance(variable->dataType());
      if (offered && variable->role != Role::EdgeState) spelling.offer(variable->name());
    }
  }
}

void Suggestions::addName(Remarks& said, const ASTNode& where, std::string_view name) {
  Spelling spelling(name);
  offerVariables(spelling, false);
  services_.symbols.offerValues(spelling);
  if (context_.unit != nullptr) {
    for (const auto& [known, value] : context_.unit->namedValues) spelling.offer(known);
  }
  add(said, rangeOf(where), spelling);
}

void Suggestions::addCallee(Remarks& said, const ASTNode& where, std::string_view name) {
  Spelling spelling(name);
  offerVariables(spelling, true);
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() == vel::POUType::Function) spelling.offer(unit->name());
  }
  std::vector<std::string> operators;
  services_.operators->operatorNames(operators);
  for (const std::string& known : operators) spelling.offer(known);
  offerStandardFunctions(spelling);
  add(said, rangeOf(where), spelling);
}

void Suggestions::offerTypes(Spelling& spelling) const {
  services_.symbols.offerTypes(spelling);
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() == vel::POUType::FunctionBlock) spelling.offer(unit->name());
  }
  context_.prelude.offerBlocks(spelling);
}

void Suggestions::addType(Remarks& said, const SourceRange& where, std::string_view name) {
  Spelling spelling(name);
  offerTypes(spelling);
  add(said, where, spelling);
}

void Suggestions::addOperand(Remarks& said, const ASTNode& where, std::string_view name) {
  Spelling spelling(name);
  offerVariables(spelling, false);
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

void Suggestions::addParameter(Remarks& said, const ASTNode& where, std::string_view name,
                               const UnitSymbol& callee) {
  Spelling spelling(name);
  for (const auto& variable : callee.variables()) {
    if (variable->isParameter()) spelling.offer(variable->name());
  }
  add(said, rangeOf(where), spelling);
}

void Suggestions::addInput(Remarks& said, const ASTNode& where, std::string_view name,
                           const std::string& operatorName) {
  Spelling spelling(name);
  for (const std::string& input : inputNames(services_, operatorName)) spelling.offer(input);
  add(said, rangeOf(where), spelling);
}

}  // namespace refhost
