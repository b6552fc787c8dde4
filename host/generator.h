// The code generator that the host passes to `generate` of an operator.
#pragma once

#include <string>

#include "host/basic_data_type.h"
#include "host/export.h"

namespace vel {

class ASTNode;
class InternalInterface;
class SymbolDataType;
class SymbolVar;

// The positions of the virtual operations are part of the contract. Comments give the slot
// numbers; the operations named reservedN belong to the host.
class VEL_HOST_API GenClanAPI {
 public:
  virtual ~GenClanAPI();  // slot 1
  virtual void reserved2() {}
  virtual void reserved3() {}
  virtual void reserved4() {}
  virtual void reserved5() {}
  virtual void reserved6() {}
  // Slot 7: the value of a generator option; the plugin asks for "localio.addr" only.
  // Zero-terminated, valid until the next request to the host; empty when unset, never null.
  virtual const char* optionText(const char* name) = 0;
  virtual void reserved8() {}
  virtual void reserved9() {}
  virtual void reserved10() {}
  virtual void reserved11() {}
  virtual void reserved12() {}
  virtual void reserved13() {}
  virtual void reserved14() {}
  virtual void reserved15() {}
  virtual void reserved16() {}
  virtual void reserved17() {}
  virtual void reserved18() {}
  virtual void reserved19() {}
  virtual void reserved20() {}
  // Slot 21: the C spelling of a data type, never null.
  virtual std::string typeText(SymbolDataType* type) = 0;
  // Slot 22: the C lvalue of a variable, never null, in the unit `pouName`. Flag 16, the
  // only one that the plugin passes, asks for an lvalue whose address can be taken.
  virtual std::string variableText(SymbolVar* variable, int flag, const std::string& pouName) = 0;
  virtual void reserved23() {}
  virtual void reserved24() {}
  virtual void reserved25() {}
  // Slot 26: the C text of an expression, never null. The plugin puts it in parentheses,
  // except in the calls of MUX, ROL, ROR, MEP, MEF, ADR, GETBITOFPARAM, SETBITOFPARAM and
  // direct I/O.
  virtual std::string expressionText(ASTNode* expression) = 0;
  // Slot 27: called after each literal among the arguments of MUX. `text` is the call as
  // generated up to and including the literal, `type` its type. The result is discarded.
  virtual std::string prepareConstant(const std::string& text, BasicDataType type) = 0;
};

class VEL_HOST_API Generator : public GenClanAPI {
 public:
  explicit Generator(InternalInterface* services);
  ~Generator() override;

  InternalInterface* ii;  // not owned, never null
};

}  // namespace vel
