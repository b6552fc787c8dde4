// Makes the nodes of the tree as the parser recognises them.
//
// Values of the parser are small and trivial: a node and its height, or a list's
// place on the factory's stack. An expression or a statement that would be higher
// than kMaxNesting is not made: the error is reported, and the parser recovers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "refhost/syntax/span.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/tree.h"

namespace refhost {

struct Value {
  ASTNode* node;  // null for an element left out or not understood
  std::uint32_t height;
};

struct NodeList {
  std::uint32_t start;  // on the factory's stack
  std::uint32_t count;
};

struct Qualifiers {
  bool constant;
  bool retain;
};

// Copied by words: the parser copies what it has just written, and a read of both words at
// once would have to wait until they are out of the processor's store buffer. The translation
// of 100,000 calls takes 2 to 3 % longer with the copies that the compiler makes.
union SemanticValue {
  SemanticValue() : words{} {}
  SemanticValue(const SemanticValue& other) : words{other.words[0], other.words[1]} {}
  SemanticValue& operator=(const SemanticValue& other) {
    if (this == &other) return *this;
    words[0] = other.words[0];
    words[1] = other.words[1];
    return *this;
  }

  std::uint64_t words[2];
  Value value;
  NodeList list;
  VarSection section;
  Qualifiers qualifiers;
  Edge edge;
};
static_assert(sizeof(SemanticValue) == 2 * sizeof(std::uint64_t));

class TreeFactory {
 public:
  TreeFactory(std::string_view text, std::uint32_t file, Tree& tree, SyntaxErrors& errors);

  // Lists. What is appended after an inner list was given up goes in its place.
  NodeList list() const;
  NodeList append(NodeList list, Value value);  // a value without a node is left out
  NodeList append(NodeList list, Value first, Value second);
  // The list on top of the stack, with `value` in front.
  NodeList prepend(Value value, NodeList list);

  // Expressions. A call is a Call until it is part of something.
  Value name(Span span);
  Value variable(Span span);
  Value member(Span span, Value base, Span memberSpan);
  Value bit(Span span, Value base, Span number);
  Value part(Span span, Value base, Span address);  // `.%X3`, the bit 3, or `.%B1`
  Value element(Span span, Value base, NodeList subscripts);
  Value dereference(Span span, Value base);
  Value literal(Span span);  // or a value of an enumeration, `Color#Red`
  Value signedNumber(Span span, Span number);
  Value parenthesised(Span span, Value value);  // the value, a level higher
  Value unary(ExprKind kind, Span span, Value value);
  Value binary(ExprKind kind, Span span, Value left, Value right);
  Value call(Span span, Value callee, Span parameters, NodeList arguments);
  Value callOfType(Span span, Span callee, Value type);  // `SIZEOF(STRING[9])`
  Value operand(Value value);                            // a Call under its wrapper
  Value input(Span span, Span formalName, Value actual);
  Value output(Span span, Span formalName, Value actual, bool negated);

  // Declarations.
  Value namedType(Span span);
  Value stringType(Span span, Span typeName, Value length);
  Value subrangeType(Span span, Span base, Value range);
  Value enumType(Span span, Span base, NodeList values);
  Value enumValue(Span span, Span valueName, Value value);
  Value arrayType(Span span, NodeList dimensions, Value element);
  Value structType(Span span, NodeList members);
  Value pointerType(Span span, vel::ASTType kind, Value target);
  Value typeDecl(Span span, Span typeName, Value type, Value initial);
  void typeDeclaration(Value declaration);
  Value arrayValue(Span span, NodeList elements);
  Value structValue(Span span, NodeList fields);
  Value repeat(Span span, Span count, NodeList elements);
  Value varDecl(Span span, NodeList names, Value address, Value type, Value initial);
  Value edgeDetecting(Value declaration, Edge edge);
  Value varBlock(Span span, Qualifiers qualifiers, NodeList declarations);
  Value inSection(VarSection section, Value block);
  Value varBlocks(Span span, NodeList blocks);
  void globals(Value block);
  void unit(Span span, vel::POUType type, Value unitName, Value returnType, Value blocks,
            Value body);

  // Configurations.
  void task(Span span, Span taskName, Span parameters, NodeList arguments);
  void programInstance(Span span, Span instanceName, Value task, Span program, Span parameters,
                       NodeList arguments);

  // Statements. Without a condition, a selector or bounds there is no statement.
  Value statementList(Span span, NodeList statements);
  Value assignment(Span span, Value target, Span sourceSpan, Value source);
  Value callStatement(Span span, Value call);
  Value jump(StatementKind kind, Span span);
  Value ifStatement(Span span, Value condition, Value then, NodeList elsifs, Value otherwise);
  Value caseStatement(Span span, Value selector, NodeList list, Value otherwise);
  Value caseLabels(Span span, NodeList labels);
  Value range(Span span, Value low, Value high);
  Value forStatement(Span span, Value start, Value end, Value step, Value body);
  Value loop(StatementKind kind, Span span, Value first, Value second);

 private:
  bool followsPragma(Span span, std::string_view pragma) const;
  std::string_view textOf(Span span) const {
    return text_.substr(span.begin, span.end - span.begin);
  }
  std::uint32_t higher(Span span, std::uint32_t height) const;
  Span spanOf(const Value& value) const;
  Value link(ASTNode* node, Span span, const Value* leaves, std::size_t count);
  Value finish(ASTNode* node, Span span, const Value* leaves, std::size_t count);
  Value finish(ASTNode* node, Span span, std::initializer_list<Value> leaves);
  Value expression(ExprKind kind, Span span, std::initializer_list<Value> leaves);
  const LiteralValue& literalValue(Span span, std::string_view text);
  Value constant(Span span, std::string_view text);
  Value argument(Argument* node, Span span, Span formalName, Value actual);
  Value listNode(NodeKind kind, Span empty, const Value* items, std::size_t count);
  // A node of the value and the items of the list, in this order.
  Value finishAll(ASTNode* node, Span span, Value first, NodeList rest);
  const Value* items(NodeList list) const { return stack_.data() + list.start; }

  std::string_view text_;
  std::uint32_t file_;
  Tree& tree_;
  SyntaxErrors& errors_;
  // By their text, since programs repeat them.
  std::unordered_map<std::string_view, const LiteralValue*> literals_;
  std::vector<Value> stack_;    // items of the lists that are not yet leaves
  std::vector<Value> scratch_;  // leaves of the node being made
};

}  // namespace refhost
