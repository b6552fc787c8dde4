#include "refhost/syntax/tree_factory.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <utility>

#include "grammar.h"
#include "hostkit/elementary_types.h"
#include "hostkit/encoding.h"
#include "refhost/messages.h"
#include "refhost/spelling.h"
#include "refhost/syntax/parser.h"
#include "refhost/syntax/part_sizes.h"
#include "refhost/syntax/unsupported.h"

namespace refhost {

namespace {

bool isCall(const Value& value) {
  return value.node != nullptr && kindOf(*value.node) == NodeKind::Invocation;
}

// `Color#Red` is a typed literal to the scanner, but not of an elementary type.
bool namesEnumValue(std::string_view text) {
  const std::size_t mark = text.find('#');
  if (mark == std::string_view::npos || text.find_first_of("'\"") < mark) return false;
  LiteralValue value;
  return mark + 1 < text.size() && isLetter(text[mark + 1]) &&
         parseLiteral(text, value) == LiteralError::NotALiteral;
}

}  // namespace

TreeFactory::TreeFactory(std::string_view text, std::uint32_t file, Tree& tree,
                         SyntaxErrors& errors)
    : text_(text), file_(file), tree_(tree), errors_(errors) {}

Span TreeFactory::spanOf(const Value& value) const {
  const std::uint32_t begin = value.node->pos().offset();
  const auto length = static_cast<std::uint32_t>(vel::TreeBuilder::source(*value.node).size());
  return {begin, begin + length};
}

// The height of a node above one of `height`; reports an error when it is too high.
std::uint32_t TreeFactory::higher(Span span, std::uint32_t height) const {
  if (height >= std::uint32_t{kMaxNesting}) {
    errors_.tooDeep(span);
    throw grammar::Parser::syntax_error(span, "");
  }
  return height + 1;
}

// Sets the span and the leaves of a node. Lists and declarations are made by this function: they do
// not add to the height.
Value TreeFactory::link(ASTNode* node, Span span, const Value* leaves, std::size_t count) {
  std::uint32_t height = 0;
  ASTNode** nodes = tree_.allocateLeaves(count);
  for (std::size_t i = 0; i < count; ++i) {
    nodes[i] = leaves[i].node;
    height = std::max(height, leaves[i].height);
  }
  vel::TreeBuilder::setSpan(*node, vel::TextLocation(file_, span.begin), textOf(span));
  vel::TreeBuilder::setLeaves(*node, nodes, static_cast<std::int32_t>(count));
  return {node, height};
}

// The same for expressions and statements, which add to the height and may exceed kMaxNesting.
Value TreeFactory::finish(ASTNode* node, Span span, const Value* leaves, std::size_t count) {
  Value value = link(node, span, leaves, count);
  value.height = higher(span, value.height);
  return value;
}

Value TreeFactory::finish(ASTNode* node, Span span, std::initializer_list<Value> leaves) {
  return finish(node, span, leaves.begin(), leaves.size());
}

NodeList TreeFactory::list() const { return {static_cast<std::uint32_t>(stack_.size()), 0}; }

NodeList TreeFactory::append(NodeList list, Value value) {
  if (value.node == nullptr) return list;
  stack_.resize(list.start + list.count);
  stack_.push_back(value);
  return {list.start, list.count + 1};
}

NodeList TreeFactory::append(NodeList list, Value first, Value second) {
  return first.node == nullptr || second.node == nullptr ? list
                                                         : append(append(list, first), second);
}

NodeList TreeFactory::prepend(Value value, NodeList list) {
  value = operand(value);
  stack_.resize(list.start + list.count);
  stack_.insert(stack_.begin() + static_cast<std::ptrdiff_t>(list.start), value);
  return {list.start, list.count + 1};
}

// The node of a list spans its items, or `empty` if it has none.
Value TreeFactory::listNode(NodeKind kind, Span empty, const Value* items, std::size_t count) {
  const Span span = count == 0 ? empty : Span{spanOf(items[0]).begin, spanOf(items[count - 1]).end};
  return link(tree_.make<Node>(kind), span, items, count);
}

Value TreeFactory::finishAll(ASTNode* node, Span span, Value first, NodeList rest) {
  scratch_.assign({first});
  scratch_.insert(scratch_.end(), items(rest), items(rest) + rest.count);
  return finish(node, span, scratch_.data(), scratch_.size());
}

// --- Expressions ---

Value TreeFactory::name(Span span) {
  return link(tree_.make<Text>(tree_.intern(textOf(span))), span, nullptr, 0);
}

Value TreeFactory::expression(ExprKind kind, Span span, std::initializer_list<Value> leaves) {
  return finish(tree_.make<Expr>(kind), span, leaves);
}

Value TreeFactory::variable(Span span) { return expression(ExprKind::Variable, span, {}); }

Value TreeFactory::member(Span span, Value base, Span memberSpan) {
  auto* node = tree_.make<Expr>(ExprKind::Member);
  return finish(node, span, {base, name(memberSpan)});
}

Value TreeFactory::bit(Span span, Value base, Span number) { return part(span, base, number, 1); }

Value TreeFactory::part(Span span, Value base, Span address) {
  const std::string_view text = textOf(address);
  // `.%B1.3` is the bit 3 of a byte, but a single address to the scanner.
  const std::size_t dot = text.rfind('.');
  if (dot != std::string_view::npos) {
    const std::uint32_t end = address.begin + static_cast<std::uint32_t>(dot);
    base = part({span.begin, end}, base, {address.begin, end});
    return bit(span, base, {end + 1, address.end});
  }
  for (const PartSize& size : kPartSizes) {
    if (toUpper(text[1]) != size.letter || isLetter(text[2])) continue;
    return part(span, base, {address.begin + 2, address.end}, size.bits);
  }
  errors_.syntax(address, std::string("'").append(text).append(
                              "' is no part of a value: %X, %B, %W, %D and %L are"));
  return unknownPart(span, base);
}

// The part of `bits` bits that has this number: 0 for the least significant one.
Value TreeFactory::part(Span span, Value base, Span number, std::uint8_t bits) {
  std::int32_t index = 0;
  const std::string_view digits = textOf(number);
  if (digits.empty()) {
    const Span letter{number.begin - 2, number.end};
    errors_.syntax(
        letter, std::string("the number is missing behind '").append(textOf(letter)).append("'"));
    return unknownPart(span, base);
  }
  const char* end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, index);
  if (result.ec != std::errc() || result.ptr != end ||
      index > std::numeric_limits<std::int32_t>::max() / bits) {
    errors_.add(number, message::kBadLiteral, digits);
    return unknownPart(span, base);
  }
  auto* node = tree_.make<Expr>(ExprKind::Part);
  node->partBits = bits;
  vel::TreeBuilder::setBitAccessOffset(*node, index * bits);
  return finish(node, span, {base});
}

