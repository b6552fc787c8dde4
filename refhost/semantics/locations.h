// Places of variables in device memory.
#pragma once

#include <optional>

#include "refhost/semantics/part.h"
#include "refhost/services/layout.h"

namespace refhost {

class Locations : public Part {
 public:
  using Part::Part;

  // Reports why the text of the node is no address.
  void sayInvalid(const ASTNode& node);
  // Gives `variable` the place that `address` names, and reports an address that is not valid, or
  // at which a variable of this type cannot be.
  void place(VarSymbol& variable, const ASTNode& address);
  // The same, but without giving it; nothing for an address that is not valid.
  std::optional<vel::HeapAddress> check(const ASTNode& address, const VarSymbol& variable);

 private:
  void check(const ASTNode& node, const vel::HeapAddress& address, const Type& type);
  void checkExtent(const ASTNode& node, const vel::HeapAddress& address, const Type& type,
                   const Layout& layout);
};

}  // namespace refhost
