// Lookup of the names of variables and of named values.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "refhost/semantics/part.h"

namespace refhost {

class Names : public Part {
 public:
  using Part::Part;

  // Null when there is no such variable. Every lookup of a variable by name goes through here.
  VarSymbol* variableNamed(std::string_view name);
  // Null when the expression is not the name of a value.
  NamedValue* valueNamed(const Expr& expr) const;
  // True of a name that several enumerations have a value of, and that is no variable's.
  bool isAmbiguous(const vel::ASTNode& node);
  // True of an expression whose type depends on the type that is wanted: an ambiguous name, a
  // choice among such names, and an untyped 0 or 1.
  bool isOpen(const vel::ASTNode& node);
  // True for a direct address in the project's notation.
  bool isAddress(std::string_view text) const;

  // Constants that are found before their declarations are analysed; null once they have been.
  using ConstantsAhead = FoldedMap<std::unique_ptr<VarSymbol>>;
  void addAhead(std::unique_ptr<VarSymbol> constant);
  // The same for a constant of a type that is not declared yet. It is added when it is looked up,
  // unless the type is composite.
  void addWaiting(std::unique_ptr<VarSymbol> constant, const TypeSpec& type);
  // Passes a constant to its declaration; null when addAhead() was not called for it.
  std::unique_ptr<VarSymbol> takeAhead(std::string_view name);
  // Returns the previous ones.
  ConstantsAhead replaceAhead(ConstantsAhead constants);

 private:
  bool hasAmbiguous() const;
  bool choosesOpen(const vel::ASTNode& node);

  VarSymbol* waitingNamed(std::string_view name);

  struct Waiting {
    std::unique_ptr<VarSymbol> constant;  // without its type
    const TypeSpec* type;
  };
  ConstantsAhead constantsAhead_;
  FoldedMap<Waiting> waiting_;
};

}  // namespace refhost