// Has no type, so that it causes no further errors.
Value TreeFactory::unknownPart(Span span, Value base) {
  auto* node = tree_.make<Expr>(ExprKind::Part);
  node->partBits = 0;
  return finish(node, span, {base});
}

Value TreeFactory::element(Span span, Value base, NodeList subscripts) {
  auto* node = tree_.make<Expr>(ExprKind::Element);
  return finishAll(node, span, base, subscripts);
}

Value TreeFactory::dereference(Span span, Value base) {
  auto* node = tree_.make<Expr>(ExprKind::Dereference);
  return finish(node, span, {base});
}

// `text` is that of the literal without white space after its sign. An invalid literal is reported
// and gets no type, so that it causes no further errors.
const LiteralValue& TreeFactory::literalValue(Span span, std::string_view text) {
  const auto known = literals_.find(text);
  if (known != literals_.end()) return *known->second;
  LiteralValue value;
  LiteralError error = parseLiteral(text, value);
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  if (error == LiteralError::None && value.type == BasicDataType::WString &&
      !std::all_of(text.begin(), text.end(), isAscii) && !hostkit::isUtf8(text_)) {
    std::string characters;
    for (const char c : text) hostkit::appendUtf8(static_cast<unsigned char>(c), characters);
    error = parseLiteral(characters, value);
  }
  if (error != LiteralError::None) {
    const std::string_view type = text.substr(0, text.find('#'));
    if (isUnsupportedType(type)) {
      errors_.add(span, message::kTypeNotSupported, type);
    } else {
      const bool isRange = error == LiteralError::OutOfRange;
      Remarks* const said =
          errors_.add(span, isRange ? message::kLiteralRange : message::kBadLiteral, text);
      if (!isRange && said != nullptr) suggestType(span, text, *said);
      if (!isRange) errors_.muteDeclaration(span.end);
    }
    value = LiteralValue();
    value.type = BasicDataType::Undetermined;
    return tree_.keep(std::move(value));
  }
  const LiteralValue& kept = tree_.keep(std::move(value));
  literals_.emplace(tree_.intern(text), &kept);
  return kept;
}

