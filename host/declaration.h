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
  Operator = 4,  // made by the plugin, one for each operator that needs one
};

}  // namespace vel

class VEL_HOST_API POUDeclaration : public vel::ASTNode {
 public:
  ~POUDeclaration() override;

  // Zero-terminated, as written; empty or null for a unit without a name. The plugin
  // copies it at once.
  const char* name() const;
  vel::POUType type() const;

  // Where the state of MEP and MEF in this unit lies: 1 in device memory, 2 in static
  // variables; 3 in the instance, when type() is a function block.
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

  // The data type that a type-specification node stands for in `scope`; owned by
  // the host. Null, and `*ok` false, when it names no type.
  static vel::SymbolDataType* astSpec2SymbolDataType(vel::InternalInterface* ii,
                                                     vel::VarContainer* scope,
                                                     vel::ASTNode* typeSpec, bool* ok);

 protected:
  explicit VarDeclaration(vel::ASTType nodeKind);
};
