// The body of one C function while it is written.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "refhost/emit/symbol_names.h"

namespace refhost {

class FunctionBody {
 public:
  // `owner` is the unit that the function belongs to; null for a structure's.
  FunctionBody(const SymbolNames& names, const UnitSymbol* owner);

  void line(const std::string& text);
  // A line that ends in a semicolon.
  void statement(const std::string& text);
  void indent() { ++depth_; }
  void outdent() { --depth_; }
  int depth() const { return depth_; }
  std::string indentation() const { return std::string(static_cast<std::size_t>(depth_) * 2, ' '); }
  // The lines that `write` adds, one level deeper, which go into an expression instead.
  template <typename Write>
  std::string apart(Write write) {
    std::string before = std::exchange(lines_, {});
    indent();
    write();
    outdent();
    return std::exchange(lines_, std::move(before));
  }
  // A statement for the end of the function, which a RETURN does not skip.
  void closingStatement(const std::string& text) { closing_ += "  " + text + ";\n"; }

  // The name of a variable that the text declares where it needs it.
  std::string newName();
  // A variable declared in front of the lines.
  std::string temporary(const vel::SymbolDataType* type);
  // The same of a pointer to `type`.
  std::string temporaryPointer(const vel::SymbolDataType* type);

  // Everything between the braces. `front` follows the declarations. Ends the writing.
  std::string take(bool hasSelf, const std::string& front);

  const UnitSymbol* const unit;
  std::unordered_map<const vel::ASTNode*, std::string> held;  // operands in temporaries
  bool usesSelf = false;
  bool returns = false;  // by a RETURN before the end
  std::unordered_set<const VarSymbol*> used;
  std::unordered_set<const vel::Symbol*> companions;  // parameters whose bits are asked for

 private:
  const SymbolNames& names_;
  std::string lines_;
  std::string declarations_;  // of the temporaries
  std::string closing_;
  int depth_ = 1;
  int temporaries_ = 0;
};

// Appends `text` to `out`, and copies only the shorter of the two.
void join(std::string& out, std::string text);

}  // namespace refhost
