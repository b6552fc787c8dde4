// The walk over the tree that finds the names in the sources.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "refhost/editor/occurrences.h"

namespace refhost {

// Appends the occurrences of all names to `found`, in the order of the tree. A name that the
// analysis has not resolved is looked up in the symbols.
class NameWalk {
 public:
  NameWalk(const AnalysedProgram& program, const Symbols& symbols, std::vector<Occurrence>& found)
      : program_(program), symbols_(symbols), found_(found) {}

  void run();

 private:
  using Lookup = Occurrence::Lookup;
  using Type = vel::SymbolDataType;

  static const Expr& exprAt(const ASTNode& node, int leaf) {
    return static_cast<const Expr&>(*node.leaf(leaf));
  }

  // The result is valid until the next one is added; null for a name without a symbol.
  Occurrence* add(vel::TextLocation begin, std::size_t length, SymbolId symbol, Lookup lookup);
  Occurrence* add(const ASTNode& name, SymbolId symbol, Lookup lookup);
  void declare(const ASTNode& name, bool writes = false);

  // Declarations.
  void walkUnit(const Unit& unit);
  void walkBlock(const VarBlock& block);
  void walkVariables(const ASTNode& declaration, bool external);
  void walkTypeDecl(const ASTNode& declaration);
  void walkType(const ASTNode& spec);
  void nameType(const ASTNode& spec, std::string_view name);
  SymbolId typeNamed(std::string_view name) const;
  // An initial value for a variable of the type, which may be null.
  void walkValue(const Expr& value, const Type* type);

  // Configurations.
  void walkTask(const ConfigurationItem& task);
  void walkInstance(const ConfigurationItem& instance);
  SymbolId partNamed(SymbolId owner, std::string_view name, SymbolKind kind) const;
  void walkConfigured(const ASTNode& entry);
  SymbolId rootNamed(std::string_view name, SymbolId resource) const;

  // Statements and expressions (expression_names.cpp).
  void walk(const ASTNode& node);
  void walkExpr(const Expr& whole, bool writes);
  void walkName(const Expr& expr, bool writes);
  SymbolId named(const Expr& name) const;
  bool walkMember(const Expr& expr, bool writes);
  const Type* typeOf(const Expr& expr) const;
  void walkCall(const Call& call);
  SymbolId calleeNamed(const Call& call, std::string_view name) const;
  SymbolId blockOf(const Type* type) const;
  void walkArguments(const Call& call, SymbolId unit);

  const AnalysedProgram& program_;
  const Symbols& symbols_;
  std::vector<Occurrence>& found_;
  SymbolId unit_ = kNoSymbol;  // that is walked
};

}  // namespace refhost
