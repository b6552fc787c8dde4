#include "refhost/editor/conversion_fixes.h"

#include <string>
#include <string_view>
#include <utility>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "refhost/editor/expected_type.h"
#include "refhost/editor/node_search.h"
#include "refhost/semantics/arithmetic.h"

namespace refhost {

using Type = vel::SymbolDataType;
using vel::TreeBuilder;

namespace {

constexpr std::string_view kTo = "_TO_";

// "INT" of an INT and of a subrange of it; empty for types that no operator converts.
std::string elementaryName(const Type* type) {
  const bool elementary = type != nullptr && elementaryType(type->dataType()) != nullptr;
  return elementary ? displayName(type) : std::string();
}

class Conversions {
 public:
  Conversions(const AnalysedProgram& program, const Diagnostic& message, std::vector<Fix>& fixes)
      : program_(program), message_(message), fixes_(fixes) {}

  void add() {
    switch (message_.code) {
      case message::kCannotConvert.code:
        return addRefused();
      case vel::message::kToUnsigned.code:
      case vel::message::kToSigned.code:
      case message::kInformationLoss.code:
        return addImplicit();
      case vel::message::kNotInteger.code:
        return addInteger(vel::message::kNotInteger);
      case message::kCondition.code:
        return convertNode(BasicDataType::Bool);
      case message::kSelector.code:
        return addSelector();
      case message::kSubscriptType.code:
        return convertNode(BasicDataType::DInt);
      case message::kOperandTypes.code:
        return addOperands();
      case message::kIntegerDivision.code:
        return addDividend();
      default:
        return;
    }
  }

 private:
  using Arguments = std::vector<std::string_view>;

  Arguments arguments(const MessageFormat& format) const {
    return argumentsIn(format, message_.text);
  }
  const ASTNode* node() const { return nodeWith(program_.tree, message_.range); }
  const Type* elementary(BasicDataType type) const {
    return program_.services.symbols.elementary(type);
  }
  const Type* typeNamed(std::string_view name) const {
    return program_.services.symbols.dataType(name);
  }
  bool hasOperator(const std::string& name) const {
    return program_.services.operators->findOperator(name) != nullptr;
  }

  // The operator that converts; empty for none.
  std::string conversion(const Type* from, const Type* to) const {
    const std::string source = elementaryName(from);
    const std::string target = elementaryName(to);
    if (source.empty() || target.empty() || source == target) return {};
    // No operator converts between STRING and WSTRING.
    if (isText(from->dataType()) && isText(to->dataType())) return {};
    std::string typed = source;
    typed.append(kTo).append(target);
    if (hasOperator(typed)) return typed;
    std::string any = "TO_" + target;
    return hasOperator(any) ? any : std::string();
  }

  void convert(const ASTNode& value, const Type* to) { convert(value, dataTypeOf(value), to); }

  void convert(const ASTNode& value, const Type* from, const Type* to) {
    if (literalOf(value) != nullptr || isUntypedNumber(value)) return;
    const std::string name = conversion(from, to);
    if (name.empty()) return;
    const bool truth = to->dataType() == BasicDataType::Bool;
    if (const auto operands = bitOperands(value); truth && !operands.empty()) {
      return convertAll(operands, to);
    }
    const SourceRange range = rangeOf(value);
    Fix fix{"Convert with " + name, {}};
    // The right side of an assignment may stand in parentheses.
    const bool bare = message_.range.length <= range.length || node() != &value;
    const vel::TextLocation end(range.begin.file(), range.begin.offset() + range.length);
    fix.edits.push_back({{bare ? range.begin : message_.range.begin, 0}, bare ? name + "(" : name});
    if (bare) fix.edits.push_back({{end, 0}, ")"});
    fixes_.push_back(std::move(fix));
  }

