// TYPE declarations and the types of variables.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "refhost/semantics/part.h"

namespace refhost {

// A type, null when it is unknown, and the initial value of its declaration, null for none.
struct ResolvedType {
  vel::SymbolDataType* type = nullptr;
  Expr* initial = nullptr;
};

// TYPE declarations, in whatever order (declared_types.cpp), and specifications of types
// (types.cpp).
class Types : public Part {
 public:
  using Part::Part;

  void declareTypes();
  // `name` is that of the TYPE declaration, empty for an anonymous type.
  ResolvedType resolve(ASTNode& node, const std::string& name = {});
  // The same for the type of a variable or member, which may also be a REFERENCE TO: then the type
  // is that of its target. `openArrays`: or an ARRAY[*].
  ResolvedType resolveVariable(ASTNode& node, bool openArrays);
  // True of the name of a type that is not among the symbols yet, but will be.
  bool mayName(std::string_view name) const;
  // Resolves the declared enumeration that `node` names, alone or by one of its values. False if
  // there is none, or if it has been resolved or is being resolved.
  bool resolveEnumerationOf(const ASTNode& node);
  // The initial values of types and members; to be called once all types are declared.
  void analyseTypeInitials();

 private:
  // Leaves of a TypeDecl.
  static constexpr int kDeclaredSpec = 1;
  static constexpr int kDeclaredInitial = 2;

  struct DeclaredType {
    explicit DeclaredType(ASTNode* declaration) : node(declaration) {}
    ASTNode* node;  // the TypeDecl
    ResolvedType resolved;
    Progress progress = Progress::Waiting;
  };
  struct MemberInitial {
    const Type* type = nullptr;
    VarDecl* declaration = nullptr;
    UnitSymbol* unit = nullptr;  // in which the structure is declared
  };

  // The name of a TYPE declaration, a member or a value of an enumeration.
  static const char* nameOf(const ASTNode& declaration) {
    return static_cast<const Text&>(*declaration.leaf(0)).text();
  }
  static bool isSpecOf(const ASTNode& declaration, vel::ASTType kind);
  static bool hasValue(const ASTNode& spec, std::string_view name);
  ResolvedType resolveDeclared(DeclaredType& declared);
  std::vector<DeclaredType*> neededBy(const DeclaredType& declared);
  DeclaredType* enumerationNamedBy(const ASTNode& node);
  void excuseValues(const DeclaredType& declared);
  void resolveNow(DeclaredType& declared);
  ResolvedType resolveName(const TypeSpec& spec);
  Type* resolveString(TypeSpec& spec);
  std::optional<Bounds> resolveRange(ASTNode& range);
  Type* resolveSubrange(TypeSpec& spec, const std::string& name);
  Type* resolveEnumeration(TypeSpec& spec, const std::string& name);
  Type* resolveArray(TypeSpec& spec);
  Type* resolveOpenArray(TypeSpec& spec);
  void declareMembers(StructType& structure, ASTNode& spec);
  std::string anonymousName(const std::string& kind);

  FoldedMap<DeclaredType> declaredTypes_;
  FoldedMap<DeclaredType*> enumerationOf_;  // by the names of the values
  std::vector<MemberInitial> memberInitials_;
};

}  // namespace refhost