// Suggests the nearest type with which the literal would be valid.
void TreeFactory::suggestType(Span span, std::string_view text, Remarks& said) const {
  const std::size_t mark = text.find('#');
  if (mark == std::string_view::npos || textOf(span).substr(0, mark) != text.substr(0, mark))
    return;
  const std::size_t sign = text[0] == '-' || text[0] == '+' ? 1 : 0;
  const std::string_view prefix = text.substr(sign, mark - sign);
  Spelling spelling(prefix);
  for (const auto& type : hostkit::elementaryTypes()) {
    LiteralValue value;
    const std::string meant =
        std::string(text.substr(0, sign)).append(type.name).append(text.substr(mark));
    if (parseLiteral(meant, value) == LiteralError::None) spelling.offer(type.name);
  }
  const Span where{span.begin + static_cast<std::uint32_t>(sign),
                   span.begin + static_cast<std::uint32_t>(mark)};
  if (!spelling.best().empty()) errors_.propose(said, where, spelling.best());
}

Value TreeFactory::constant(Span span, std::string_view text) {
  auto* node = tree_.make<Literal>(literalValue(span, text));
  return expression(ExprKind::Literal, span, {link(node, span, nullptr, 0)});
}

Value TreeFactory::literal(Span span) {
  const std::string_view text = textOf(span);
  return namesEnumValue(text) ? variable(span) : constant(span, text);
}

Value TreeFactory::signedNumber(Span span, Span number) {
  std::string text(1, text_[span.begin]);
  return constant(span, text.append(textOf(number)));
}

Value TreeFactory::operand(Value value) {
  return isCall(value) ? expression(ExprKind::Call, spanOf(value), {value}) : value;
}

Value TreeFactory::parenthesised(Span span, Value value) {
  return {value.node, higher(span, value.height)};
}

Value TreeFactory::unary(ExprKind kind, Span span, Value value) {
  return expression(kind, span, {operand(value)});
}

Value TreeFactory::binary(ExprKind kind, Span span, Value left, Value right) {
  left = operand(left);
  right = operand(right);
  Expr* const node = tree_.makeBinary(kind, left.node, right.node);
  vel::TreeBuilder::setSpan(*node, vel::TextLocation(file_, span.begin), textOf(span));
  if (node->chain <= kChainPiece) return {node, higher(span, std::max(left.height, right.height))};
  // The height within a piece after the first is limited by the length of a piece.
  return {node, std::max(left.height, higher(span, right.height + kChainPiece))};
}

Value TreeFactory::call(Span span, Value callee, Span parameters, NodeList arguments) {
  auto* list = tree_.make<Node>(static_cast<NodeKind>(vel::ASTType::ParameterList));
  const Value parameterList = finish(list, parameters, items(arguments), arguments.count);
  return finish(tree_.make<Call>(), span, {callee, parameterList});
}

Value TreeFactory::callOfType(Span span, Span callee, Value type) {
  return finish(tree_.make<Call>(), span, {name(callee), type});
}

Value TreeFactory::argument(Argument* node, Span span, Span formalName, Value actual) {
  return finish(node, span, {name(formalName), operand(actual)});
}

Value TreeFactory::input(Span span, Span formalName, Value actual) {
  return argument(tree_.make<Argument>(false, false), span, formalName, actual);
}

