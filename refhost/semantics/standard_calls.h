// Calls of the standard's functions.
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
  Type* callTextFunction(Call& call);

  int nestedInputs_ = 0;  // of the standard functions around the expression being analysed
};

}  // namespace refhost