  // The operands of the expression if it is a NOT, AND, OR or XOR of bits that was meant for truth
  // values; none for others, such as one with a literal, which selects bits.
  static std::vector<const ASTNode*> bitOperands(const ASTNode& value) {
    std::vector<const ASTNode*> found;
    if (value.type() != vel::ASTType::Expression) return found;
    const auto& expression = static_cast<const Expr&>(value);
    const bool logic = isBinary(value) && formOf(expression.kind) == ExprForm::Logic;
    if (expression.kind != ExprKind::Not && !logic) return found;
    for (int i = 0; i < value.leavesCount(); ++i) {
      const ASTNode& leaf = *value.leaf(i);
      if (isUntypedNumber(leaf) || literalOf(leaf) != nullptr) return {};
      const auto inner = bitOperands(leaf);
      if (inner.empty()) found.push_back(&leaf);
      found.insert(found.end(), inner.begin(), inner.end());
    }
    return found;
  }

  void convertAll(const std::vector<const ASTNode*>& values, const Type* to) {
    const std::size_t first = fixes_.size();
    for (const ASTNode* const value : values) convert(*value, to);
    if (fixes_.size() - first != values.size()) return fixes_.resize(first);
    Fix& fix = fixes_[first];
    for (std::size_t i = first + 1; i < fixes_.size(); ++i) {
      Fix& other = fixes_[i];
      if (fix.title != other.title)
        fix.title += ", " + other.title.substr(other.title.find(" with ") + 6);
      fix.edits.insert(fix.edits.end(), other.edits.begin(), other.edits.end());
    }
    fixes_.resize(first + 1);
  }

  void convertNode(BasicDataType to) {
    if (const ASTNode* const value = node()) convert(*value, elementary(to));
  }

  // Only where all labels are integers; a text is none.
  void addSelector() {
    const ASTNode* const selector = node();
    const ASTNode* const choice = selector != nullptr ? selector->parent() : nullptr;
    const Type* const type = selector != nullptr ? dataTypeOf(*selector) : nullptr;
    if (choice == nullptr || type == nullptr || isText(type->dataType())) return;
    for (int i = 1; i < choice->leavesCount(); ++i) {
      const ASTNode* const branch = choice->leaf(i);
      if (branch == nullptr || kindOf(*branch) != NodeKind::CaseElement) continue;
      const ASTNode& labels = *branch->leaf(0);
      for (int label = 0; label < labels.leavesCount(); ++label) {
        if (!isIntegerLabel(*labels.leaf(label))) return;
      }
    }
    convertNode(holderOf(type->dataType()));
  }

  static bool isIntegerLabel(const ASTNode& label) {
    if (kindOf(label) == NodeKind::Range) return isIntegerLabel(*label.leaf(0));
    const Literal* const literal = literalOf(label);
    if (literal != nullptr) return isInteger(literal->value.type);
    const Type* const type = dataTypeOf(label);
    return type == nullptr || isInteger(type->dataType());
  }

  // The integer type that holds the usual values of a type that is none.
  static BasicDataType holderOf(BasicDataType type) {
    switch (type) {
      case BasicDataType::LReal:
      case BasicDataType::LTime:
      case BasicDataType::Date:
      case BasicDataType::DateAndTime:
        return BasicDataType::LInt;
      default:
        return BasicDataType::DInt;
    }
  }

  // Milliseconds are what a TIME counts.
  void writeTime(const ASTNode& number) {
    const std::string_view text = TreeBuilder::source(number);
    const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    if (!digits || text.size() > 9) return;
    const std::string written = "T#" + std::string(text) + "ms";
    fixes_.push_back({"Write '" + written + "'", {{rangeOf(number), written}}});
  }

  void addRefused() {
    if (const Arguments said = arguments(message::kCannotConvert); !said.empty()) {
      return convertNamed(said[0], said[1]);
    }
    if (const Arguments said = arguments(vel::message::kExpectBool); !said.empty()) {
      const ASTNode* const operand = operandWritten(said[0]);
      if (operand != nullptr) convert(*operand, elementary(BasicDataType::Bool));
    } else if (!arguments(vel::message::kTypeMismatch).empty()) {
      renameConversion();
    } else {
      addInteger(vel::message::kNotShiftable);
    }
  }

