// The operations of symbols and addresses that are the same in every host.
#include "host/symbol.h"
#include "hostkit/folding.h"

namespace vel {

namespace {
constexpr std::uint32_t kAllOnes = 0xFFFFFFFF;
}

HeapAddress::HeapAddress()
    : area(0), unitSize(kAllOnes), position(kAllOnes), bitIndex(kAllOnes), extra(0) {}
bool HeapAddress::isBitMode() const { return bitIndex != kAllOnes; }
JapanComponent::~JapanComponent() = default;

Symbol::Symbol(Type type, const std::string& name) : name_(name), type_(type) {}
Symbol::~Symbol() = default;
const std::string& Symbol::name() const { return name_; }
Symbol::Type Symbol::symbolType() const { return type_; }

SymbolDataType::SymbolDataType(const std::string& name, BasicDataType type)
    : Symbol(Symbol::DataType, name), type_(type) {}
SymbolDataType::~SymbolDataType() = default;
std::string SymbolDataType::typeName() const { return name(); }
BasicDataType SymbolDataType::dataType() const { return type_; }

SymbolFBType::SymbolFBType(const std::string& name)
    : SymbolDataType(name, BasicDataType::FunctionBlock) {}
SymbolFBType::~SymbolFBType() = default;

SymbolTyped::SymbolTyped(const std::string& name, SymbolDataType* type)
    : Symbol(Symbol::Typed, name), type_(type) {}
SymbolTyped::~SymbolTyped() = default;
SymbolDataType* SymbolTyped::dataType() const { return type_; }

SymbolMemUnit::SymbolMemUnit(Type type, const std::string& name) : Symbol(type, name) {}
SymbolMemUnit::~SymbolMemUnit() = default;
int SymbolMemUnit::memByteSize() const { return memByteSize_; }
int SymbolMemUnit::setMemByteSize(int bytes) {
  const int before = memByteSize_;
  memByteSize_ = bytes;
  return before;
}
int SymbolMemUnit::effectiveAlignByteSize() const { return alignByteSize_; }
HeapAddress SymbolMemUnit::iecAddress() const { return iecAddress_; }
bool SymbolMemUnit::isFixedAddress() const { return fixedAddress_; }
HeapRawAddr SymbolMemUnit::backendAddress() const { return backendAddress_; }

SymbolVar::SymbolVar(const std::string& name, SymbolDataType* type, std::int32_t varKind)
    : SymbolMemUnit(Symbol::Variable, name), dataType_(type), varKind_(varKind) {}
SymbolVar::~SymbolVar() = default;
SymbolDataType* SymbolVar::dataType() const { return dataType_; }
std::int32_t SymbolVar::varKind() const { return varKind_; }

VarContainer::VarContainer(Type type, const std::string& name) : SymbolMemUnit(type, name) {}
VarContainer::~VarContainer() = default;
int VarContainer::paramsCount() const { return static_cast<int>(params_.size()); }
SymbolVar* VarContainer::param(int i) const {
  return i >= 0 && i < paramsCount() ? params_[static_cast<std::size_t>(i)] : nullptr;
}
SymbolVar* VarContainer::param(const std::string& name) const {
  for (SymbolVar* const candidate : params_) {
    if (candidate != nullptr && hostkit::equalIgnoringCase(candidate->name(), name))
      return candidate;
  }
  return nullptr;
}

SymbolPOU::SymbolPOU(InternalInterface* ii, const std::string& name, POUType type,
                     SymbolVar* returnVar)
    : VarContainer(Symbol::Pou, name), ii_(ii), type_(type), returnVar_(returnVar) {}
SymbolPOU::~SymbolPOU() = default;
// The kit neither lays out memory nor compiles: there is no layout to reset, no state of
// compilation, and no children besides the parameters.
bool SymbolPOU::resetLayout(int) { return false; }
void SymbolPOU::setCompiled(int) {}
Symbol* SymbolPOU::visitChild(const std::string& name, int* cursor) {
  if (cursor != nullptr) *cursor = -1;
  return param(name);
}
void SymbolPOU::setBackendAddress(const HeapRawAddr& address) { backendAddress_ = address; }
POUType SymbolPOU::type() const { return type_; }
SymbolFBType* SymbolPOU::fbType() const { return fbType_; }
SymbolVar* SymbolPOU::returnVariable() const { return returnVar_; }
InternalInterface* SymbolPOU::services() const { return ii_; }

}  // namespace vel
