#include "refhost/editor/declaration_fixes.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "refhost/editor/expected_type.h"
#include "refhost/editor/node_search.h"
#include "refhost/syntax/insertions.h"

namespace refhost {

using Type = vel::SymbolDataType;
using vel::TreeBuilder;

namespace {

constexpr std::string_view kSectionEnd = "END_VAR";

std::uint32_t endOffsetOf(const ASTNode& node) {
  return node.pos().offset() + rangeOf(node).length;
}

// The type as a declaration names it; empty if it has no name.
std::string typeNameOf(const Type& type) {
  if (isAnonymous(type) || asOpenArray(&type) != nullptr) return {};
  if (const auto* const pointer = dynamic_cast<const PointerType*>(&type)) {
    if (pointer->target == nullptr) return {};  // NULL
  }
  std::string name = displayName(&type);
  const auto* const text = dynamic_cast<const StringType*>(&type);
  if (text != nullptr && text->length() != StringType::kDefaultLength) {
    name += '[' + std::to_string(text->length()) + ']';
  }
  // The names of long types are abbreviated, and those of types of values are none.
  const bool whole = name.find("...") == std::string::npos && name.find('(') == std::string::npos;
  return whole && !name.empty() ? name : std::string();
}

class MissingDeclaration {
 public:
  MissingDeclaration(const AnalysedProgram& program, const Diagnostic& message)
      : program_(program),
        message_(message),
        text_(program.sources.text(message.range.begin.file())),
        unit_(unitAround(program.tree, message.range.begin)) {}

  void addTo(std::vector<Fix>& fixes) const {
    const ASTNode* const body = unit_ != nullptr ? unit_->leaf(Unit::kBody) : nullptr;
    const bool inBody = body != nullptr && body->leavesCount() > 0 &&
                        message_.range.begin.offset() >= body->pos().offset();
    const ASTNode* const name = inBody ? nodeWith(program_.tree, message_.range) : nullptr;
    if (name == nullptr || TreeBuilder::source(*name).find('#') != std::string_view::npos) return;
    bool likely = true;
    const std::string type = typeOf(*name, likely);
    if (type.empty()) return;
    const std::string written(TreeBuilder::source(*name));
    fixes.push_back({"Declare '" + written + "' as " + type,
                     {edit(written + " : " + type + ";", body->leaf(0)->pos().offset())},
                     likely});
  }

 private:
  std::string typeOf(const ASTNode& name, bool& likely) const {
    if (name.type() == vel::ASTType::Expression) {
      const bool variable = static_cast<const Expr&>(name).kind == ExprKind::Variable;
      const Type* const type = variable ? expectedType(program_.services, name) : nullptr;
      return type != nullptr ? typeNameOf(*type) : std::string();
    }
    const Call* const call = callIn(name.parent());
    const bool statement = call != nullptr && call->leaf(0) == &name && call->parent() != nullptr &&
                           statementKindOf(*call->parent()) == StatementKind::Call;
    return statement ? blockFor(*call, likely) : std::string();
  }

  // The only function block that has all parameters that the call names.
  std::string blockFor(const Call& call, bool& likely) const {
    const UnitSymbol* found = nullptr;
    for (const UnitSymbol* const unit : program_.services.symbols.units()) {
      if (unit->type() != vel::POUType::FunctionBlock || !takes(*unit, call)) continue;
      if (found != nullptr) return {};
      found = unit;
    }
    if (found == nullptr) return {};
    // There may be others in the library, which are known once the program names them.
    likely = !found->standard;
    return found->name();
  }

  static bool takes(const UnitSymbol& unit, const Call& call) {
    const ASTNode* const list = call.parameters();
    if (list == nullptr || list->leavesCount() == 0) return false;
    for (int i = 0; i < list->leavesCount(); ++i) {
      if (kindOf(*list->leaf(i)) != NodeKind::Argument) return false;
      const auto& argument = static_cast<const Argument&>(*list->leaf(i));
      const VarSymbol* const parameter = unit.variable(TreeBuilder::source(*argument.leaf(0)));
      if (parameter == nullptr || !parameter->isParameter()) return false;
      if ((parameter->role == Role::Output) != argument.output) return false;
    }
    return true;
  }