  void addImplicit() {
    for (const MessageFormat* const format :
         {&vel::message::kToUnsigned, &message::kInformationLoss}) {
      const Arguments said = arguments(*format);
      if (!said.empty()) return convertNamed(said[0], said[1]);
    }
  }

  // The value at the place of the message if it is of the type that the message names, else the
  // operand of the conversion that stands there.
  void convertNamed(std::string_view from, std::string_view to) {
    const ASTNode* const value = node();
    if (value == nullptr) return;
    const Type* const type = dataTypeOf(*value);
    const Type* const named = typeNamed(from);
    const Type* const wanted = typeNamed(to);
    if (wanted != nullptr && wanted->dataType() == BasicDataType::Time) writeTime(*value);
    if (named == nullptr) return;
    if (type != nullptr && type->dataType() == named->dataType()) {
      return convert(convertible(*value, *type), type, typeNamed(to));
    }
    renameConversion();
  }

  // The value, or the call that chooses between it and others of its type: it is the result that is
  // to be converted then.
  static const ASTNode& convertible(const ASTNode& value, const Type& type) {
    const ASTNode* const list = value.parent();
    const bool operand = list != nullptr && list->type() == vel::ASTType::ParameterList;
    const Call* const call = operand ? callIn(list->parent()) : nullptr;
    if (call == nullptr || call->op() == nullptr || !call->traits()->chooses()) return value;
    for (int i = call->traits()->firstChoice; i < list->leavesCount(); ++i) {
      const Type* const other = dataTypeOf(*list->leaf(i));
      const bool alike = other != nullptr && other->dataType() == type.dataType();
      if (list->leaf(i) != &value && !alike) return value;
    }
    return *call;
  }

  // The operand of the call at the place of the message that is written so.
  const ASTNode* operandWritten(std::string_view text) const {
    const Call* const call = callIn(node());
    const ASTNode* const list = call != nullptr ? call->parameters() : nullptr;
    for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
      if (TreeBuilder::source(*list->leaf(i)) == text) return list->leaf(i);
    }
    return nullptr;
  }

  // `INT_TO_REAL(d)` of a DINT becomes `DINT_TO_REAL(d)`.
  void renameConversion() {
    const Call* const call = callIn(node());
    const ASTNode* const list = call != nullptr ? call->parameters() : nullptr;
    if (list == nullptr || list->leavesCount() != 1 || call->op() == nullptr) return;
    const std::string& name = call->op()->name;
    const std::size_t split = name.find(kTo);
    if (split == std::string::npos || isUntypedNumber(*list->leaf(0))) return;
    const Type* const to = typeNamed(std::string_view(name).substr(split + kTo.size()));
    const std::string fitting = conversion(dataTypeOf(*list->leaf(0)), to);
    if (fitting.empty() || fitting == name || !suits(*node(), *to)) return;
    fixes_.push_back({"Convert with " + fitting, {{rangeOf(*call->leaf(0)), fitting}}});
  }

  void addInteger(const MessageFormat& format) {
    const Arguments said = arguments(format);
    if (said.empty()) return;
    const ASTNode* const operand = operandWritten(said[1]);
    if (operand == nullptr) return;
    const ASTNode& list = *operand->parent();
    const bool shifted = list.leaf(0) == operand && list.leavesCount() == 2;
    const Type* const wanted = shifted ? expectedType(program_.services, *node()) : nullptr;
    const bool integer = wanted != nullptr && isInteger(wanted->dataType());
    convert(*operand, integer ? wanted : elementary(BasicDataType::Int));
  }

