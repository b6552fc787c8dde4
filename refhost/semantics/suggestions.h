// What may have been meant by a name that is unknown. Looked up for errors only.
#pragma once

#include <string_view>

#include "refhost/semantics/part.h"

namespace refhost {

class Spelling;

// Each function adds a note and a fix to the message on `name`, which stands at `where`, if one
// name of its kind is near enough.
class Suggestions : public Part {
 public:
  using Part::Part;

  static void add(Remarks& said, const SourceRange& where, const Spelling& spelling);

  // Names that are visible in the unit and can stand where the context seeks them: of a type that
  // the operator around them takes, and, unless `wanted` is null, one that fits this type.
  void addName(Remarks& said, const ASTNode& where, std::string_view name, const Type* wanted);
  // Values of enumerations and of BOOL behind their types: `Color#Red`, `BOOL#TRUE`.
  void addTypedValue(Remarks& said, const ASTNode& where, std::string_view name);
  // Variables and types: the operand of SIZEOF.
  void addOperand(Remarks& said, const ASTNode& where, std::string_view name);
  // Operators, functions and instances; without a fix, function blocks.
  // Those that take as many arguments go before others.
  void addCallee(Remarks& said, const Call& call, std::string_view name);
  void addType(Remarks& said, const SourceRange& where, std::string_view name);
  void addGlobal(Remarks& said, const ASTNode& where, std::string_view name);
  void addMember(Remarks& said, const SourceRange& where, std::string_view name, const Type* type);
  // Parameters that `list`, in which `argument` stands, does not give yet. If none is near, a note
  // names them all, unless they are many.
  void addParameter(Remarks& said, const ASTNode& list, const Argument& argument,
                    const UnitSymbol& callee);
  // The same for a call of an operator or a standard function.
  void addInput(Remarks& said, const Call& call, const Argument& argument);

 private:
  template <typename Accepts>
  void offerVariables(Spelling& spelling, Accepts accepts) const;
  bool fits(const Type* type, const ASTNode& where, const Type* wanted);
  template <typename Accepts>
  void offerValues(Spelling& spelling, Accepts accepts) const;
  template <typename Accepts>
  void offerCallees(Spelling& spelling, const Call& call, Accepts takes) const;
  void offerTypes(Spelling& spelling) const;
  void offerBlocks(Spelling& spelling) const;
};

}  // namespace refhost
