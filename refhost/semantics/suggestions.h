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

  // Variables, values and functions that are visible in the unit.
  void addName(Remarks& said, const ASTNode& where, std::string_view name);
  // Variables and types: the operand of SIZEOF.
  void addOperand(Remarks& said, const ASTNode& where, std::string_view name);
  // Operators, functions and instances.
  void addCallee(Remarks& said, const ASTNode& where, std::string_view name);
  void addType(Remarks& said, const SourceRange& where, std::string_view name);
  void addMember(Remarks& said, const SourceRange& where, std::string_view name, const Type* type);
  void addParameter(Remarks& said, const ASTNode& where, std::string_view name,
                    const UnitSymbol& callee);
  void addInput(Remarks& said, const ASTNode& where, std::string_view name,
                const std::string& operatorName);

 private:
  void offerVariables(Spelling& spelling, bool instances) const;
  void offerTypes(Spelling& spelling) const;
};

}  // namespace refhost
