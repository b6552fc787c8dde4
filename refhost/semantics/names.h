// What a name of a variable or of a value means where it stands.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "refhost/semantics/part.h"

namespace refhost {

class Names : public Part {
 public:
  using Part::Part;

  // Null when the name is no variable's. All look-ups of variables by name go through here.
  VarSymbol* variableNamed(std::string_view name) const;
  // Null when the expression is no value's name.
  NamedValue* valueNamed(const Expr& expr) const;
  // A direct address in the project's notation.
  bool isAddress(std::string_view text) const;

  // Constants that are found before their declarations come. Null for one whose
  // declaration has come.
  using ConstantsAhead = FoldedMap<std::unique_ptr<VarSymbol>>;
  void addAhead(std::unique_ptr<VarSymbol> constant);
  // Hands over a constant to its declaration; null when it was not ahead.
  std::unique_ptr<VarSymbol> takeAhead(std::string_view name);
  // Returns those that were found until now.
  ConstantsAhead replaceAhead(ConstantsAhead constants);

 private:
  ConstantsAhead constantsAhead_;
};

}  // namespace refhost
