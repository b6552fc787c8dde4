// The reference host's syntax tree: what each kind of node holds and what its
// leaves are. Nodes live in the arena of their Tree and are never freed singly.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "host/ast.h"
#include "host/declaration.h"
#include "host/expression.h"
#include "host/symbol.h"
#include "hostkit/literal.h"
#include "hostkit/operator_traits.h"
#include "hostkit/tree_builder.h"
#include "refhost/kit.h"
#include "refhost/syntax/expression_kinds.h"

namespace vel {
class STOperator;
}

namespace refhost {

using vel::ASTNode;
using vel::BasicDataType;

// Kinds of nodes beside those that the plugin knows (vel::ASTType).
enum class NodeKind : std::int32_t {
  Text = 100,       // ASTText
  Unit,             // Unit: [name Text, return type spec?, VarBlocks, StatementList]
  VarBlocks,        // [VarBlock...]
  VarBlock,         // VarBlock: [VarDecl...]
  VarDecl,          // VarDecl: [TypeSpec?, initial value Expr?, address Text?, name Text...]
  Invocation,       // Call: [callee: Text, or Expr for an access that is called;
                    //        ParameterList or, for a type as operand, TypeSpec]
  Argument,         // Argument: [formal name Text, Expr], in a ParameterList
  StatementList,    // [statement...], each of a StatementKind
  CaseElement,      // [CaseLabels, StatementList]
  CaseLabels,       // [Expr or Range...]
  Range,            // [low Expr, high Expr]
  TypeDecl,         // [name Text, TypeSpec, initial value Expr?]
  EnumValue,        // [name Text, value Expr?], in an EnumTypeSpec
  Task,             // [name Text, Call of its name]
  ProgramInstance,  // [name Text, Call of the PROGRAM, task's name Text?]
};

// Kinds of statements, the nodes in a StatementList. Every switch over them names them all, so
// that one which forgets a new kind does not compile.
enum class StatementKind : std::int32_t {
  Assignment = 200,  // Assignment
  Call,              // [Call]
  If,                // [condition, StatementList, (condition, StatementList)..., else list?]
  Case,              // [selector, CaseElement..., else StatementList?]
  For,               // [Assignment of the start, end Expr, step Expr?, StatementList]
  While,             // [condition, StatementList]
  Repeat,            // [StatementList, condition]
  Exit,
  Continue,
  Return,
};
// A leaf marked "?" is null where the source leaves it out; an else list is simply
// absent.

constexpr vel::ASTType astType(NodeKind kind) { return static_cast<vel::ASTType>(kind); }
constexpr vel::ASTType astType(StatementKind kind) { return static_cast<vel::ASTType>(kind); }
inline NodeKind kindOf(const ASTNode& node) { return static_cast<NodeKind>(node.type()); }
inline StatementKind statementKindOf(const ASTNode& statement) {
  return static_cast<StatementKind>(statement.type());
}

// A node that is its kind and its leaves.
class Node final : public ASTNode {
 public:
  explicit Node(NodeKind kind) : ASTNode(astType(kind)) {}
  explicit Node(StatementKind kind) : ASTNode(astType(kind)) {}
};

// [target Expr, source: Expr, or Call when that is the whole right side]
class Assignment final : public ASTNode {
 public:
  explicit Assignment(vel::TextLocation start)
      : ASTNode(astType(StatementKind::Assignment)), sourceStart(start) {}

  vel::TextLocation sourceStart;  // of the right side, its parentheses included
};

class Text final : public vel::ASTText {
 public:
  // `text` is zero-terminated and lives as long as the tree.
  explicit Text(const char* text) : ASTText(astType(NodeKind::Text), text) {}
};

class TypedConstant;

class Expr final : public ::Expression {
 public:
  explicit Expr(ExprKind expressionKind)
      : Expression(operatorOf(expressionKind)), kind(expressionKind) {}

  const ExprKind kind;
  bool analysed = false;
  // Of a binary operator: those on its left side that are written one behind the other, and it.
  std::uint32_t chain = 0;
  // Set by the analysis: the type (null: none) and what a Variable or a Member names.
  vel::SymbolDataType* dataType = nullptr;
  vel::Symbol* symbol = nullptr;
  const TypedConstant* constant = nullptr;  // null for a literal, which is its own value, too
};

// Operators of a chain that are computed one inside the other; of a longer one the first so many
// are computed before the next.
constexpr std::uint32_t kChainPiece = 32;

inline bool isBinary(const ASTNode& node) {
  return node.type() == vel::ASTType::Expression && static_cast<const Expr&>(node).chain != 0;
}

class Literal final : public ::ConstantValue {
 public:
  explicit Literal(const LiteralValue& literal);

  const LiteralValue& value;  // kept by the tree
};

struct StandardFunction;
class UnitSymbol;

class Argument final : public ASTNode {
 public:
  Argument(bool isOutput, bool isNegated)
      : ASTNode(astType(NodeKind::Argument)), output(isOutput), negated(isNegated) {}

  bool output;   // `name => variable`
  bool negated;  // `NOT name => variable`
};

// What the name of a call means: one of these at most.
struct Callee {
  vel::STOperator* op = nullptr;           // of the plugin
  const OperatorTraits* traits = nullptr;  // of the operator; null with it
  const StandardFunction* standard = nullptr;
  UnitSymbol* function = nullptr;
};

class Call final : public ::Invocation {
 public:
  Call() : Invocation(astType(NodeKind::Invocation)) {}

