// Doubts about declarations: qualifiers without an effect, and variables without a use.
#include <algorithm>
#include <cctype>

#include "refhost/semantics/doubts.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::TreeBuilder;

namespace {

constexpr const char* kWhitespace = " \t\r\n";

// The word that `matches` among the qualifiers with which the block begins; its begin for none.
SourceRange qualifier(const VarBlock& block, bool (*matches)(std::string_view)) {
  const std::string_view text = TreeBuilder::source(block);
  const auto isWord = [](char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_';
  };
  std::size_t begin = text.find_first_not_of(kWhitespace);
  std::size_t end = 0;
  while (begin < text.size() && isWord(text[begin])) {
    end = begin;
    while (end < text.size() && isWord(text[end])) ++end;
    if (matches(text.substr(begin, end - begin))) {
      const vel::TextLocation at(block.pos().file(),
                                 block.pos().offset() + static_cast<std::uint32_t>(begin));
      return {at, static_cast<std::uint32_t>(end - begin)};
    }
    begin = text.find_first_not_of(kWhitespace, end);
  }
  return {block.pos(), 0};
}

bool isConstant(std::string_view word) { return equalIgnoringCase(word, "CONSTANT"); }

bool isRetention(std::string_view word) {
  return equalIgnoringCase(word, "RETAIN") || equalIgnoringCase(word, "NON_RETAIN") ||
         equalIgnoringCase(word, "PERSISTENT");
}

// The variables of the block, if they have no value of their own that could be retained.
const char* notRetained(const UnitSymbol& unit, const VarBlock& block) {
  if (block.constant) return "constants, which never change";
  switch (block.section) {
    case VarSection::Temp:
      return "temporary variables, which no call keeps";
    case VarSection::InOut:
      return "in-out parameters, which are variables of the caller";
    case VarSection::External:
      return "external variables: it belongs to the global one";
    default:
      if (unit.isTest()) return "variables of a test, which begins anew each time";
      return unit.type() == vel::POUType::Function ? "variables of a FUNCTION, which no call keeps"
                                                   : nullptr;
  }
}

}  // namespace

void Doubts::judgeQualifiers(const UnitSymbol& unit, const VarBlock& block) {
  if (block.constant && block.section == VarSection::Output) {
    messages_.report(qualifier(block, isConstant), message::kConstantOutput, {});
    return;
  }
  if (block.retention == Retention::Unsaid) return;
  const char* const what = notRetained(unit, block);
  if (what == nullptr) return;
  const SourceRange at = qualifier(block, isRetention);
  const std::string_view text = TreeBuilder::source(block);
  const std::string_view word = text.substr(at.begin.offset() - block.pos().offset(), at.length);
  if (!context_.broken) messages_.report(at, message::kNotRetained, {word, what});
}

void Doubts::judgeInitial(const UnitSymbol& unit, const VarBlock& block,
                          const VarDecl& declaration) {
  if (block.section != VarSection::InOut && block.section != VarSection::External) return;
  const ASTNode& initial = *declaration.leaf(VarDecl::kInitial);
  if (block.constant) return;
  doubt(initial, message::kNotRetained, TreeBuilder::source(initial), notRetained(unit, block));
}

void Doubts::judgeConstant(const VarSymbol& variable, const VarBlock& block) {
  const bool parameter = variable.isParameter() || block.section == VarSection::External;
  const bool given = variable.initial != nullptr || variable.typeInitial != nullptr;
  const Type* const type = variable.dataType();
  if (!variable.constant || parameter || given || variable.isLocated() || type == nullptr) return;
  // The members of a structure and the variables of an instance may have initial values.
  if (isComposite(type) && dynamic_cast<const ArrayType*>(type) == nullptr) return;
  doubt(*variable.declared, message::kNoValue, variable.name());
}

bool Doubts::judgesReads(const UnitSymbol& unit) const {
  const auto isTemporary = [](const auto& variable) { return variable->role == Role::Temp; };
  const auto& variables = unit.variables();
  return unit.type() == vel::POUType::Function ||
         std::any_of(variables.begin(), variables.end(), isTemporary);
}

void Doubts::noteWrite(const Expr& target) {
  const Expr* place = &target;
  while (isAccess(place->kind)) {
    const auto* const base = static_cast<const Expr*>(place->leaf(0));
    if (dynamic_cast<const PointerType*>(base->dataType) != nullptr) return;
    if (dynamic_cast<const InstanceType*>(base->dataType) != nullptr) return;
    place = base;
  }
  auto* const variable = asVariable(place->symbol);
  if (variable != nullptr && !variable->indirect) ++variable->writes;
}

void Doubts::judgeVariables() {
  if (context_.broken || messages_.hasErrors()) return;
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    const ASTNode* const body = unit->node->leaf(Unit::kBody);
    const bool empty = body == nullptr || body->leavesCount() == 0;
    if (unit->standard || unit->node->incomplete || empty) continue;
    for (const auto& variable : unit->variables()) judgeVariable(*variable, *unit);
  }
}

// Parameters and results belong to the callers as well, variables at addresses to the devices. What
// a PROGRAM or an instance keeps can be watched from outside, what a PROGRAM has can also be set.
void Doubts::judgeVariable(const VarSymbol& variable, const UnitSymbol& unit) {
  const bool temporary = variable.role == Role::Temp;
  const bool own = temporary || variable.role == Role::Local;
  const bool known =
      variable.declared != nullptr && !variable.isLocated() && variable.openAddress == nullptr;
  if (!own || !known || variable.constant || variable.uses > variable.writes) return;
  const bool kept = !temporary && unit.type() != vel::POUType::Function;
  if (variable.uses == 0) {
    const bool set = kept && unit.type() == vel::POUType::Program && !unit.isTest();
    say(*variable.declared, set ? message::kUnusedInProgram : message::kNeverUsed, variable.name());
  } else if (!kept) {
    say(*variable.declared, message::kNeverRead, variable.name());
  }
}

}  // namespace refhost