  // At the end of the last section of plain variables, or in a new section behind the others.
  // `statement` is where the statements of the unit begin.
  TextEdit edit(const std::string& declaration, std::uint32_t statement) const {
    const ASTNode* const blocks = unit_->leaf(Unit::kVarBlocks);
    const ASTNode* const result = unit_->leaf(Unit::kReturnType);
    std::uint32_t end = endOffsetOf(result != nullptr ? *result : *unit_->leaf(Unit::kName));
    for (int i = blocks != nullptr ? blocks->leavesCount() - 1 : -1; i >= 0; --i) {
      const auto& block = static_cast<const VarBlock&>(*blocks->leaf(i));
      end = std::max(end, endOffsetOf(block));
      const bool plain = block.section == VarSection::Var && !block.constant &&
                         block.retention == Retention::Unsaid;
      const std::string_view last = TreeBuilder::source(block);
      const bool closed =
          last.size() > kSectionEnd.size() &&
          equalIgnoringCase(last.substr(last.size() - kSectionEnd.size()), kSectionEnd);
      if (plain && closed) return inSection(block, declaration);
    }
    return behind(end, declaration, statement);
  }

  TextEdit inserted(std::uint32_t offset, std::string text) const {
    return {{vel::TextLocation(message_.range.begin.file(), offset), 0}, std::move(text)};
  }

  TextEdit inSection(const VarBlock& block, const std::string& declaration) const {
    const std::uint32_t closer =
        endOffsetOf(block) - static_cast<std::uint32_t>(kSectionEnd.size());
    if (!beginsLine(text_, closer)) return inserted(closer, declaration + " ");
    const std::string_view outer = indentationAt(text_, closer);
    std::string indentation = std::string(outer) + "  ";
    for (int i = 0; i < block.leavesCount(); ++i) {
      const std::uint32_t neighbour = block.leaf(i)->pos().offset();
      if (beginsLine(text_, neighbour)) indentation = indentationAt(text_, neighbour);
    }
    const auto line = closer - static_cast<std::uint32_t>(outer.size());
    return inserted(line, indentation + declaration + std::string(lineBreakAt(text_, closer)));
  }

  TextEdit behind(std::uint32_t end, const std::string& declaration,
                  std::uint32_t statement) const {
    const std::size_t mark = text_.find_first_not_of(kBlanks, end);
    if (mark < statement && text_[mark] == ';') end = static_cast<std::uint32_t>(mark) + 1;
    const std::string_view between = text_.substr(end, statement - end);
    if (between.find('\n') == std::string::npos) {
      const bool comment = between.find_first_not_of(kBlanks) != std::string::npos;
      if (comment) return inserted(statement, "VAR " + declaration + " END_VAR ");
      return inserted(end, " VAR " + declaration + " END_VAR");
    }
    const std::string lineBreak(lineBreakAt(text_, end));
    const std::string outer(indentationAt(text_, unit_->pos().offset()));
    // As far as the statements, if these are indented.
    const std::string_view body = indentationAt(text_, statement);
    const bool indented = beginsLine(text_, statement) && body.size() > outer.size();
    const std::string inner = indented ? std::string(body) : outer + "  ";
    const std::string lines = outer + "VAR" + lineBreak + inner + declaration + lineBreak + outer +
                              std::string(kSectionEnd);
    Insertion insertion = lineInsertion(text_, lines, end, statement);
    return inserted(insertion.offset, std::move(insertion.text));
  }

  const AnalysedProgram& program_;
  const Diagnostic& message_;
  std::string_view text_;
  const Unit* unit_;
};

}  // namespace

void addDeclarations(const AnalysedProgram& program, const Diagnostic& message,
                     std::vector<Fix>& fixes) {
  if (message.code == message::kUnknownName.code) MissingDeclaration(program, message).addTo(fixes);
}

}  // namespace refhost