  bool analysed = false;
  bool accepted = false;
  bool givesAddress = false;  // of ADR or REF: a pointer to its operand
  // Set by the analysis: the result type (null: none) and what is called, by its name or by an
  // access to an instance.
  vel::SymbolDataType* dataType = nullptr;
  const Callee* callee = nullptr;
  Expr* instance = nullptr;   // the access to the instance that is called
  Expr* operation = nullptr;  // of a standard function that stands for an operation
  // `EN := condition` and `ENO => variable`, which the analysis takes out of the parameters;
  // null when not given.
  Argument* enable = nullptr;
  Argument* enabled = nullptr;

  // Each is null when something else is called.
  vel::STOperator* op() const { return callee != nullptr ? callee->op : nullptr; }
  const OperatorTraits* traits() const { return callee != nullptr ? callee->traits : nullptr; }
  const StandardFunction* standard() const {
    return callee != nullptr ? callee->standard : nullptr;
  }
  UnitSymbol* function() const { return callee != nullptr ? callee->function : nullptr; }
};

class TypeSpec final : public ASTNode {
 public:
  TypeSpec(vel::ASTType kind, const char* typeName) : ASTNode(kind), name(typeName) {}

  const char* name;                         // as below; zero-terminated
  vel::SymbolDataType* dataType = nullptr;  // set by the analysis; null: not known
};
// Leaves by kind, and what its name is:
//   NamedTypeSpec      none; the type's name as written
//   StringTypeSpec     [length Expr?]; STRING or WSTRING as written
//   SubrangeTypeSpec   [Range]; the base type's name
//   EnumTypeSpec       [EnumValue...]; the base type's name, empty when not given
//   ArrayTypeSpec      [element TypeSpec, Range...]
//   StructTypeSpec     [VarDecl...]
//   PointerTypeSpec, ReferenceTypeSpec  [target TypeSpec]

enum class VarSection : std::uint8_t { Var, Input, Output, InOut, Temp, Global, External };

class VarBlock final : public ASTNode {
 public:
  VarBlock() : ASTNode(astType(NodeKind::VarBlock)) {}

  VarSection section = VarSection::Var;
  bool constant = false;
  bool retain = false;
};

// Of an input: R_EDGE or F_EDGE, by which the body sees only the changes of its value.
enum class Edge : std::uint8_t { None, Rising, Falling };

class VarDecl final : public ::VarDeclaration {
 public:
  // Leaves before the names.
  static constexpr int kType = 0, kInitial = 1, kAddress = 2, kFirstName = 3;

  VarDecl() : VarDeclaration(astType(NodeKind::VarDecl)) {}

  bool bitParameter = false;  // the pragma {bitparam} stands before it
  Edge edge = Edge::None;
};

class Unit final : public ::POUDeclaration {
 public:
  static constexpr int kName = 0, kReturnType = 1, kVarBlocks = 2, kBody = 3;

  Unit(const char* name, vel::POUType type) : POUDeclaration(astType(NodeKind::Unit), name, type) {}
};

// Whether `matches` is true of `root` or of something in it. Chains of operators, long on their
// left sides, take no stack.
template <typename Matches>
bool anyNode(const ASTNode& root, const Matches& matches) {
  const ASTNode* node = &root;
  while (node != nullptr) {
    if (matches(*node)) return true;
    if (kindOf(*node) == NodeKind::Invocation) {
      const auto& call = static_cast<const Call&>(*node);
      for (const ASTNode* const part :
           {static_cast<const ASTNode*>(call.instance), static_cast<const ASTNode*>(call.enable),
            static_cast<const ASTNode*>(call.enabled)}) {
        if (part == nullptr || part == call.leaf(0)) continue;
        if (anyNode(*part, matches)) return true;
      }
    }
    for (int i = 1; i < node->leavesCount(); ++i) {
      if (node->leaf(i) != nullptr && anyNode(*node->leaf(i), matches)) return true;
    }
    node = node->leavesCount() > 0 ? node->leaf(0) : nullptr;
  }
  return false;
}

// The arena of one translation, and what the parser has found.
class Tree {
 public:
  Tree();
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  template <typename T, typename... Args>
  T* make(Args&&... args) {
    return new (arena_.allocate(sizeof(T), alignof(T))) T(std::forward<Args>(args)...);
  }
  // Makes `leaves` the leaves of `node`.
  void setLeaves(ASTNode& node, const std::vector<ASTNode*>& leaves);
  void setLeaves(ASTNode& node, std::initializer_list<ASTNode*> leaves);
  // A zero-terminated copy that lives as long as the tree; equal texts share one.
  const char* intern(std::string_view text);
  // A binary operator, with its place in a chain.
  Expr* makeBinary(ExprKind kind, ASTNode* left, ASTNode* right);
  // Keeps a value for a Literal to refer to.
  const LiteralValue& keep(LiteralValue value);
  // Room in the arena for the leaves of one node; null for none.
  ASTNode** allocateLeaves(std::size_t count);

  // In source order.
  std::vector<Unit*> units;
  std::vector<Node*> types;  // TypeDecl nodes
  std::vector<VarBlock*> globals;
  std::vector<Node*> tasks;
  std::vector<Node*> instances;  // of PROGRAMs, in configurations

 private:
  std::pmr::monotonic_buffer_resource arena_;
  std::unordered_set<std::string_view> names_;  // each in the arena, zero-terminated
  std::deque<LiteralValue> literals_;
};

}  // namespace refhost
