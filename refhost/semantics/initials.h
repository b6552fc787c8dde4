// Initial values.
#pragma once

#include <string_view>

#include "refhost/semantics/part.h"
#include "refhost/services/array_values.h"

namespace refhost {

class Initials : public Part {
 public:
  using Part::Part;

  // Analyses leaf `index` of `parent`, the initial value of a variable of type `to`, which is null
  // when the type is unknown.
  void analyseInitial(const Type* to, ASTNode& parent, int index);
  // The same for a declaration that has an initial value.
  void analyseDeclared(const Type* to, VarDecl& declaration);

 private:
  void analyseBound(std::string_view name, const Type* to, ASTNode& parent, int index);
  void analyseArrayValue(const Type* to, Expr& value);
  void analyseValues(const ArrayValues& values, Expr& list);
  std::int64_t countItems(const ArrayValues& values, Expr& list, int first);
  std::int64_t countRepeated(const ArrayValues& values, Expr& repeat);
  void repeatByName(Expr& list, int index);
  void analyseStructValue(const Type* to, Expr& value);
};

}  // namespace refhost