  // One of the operands becomes of the type of the other one.
  void addOperands() {
    const ASTNode* whole = node();
    if (const Call* const call = callIn(whole)) {
      if (call->operation != nullptr) whole = call->operation;
    }
    if (whole == nullptr || !isBinary(*whole)) return;
    const auto& binary = static_cast<const Expr&>(*whole);
    const std::size_t first = fixes_.size();
    offerOperand(binary, *binary.leaf(0), *binary.leaf(1));
    offerOperand(binary, *binary.leaf(1), *binary.leaf(0));
    for (std::size_t i = first; i < fixes_.size(); ++i)
      fixes_[i].likely = fixes_.size() - first == 1;
  }

  void offerOperand(const Expr& binary, const ASTNode& operand, const ASTNode& other) {
    const Type* to = typeHolding(program_.services, other);
    const Type* const from = dataTypeOf(operand);
    if (to == nullptr || from == nullptr) return;
    const bool compared = isComparison(binary.kind);
    const bool time = to->dataType() == BasicDataType::Time && takes(binary.kind, to->dataType());
    if (time && (compared || suits(binary, *to))) writeTime(operand);
    to = wideEnough(binary, *from, to);
    if (to == nullptr || !takes(binary.kind, to->dataType())) return;
    if (compared || suits(binary, *to)) convert(operand, to);
  }

  // The type, or a wider integer that holds the operand's values and suits the surroundings as
  // well. Null for a time that would not fit.
  const Type* wideEnough(const Expr& binary, const Type& from, const Type* to) const {
    const BasicDataType source = from.dataType();
    const bool time = elementaryType(source) != nullptr && !isNumber(source) && !isText(source) &&
                      source != BasicDataType::Bool;
    if (!isInteger(to->dataType()) || (!time && !isFloat(source))) return to;
    const BasicDataType holder = holderOf(source);
    if (widens(holder, to->dataType())) return to;
    const Type* const wanted =
        isComparison(binary.kind) ? nullptr : expectedType(program_.services, binary);
    const bool fits =
        wanted == nullptr || !isInteger(wanted->dataType()) || widens(holder, wanted->dataType());
    return fits ? elementary(holder) : time ? nullptr : to;
  }

  // False if the surroundings of the expression refuse a value of the type.
  bool suits(const ASTNode& expression, const Type& type) const {
    const Type* const wanted = expectedType(program_.services, expression);
    if (wanted == nullptr) return true;
    const BasicDataType target = wanted->dataType();
    const bool narrows = isInteger(target) && isInteger(type.dataType());
    return narrows || rateConversion(target, type.dataType(), nullptr) != rating::kMismatch;
  }

  // True if the operator takes two operands of the type.
  static bool takes(ExprKind kind, BasicDataType type) {
    switch (formOf(kind)) {
      case ExprForm::Arithmetic:
        if (isDuration(type)) return kind == ExprKind::Add || kind == ExprKind::Subtract;
        return kind == ExprKind::Modulo ? isInteger(type) : isNumber(type);
      case ExprForm::Comparison:
        return elementaryType(type) != nullptr;
      case ExprForm::Logic:
        if (kind == ExprKind::AndThen || kind == ExprKind::OrElse) {
          return type == BasicDataType::Bool;
        }
        return type == BasicDataType::Bool || isInteger(type);
      default:
        return false;
    }
  }

  // A division in the type of its result keeps the fraction.
  void addDividend() {
    const ASTNode* const division = node();
    const Arguments said = arguments(message::kIntegerDivision);
    if (division == nullptr || !isBinary(*division) || said.empty()) return;
    const ASTNode& dividend = *division->leaf(0);
    const bool number = isUntypedNumber(dividend);
    const Type* const to = typeNamed(said[1]);
    // The quotient may be what a conversion from an integer converts.
    if (to != nullptr && suits(*division, *to)) {
      convert(number ? *division->leaf(1) : dividend, to);
    }
  }

  const AnalysedProgram& program_;
  const Diagnostic& message_;
  std::vector<Fix>& fixes_;
};

}  // namespace

void addConversions(const AnalysedProgram& program, const Diagnostic& message,
                    std::vector<Fix>& fixes) {
  Conversions(program, message, fixes).add();
}

}  // namespace refhost