Value TreeFactory::output(Span span, Span formalName, Value actual, bool negated) {
  return argument(tree_.make<Argument>(true, negated), span, formalName, actual);
}

// --- Declarations ---

Value TreeFactory::statementList(Span span, NodeList statements) {
  return listNode(NodeKind::StatementList, span, items(statements), statements.count);
}

Value TreeFactory::assignment(Span span, Value target, Span sourceSpan, Value source) {
  auto* node = tree_.make<Assignment>(
      SourceRange{vel::TextLocation(file_, sourceSpan.begin), sourceSpan.end - sourceSpan.begin});
  return finish(node, span, {target, source});
}

Value TreeFactory::bindingStatement(Span span, Value reference, Value place) {
  return finish(tree_.make<Node>(StatementKind::Bind), span, {reference, operand(place)});
}

Value TreeFactory::callStatement(Span span, Value call) {
  if (!isCall(call)) return kNoValue;
  return finish(tree_.make<Node>(StatementKind::Call), span, {call});
}

Value TreeFactory::jump(StatementKind kind, Span span) {
  return finish(tree_.make<Node>(kind), span, {});
}

Value TreeFactory::ifStatement(Span span, Value condition, Value then, NodeList elsifs,
                               Value otherwise) {
  if (condition.node == nullptr) return kNoValue;
  scratch_.assign({operand(condition), then});
  scratch_.insert(scratch_.end(), items(elsifs), items(elsifs) + elsifs.count);
  if (otherwise.node != nullptr) scratch_.push_back(otherwise);
  return finish(tree_.make<Node>(StatementKind::If), span, scratch_.data(), scratch_.size());
}

Value TreeFactory::caseLabels(Span span, NodeList labels) {
  return finish(tree_.make<Node>(NodeKind::CaseLabels), span, items(labels), labels.count);
}

Value TreeFactory::range(Span span, Value low, Value high) {
  return finish(tree_.make<Node>(NodeKind::Range), span, {operand(low), operand(high)});
}

// `list` contains labels and statements in source order.
Value TreeFactory::caseStatement(Span span, Value selector, NodeList list, Value otherwise) {
  if (selector.node == nullptr) return kNoValue;
  const auto isLabels = [](const Value& item) {
    return kindOf(*item.node) == NodeKind::CaseLabels;
  };
  const Value* const end = items(list) + list.count;
  const Value* labels = std::find_if(items(list), end, isLabels);
  if (labels != items(list) && !errors_.reportedInUnit())
    errors_.add(spanOf(*items(list)), message::kNoCaseLabel, "");
  scratch_.assign({operand(selector)});
  while (labels != end) {
    const Value* const next = std::find_if(labels + 1, end, isLabels);
    const Span afterLabels{spanOf(*labels).end, spanOf(*labels).end};
    const Value body = listNode(NodeKind::StatementList, afterLabels, labels + 1,
                                static_cast<std::size_t>(next - labels - 1));
    const Span element{spanOf(*labels).begin, std::max(spanOf(*labels).end, spanOf(body).end)};
    scratch_.push_back(finish(tree_.make<Node>(NodeKind::CaseElement), element, {*labels, body}));
    labels = next;
  }
  if (otherwise.node != nullptr) scratch_.push_back(otherwise);
  return finish(tree_.make<Node>(StatementKind::Case), span, scratch_.data(), scratch_.size());
}

Value TreeFactory::anyRange(Span span) {
  return finish(tree_.make<Node>(NodeKind::Range), span, {});
}

Value TreeFactory::forStatement(Span span, Value start, Value end, Value step, Value body) {
  if (start.node == nullptr) return kNoValue;
  return finish(tree_.make<Node>(StatementKind::For), span,
                {start, operand(end), operand(step), body});
}

Value TreeFactory::loop(StatementKind kind, Span span, Value first, Value second) {
  if (first.node == nullptr || second.node == nullptr) return kNoValue;
  return finish(tree_.make<Node>(kind), span, {operand(first), operand(second)});
}

}  // namespace refhost
