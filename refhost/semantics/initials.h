// Initial values: of what has parts, part by part.
#pragma once

#include <cstdint>

#include "refhost/semantics/part.h"

namespace refhost {

class Initials : public Part {
 public:
  using Part::Part;

  // Analyses leaf `index` of `parent`, given to a variable of type `to`, null when that is
  // not known.
  void analyseInitial(const Type* to, ASTNode& parent, int index);

 private:
  void analyseArrayValue(const Type* to, Expr& value);
  std::int64_t countElements(const ArrayType& array, Expr& list, int first);
  std::int64_t countRepeated(const ArrayType& array, Expr& repeat);
  void repeatByName(Expr& list, int index);
  void analyseStructValue(const Type* to, Expr& value);
};

}  // namespace refhost
