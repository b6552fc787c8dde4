// Symbols: the declared names of a program. All symbols belong to the host, except a SymbolPOU
// that the plugin has created and the host has not yet taken. The plugin does not call the
// operations marked "for the host".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/basic_data_type.h"
#include "host/declaration.h"
#include "host/device_memory.h"
#include "host/export.h"

namespace vel {

class InternalInterface;
class SymbolFBType;

class VEL_HOST_API Symbol {
 public:
  // Kinds of symbols. A lookup takes one to restrict what it finds.
  enum Type : std::int32_t {
    All = -1,
    None = 0,
    DataType = 1,
    Variable = 2,
    Pou = 4,
    Typed = 64,
  };

  virtual ~Symbol();  // slot 1
  virtual void reserved2() {}
  virtual void reserved3() {}
  Symbol(const Symbol&) = delete;
  Symbol& operator=(const Symbol&) = delete;

  // As declared. For the host.
  const std::string& name() const;
  Type symbolType() const;

 protected:
  Symbol(Type type, const std::string& name);

 private:
  std::string name_;
  Type type_;
};

class VEL_HOST_API SymbolDataType : public Symbol {
 public:
  SymbolDataType(const std::string& name, BasicDataType type);
  ~SymbolDataType() override;

  // Slot 4: the type's name, e.g. "BYTE".
  virtual std::string typeName() const;

  BasicDataType dataType() const;

 private:
  BasicDataType type_;
};

// The data type of a function block.
class VEL_HOST_API SymbolFBType : public SymbolDataType {
 public:
  explicit SymbolFBType(const std::string& name);
  ~SymbolFBType() override;
};

// A symbol of kind 64: a name that stands for a data type.
class VEL_HOST_API SymbolTyped : public Symbol {
 public:
  SymbolTyped(const std::string& name, SymbolDataType* type);
  ~SymbolTyped() override;

  // Slot 4: null when the type is not known.
  virtual SymbolDataType* dataType() const;

 private:
  SymbolDataType* type_;
};

// A symbol that occupies memory of the generated program.
class VEL_HOST_API SymbolMemUnit : public Symbol {
 public:
  ~SymbolMemUnit() override;

  // Size and alignment in bytes. For the host.
  int memByteSize() const;
  // Returns the size that was set before.
  int setMemByteSize(int bytes);
  int effectiveAlignByteSize() const;
  // The device address at which the variable is declared (AT); the empty address otherwise.
  HeapAddress iecAddress() const;
  // True when the declaration gives the address.
  bool isFixedAddress() const;
  // The offset in the memory image: of a variable at a fixed address, and in bytes of the
  // state of MEP and MEF where the unit keeps it there. 0 for all other variables.
  HeapRawAddr backendAddress() const;

 protected:
  SymbolMemUnit(Type type, const std::string& name);

  int memByteSize_ = 0;
  int alignByteSize_ = 1;
  bool fixedAddress_ = false;
  HeapAddress iecAddress_;
  HeapRawAddr backendAddress_;
};

class VEL_HOST_API SymbolVar : public SymbolMemUnit {
 public:
  // Kinds of variables that the plugin distinguishes.
  static constexpr std::int32_t kInOut = 4;
  static constexpr std::int32_t kBitParameter = 8;
  static constexpr std::int32_t kInput = 12;

  SymbolVar(const std::string& name, SymbolDataType* type, std::int32_t varKind);
  ~SymbolVar() override;

  // Null when the declaration names no known type.
  SymbolDataType* dataType() const;
  std::int32_t varKind() const;

 private:
  SymbolDataType* dataType_;
  std::int32_t varKind_;
};

class VEL_HOST_API VarContainer : public SymbolMemUnit {
 public:
  ~VarContainer() override;

  int paramsCount() const;
  // Parameter `i` in order of declaration, from 0 to paramsCount() - 1; may be null.
  SymbolVar* param(int i) const;
  // The parameter of that name, regardless of letter case; null when there is none.
  SymbolVar* param(const std::string& name) const;

 protected:
  VarContainer(Type type, const std::string& name);

  std::vector<SymbolVar*> params_;  // not owned
};

class VEL_HOST_API SymbolPOU : public VarContainer {
 public:
  // `returnVar` is not owned and may be null.
  SymbolPOU(InternalInterface* ii, const std::string& name, POUType type, SymbolVar* returnVar);
  ~SymbolPOU() override;

  // For the host.
  virtual bool resetLayout(int generation);
  virtual void setCompiled(int state);
  virtual Symbol* visitChild(const std::string& name, int* cursor);
  virtual void setBackendAddress(const HeapRawAddr& address);

  POUType type() const;
  // The data type of a function block; null for every other unit.
  SymbolFBType* fbType() const;
  // As passed to the constructor. For the host.
  SymbolVar* returnVariable() const;
  InternalInterface* services() const;

 protected:
  SymbolFBType* fbType_ = nullptr;  // not owned

 private:
  InternalInterface* ii_;
  POUType type_;
  SymbolVar* returnVar_;
};

}  // namespace vel
