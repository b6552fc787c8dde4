// Calls of standard functions.
#pragma once

#include "refhost/semantics/part.h"

namespace refhost {

class StandardCalls : public Part {
 public:
  using Part::Part;

  // The type of the result, null when the call is refused.
  Type* callStandard(Call& call);

 private:
  Type* callOperation(Call& call);
  Type* callIsBound(ASTNode& list);
  Type* callBound(Call& call);
  Type* callStringFunction(Call& call);

  int nestedInputs_ = 0;  // of the calls around the expression that is being analysed
};

}  // namespace refhost
