// Declarations of program units and variables.
#pragma once

#include <cstdint>

#include "host/ast.h"
#include "host/export.h"

namespace vel {

class InternalInterface;
class SymbolDataType;
class VarContainer;

// Kinds of program units.
enum class POUType : std::int32_t {
  Program = 1,
  Function = 2,
  FunctionBlock = 3,
  Operator = 4,  // created by the plugin, for each operator that needs a unit
};

}  // namespace vel

class VEL_HOST_API POUDeclaration : public vel::ASTNode {
 public:
  ~POUDeclaration() override;

  // Zero-terminated, as written; empty or null for a unit without a name. The plugin
  // copies the string before its next request to the host.
  const char* name() const;
  vel::POUType type() const;

  // Where this unit keeps the state of MEP and MEF: 1 in device memory, 2 in static
  // variables, 3 in the instance (when type() is FunctionBlock).
  int kind;

 protected:
  POUDeclaration(vel::ASTType nodeKind, const char* name, vel::POUType type);

 private:
  const char* name_;
  vel::POUType type_;
};

class VEL_HOST_API VarDeclaration : public vel::ASTNode {
 public:
  ~VarDeclaration() override;

  // The data type that a type specification denotes in `scope`; owned by the host. Null, with
  // `*ok` set to false, when it names no type.
  static vel::SymbolDataType* astSpec2SymbolDataType(vel::InternalInterface* ii,
                                                     vel::VarContainer* scope,
                                                     vel::ASTNode* typeSpec, bool* ok);

 protected:
  explicit VarDeclaration(vel::ASTType nodeKind);
};
