#include "refhost/semantics/locations.h"

namespace refhost {

using vel::TreeBuilder;

void Locations::place(VarSymbol& variable, const ASTNode& address) {
  const auto parsed = check(address, variable);
  if (parsed) variable.placeAt(*parsed, services_.memory.raw(*parsed));
}

std::optional<vel::HeapAddress> Locations::check(const ASTNode& address,
                                                 const VarSymbol& variable) {
  vel::HeapAddress parsed;
  if (!services_.memory.parse(TreeBuilder::source(address), parsed)) {
    sayInvalid(address);
    return std::nullopt;
  }
  if (variable.reference) {
    say(address, message::kAddressSize, TreeBuilder::source(address), "REFERENCE TO");
  } else if (variable.dataType() != nullptr) {
    check(address, parsed, *variable.dataType());
  }
  return parsed;
}

void Locations::sayInvalid(const ASTNode& node) {
  const std::string_view text = TreeBuilder::source(node);
  vel::HeapAddress address;
  DeviceMap::Fault fault;
  services_.memory.parse(text, address, fault);
  if (!fault.number.empty()) {
    say(node, message::kAddressLevel, fault.number, text, std::to_string(fault.limit));
  } else if (fault.areaSize != 0) {
    say(node, message::kAddressOutside, text, std::to_string(fault.byte),
        std::to_string(fault.areaSize));
  } else {
    say(node, message::kBadAddress, text);
  }
}

// A value fills the unit that the address names; arrays, structures and strings begin there.
void Locations::check(const ASTNode& node, const vel::HeapAddress& address, const Type& type) {
  const BasicDataType value = valueType(&type);
  const bool isBool = value == BasicDataType::Bool;
  if (isBool && address.isBitMode()) return;
  const bool isExtended = isComposite(&type) || isText(value);
  const auto layout = services_.layouts.of(&type);
  const bool fits = !isBool && !address.isBitMode() && layout && !layout->holdsInstance &&
                    value != BasicDataType::Pointer &&
                    (isExtended || layout->size == address.unitSize);
  if (!fits) {
    say(node, message::kAddressSize, TreeBuilder::source(node), displayName(&type));
  } else if (isExtended && layout->size <= Layout::kMostBytes) {
    checkExtent(node, address, type, *layout);
  }
}

void Locations::checkExtent(const ASTNode& node, const vel::HeapAddress& address, const Type& type,
                            const Layout& layout) {
  const std::string_view text = TreeBuilder::source(node);
  const std::uint32_t byte = address.position / 8;
  const std::uint32_t size = services_.memory.areaSize(address);
  if (byte % layout.alignment != 0) {
    say(node, message::kAddressAlignment, text, std::to_string(byte),
        std::to_string(layout.alignment), displayName(&type));
  } else if (layout.size > size - byte) {
    say(node, message::kAddressExtent, displayName(&type), std::to_string(layout.size), text,
        std::to_string(size - byte), std::to_string(size));
  }
}

}  // namespace refhost
