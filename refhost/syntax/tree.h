// The syntax tree: the kinds of nodes and their leaves. Nodes live in the arena of their Tree and
// are freed with it.
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
#include "hostkit/folding.h"
#include "hostkit/literal.h"
#include "hostkit/operator_traits.h"
#include "hostkit/tree_builder.h"
#include "refhost/diagnostic.h"
#include "refhost/kit.h"
#include "refhost/syntax/expression_kinds.h"
#include "refhost/syntax/retention.h"

namespace vel {
class STOperator;
}

namespace refhost {

using vel::ASTNode;
using vel::BasicDataType;

// Kinds of nodes in addition to vel::ASTType, which the plugin knows. In brackets are the leaves;
// one marked "?" is null if the source omits it. An ELSE list that is omitted is no leaf at all.
enum class NodeKind : std::int32_t {
  Text = 100,       // ASTText
  Unit,             // Unit: [name Text, return type spec?, VarBlocks, StatementList]
  VarBlocks,        // [VarBlock...]
  VarBlock,         // VarBlock: [VarDecl...]
  VarDecl,          // VarDecl: [TypeSpec?, initial value Expr?, address Text?, name Text...]
  Invocation,       // Call: [callee: Text, or Expr for the access to an instance;
                    //        ParameterList, or TypeSpec if the operand is a type]
  Argument,         // Argument: [formal name Text, Expr], in a ParameterList
  StatementList,    // [statement...], whose kinds are StatementKind
  CaseElement,      // [CaseLabels, StatementList]
  CaseLabels,       // [Expr or Range...]
  Range,            // [low Expr, high Expr]; none for any bounds, in an ArrayTypeSpec
  TypeDecl,         // [name Text, TypeSpec, initial value Expr?]
  EnumValue,        // [name Text, value Expr?], in an EnumTypeSpec
  Task,             // ConfigurationItem: [name Text, Call of this name with the properties]
  ProgramInstance,  // ConfigurationItem: [name Text, Call of the PROGRAM, task's name Text?]
  BoundTypeSpec,    // TypeSpec of a REFERENCE TO: [target TypeSpec]
};

// Kinds of statements, the nodes in a StatementList. Every switch over them names them all, so
// that a new kind does not compile until it is handled.
enum class StatementKind : std::int32_t {
  Assignment = 200,  // Assignment
  Bind,              // REF=: [reference Expr, Expr of what it is bound to]
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

constexpr vel::ASTType astType(NodeKind kind) { return static_cast<vel::ASTType>(kind); }
constexpr vel::ASTType astType(StatementKind kind) { return static_cast<vel::ASTType>(kind); }
inline NodeKind kindOf(const ASTNode& node) { return static_cast<NodeKind>(node.type()); }
inline StatementKind statementKindOf(const ASTNode& statement) {
  return static_cast<StatementKind>(statement.type());
}

// A node without data other than its kind and leaves.
class Node final : public ASTNode {
 public:
  explicit Node(NodeKind kind) : ASTNode(astType(kind)) {}
  explicit Node(StatementKind kind) : ASTNode(astType(kind)) {}
};

// [target Expr, source: Expr, or Call if that is the whole right side]
class Assignment final : public ASTNode {
 public:
  explicit Assignment(const SourceRange& source)
      : ASTNode(astType(StatementKind::Assignment)), sourceRange(source) {}

  SourceRange sourceRange;  // of the right side, its parentheses included
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
  std::uint8_t partBits = 0;  // of a Part: 1, 8, 16, 32 or 64
  // The number of binary operators in the left-recursive chain that ends here, this one included;
  // 0 for other expressions.
  std::uint32_t chain = 0;
  // Set by the analysis: the type, null for none, and the symbol of a Variable or a Member.
  vel::SymbolDataType* dataType = nullptr;
  vel::Symbol* symbol = nullptr;
  const TypedConstant* constant = nullptr;  // null for none, and for a literal
};

// A longer chain is split into pieces of this many operators; each piece is computed before the
// next, so that the nesting in C stays shallow.
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
struct TestFunction;
class UnitSymbol;

class Argument final : public ASTNode {
 public:
  Argument(bool isOutput, bool isNegated)
      : ASTNode(astType(NodeKind::Argument)), output(isOutput), negated(isNegated) {}

  bool output;   // `name => variable`
  bool negated;  // `NOT name => variable`
};

// The callee that a name refers to: at most one of operator, standard function, function and
// function of tests.
struct Callee {
  vel::STOperator* op = nullptr;           // of the plugin
  const OperatorTraits* traits = nullptr;  // of the operator; null without one
  const StandardFunction* standard = nullptr;
  UnitSymbol* function = nullptr;
  const TestFunction* test = nullptr;
};

class Call final : public ::Invocation {
 public:
  Call() : Invocation(astType(NodeKind::Invocation)) {}

  bool analysed = false;
  bool accepted = false;
  bool givesAddress = false;  // a call of ADR or REF, which returns a pointer to its operand
  // Set by the analysis: the result type, null for none, and the callee or the instance.
  vel::SymbolDataType* dataType = nullptr;
  const Callee* callee = nullptr;
  Expr* instance = nullptr;                 // the access to the function block instance
  const TypedConstant* constant = nullptr;  // the value, null if it is not known
  // The expression that replaces the call of a standard function, and the comparison that an
  // assertion makes; null for none.
  Expr* operation = nullptr;
  // `EN := condition` and `ENO => variable`, which the analysis removes from the parameter list;
  // null if the call omits them.
  Argument* enable = nullptr;
  Argument* enabled = nullptr;

  // Null when the operand is a type: `SIZEOF(INT)`.
  ASTNode* parameters() const {
    ASTNode* const list = leavesCount() > 1 ? leaf(1) : nullptr;
    return list != nullptr && list->type() == vel::ASTType::ParameterList ? list : nullptr;
  }
  // Null for a callee of another kind.
  vel::STOperator* op() const { return callee != nullptr ? callee->op : nullptr; }
  const OperatorTraits* traits() const { return callee != nullptr ? callee->traits : nullptr; }
  const StandardFunction* standard() const {
    return callee != nullptr ? callee->standard : nullptr;
  }
  UnitSymbol* function() const { return callee != nullptr ? callee->function : nullptr; }
  const TestFunction* testFunction() const { return callee != nullptr ? callee->test : nullptr; }
};

class TypeSpec final : public ASTNode {
 public:
  TypeSpec(vel::ASTType kind, const char* typeName) : ASTNode(kind), name(typeName) {}

  const char* name;                         // as below; zero-terminated
  vel::SymbolDataType* dataType = nullptr;  // set by the analysis; null if it is unknown
};
// The leaves and the name by kind:
//   NamedTypeSpec      none; the type's name as written
//   StringTypeSpec     [length Expr?]; STRING or WSTRING as written
//   SubrangeTypeSpec   [Range]; the base type's name
//   EnumTypeSpec       [EnumValue...]; the base type's name, empty for none
//   ArrayTypeSpec      [element TypeSpec, Range...]
//   StructTypeSpec     [VarDecl...]
//   PointerTypeSpec, ReferenceTypeSpec, BoundTypeSpec  [target TypeSpec]

// True of an ARRAY[*].
bool isOpenArraySpec(const ASTNode& spec);
inline bool isReferenceSpec(const ASTNode& spec) { return kindOf(spec) == NodeKind::BoundTypeSpec; }

enum class VarSection : std::uint8_t { Var, Input, Output, InOut, Temp, Global, External };

class VarBlock final : public ASTNode {
 public:
  VarBlock() : ASTNode(astType(NodeKind::VarBlock)) {}

  VarSection section = VarSection::Var;
  bool constant = false;
  Retention retention = Retention::Unsaid;
};

// R_EDGE or F_EDGE of an input: the body sees only the edges of its value.
enum class Edge : std::uint8_t { None, Rising, Falling };

class VarDecl final : public ::VarDeclaration {
 public:
  // Leaves before the names.
  static constexpr int kType = 0, kInitial = 1, kAddress = 2, kFirstName = 3;

  VarDecl() : VarDeclaration(astType(NodeKind::VarDecl)) {}

  bool valueMissing = false;  // its initial value could not be parsed
  bool bitParameter = false;  // preceded by the pragma {bitparam}
  Edge edge = Edge::None;
  bool binds = false;  // the initial value follows REF=
};

// The parts of unit tests, which are units of their own.
enum class TestPart : std::uint8_t { None, Setup, Test, Teardown };

class Unit final : public ::POUDeclaration {
 public:
  static constexpr int kName = 0, kReturnType = 1, kVarBlocks = 2, kBody = 3;

  Unit(const char* name, vel::POUType type) : POUDeclaration(astType(NodeKind::Unit), name, type) {}

  bool incomplete = false;  // it has parts that are not supported, which may declare names
  TestPart testPart = TestPart::None;
};

// A task or a program instance.
class ConfigurationItem final : public ASTNode {
 public:
  explicit ConfigurationItem(NodeKind kind) : ASTNode(astType(kind)) {}

  // Names; null for none.
  const Text* configuration = nullptr;
  const Text* resource = nullptr;
  Retention retention = Retention::Unsaid;  // of an instance
};

// A CONFIGURATION or a RESOURCE.
struct ConfigurationPart {
  const Text* name;
  const Text* configuration;  // around a RESOURCE, null if it has no name
  bool isResource;
  SourceRange range;
};

// True if `matches` is true for `root` or one of its descendants. The first leaf is visited by a
// loop, so that long chains of operators take no stack.
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

// The nodes of one translation and their arena.
class Tree {
 public:
  Tree();
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  template <typename T, typename... Args>
  T* make(Args&&... args) {
    return new (arena_.allocate(sizeof(T), alignof(T))) T(std::forward<Args>(args)...);
  }
  void setLeaves(ASTNode& node, const std::vector<ASTNode*>& leaves);
  void setLeaves(ASTNode& node, std::initializer_list<ASTNode*> leaves);
  // A zero-terminated copy that lives as long as the tree. Equal texts share one copy.
  const char* intern(std::string_view text);
  // Makes a binary operator and sets its `chain`.
  Expr* makeBinary(ExprKind kind, ASTNode* left, ASTNode* right);
  // Stores the value of a Literal, which refers to it.
  const LiteralValue& keep(LiteralValue value);
  // Memory in the arena for the leaves of one node; null if `count` is 0.
  ASTNode** allocateLeaves(std::size_t count);

  // In source order.
  std::vector<Unit*> units;
  std::vector<Unit*> tests;  // each SETUP, TEST and TEARDOWN, with a number in its name
  std::vector<Node*> types;  // TypeDecl nodes
  std::vector<VarBlock*> globals;
  std::vector<VarBlock*> configured;   // VAR_CONFIG, whose variables are named by an Expr
  std::vector<const Text*> resources;  // the names of RESOURCEs
  std::vector<ConfigurationPart> configurations;  // those with a name, resources first
  std::vector<ConfigurationItem*> tasks;
  std::vector<ConfigurationItem*> instances;  // of PROGRAMs, in configurations
  // Names of declarations that are not supported.
  FoldedMap<bool> refused;
  bool incomplete = false;  // declarations are missing because of syntax errors

 private:
  std::pmr::monotonic_buffer_resource arena_;
  std::unordered_set<std::string_view> names_;  // each in the arena, zero-terminated
  std::deque<LiteralValue> literals_;
};

}  // namespace refhost
