// Collects the lines and temporaries of one C function.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "refhost/emit/place.h"
#include "refhost/emit/symbol_names.h"
#include "refhost/syntax/source.h"

namespace refhost {

class FunctionBody {
 public:
  // `owner` is the unit that the function belongs to; null for the initialisation of a structure.
  FunctionBody(const SymbolNames& names, const UnitSymbol* owner);

  // From here on the lines stand for the place that at() names last, at first for the beginning of
  // `source`, the unit, and the end of the function for its end. Lines that stand for the same line
  // of the source are one line of C, so that a `#line` holds for all of them.
  void follow(const SourceManager& sources, const vel::ASTNode& source);
  // Has no effect without follow().
  void at(const vel::ASTNode& node);

  void line(const std::string& text);
  void statement(const std::string& text);  // appends the semicolon
  void indent() { ++depth_; }
  void outdent() { --depth_; }
  int depth() const { return depth_; }
  // A statement expression of the lines that `write` adds, which are not added to the body.
  template <typename Write>
  std::string statementExpression(Write write) {
    std::string before = std::exchange(lines_, {});
    const std::uint32_t open = std::exchange(open_, wanted_);
    indent();
    write();
    outdent();
    open_ = open;
    return enclosed(std::exchange(lines_, std::move(before)));
  }
  // Adds a statement to the end of the function, where it is executed after a RETURN, too.
  void closingStatement(const std::string& text) { closing_ += "  " + text + ";\n"; }

  // A new name, for a variable that the caller declares.
  std::string newName();
  // Declares a variable at the start of the function and returns its name.
  std::string temporary(const vel::SymbolDataType* type);
  // Writes a statement that contains no others. Its temporaries serve those behind it again: C
  // compilers take a time that grows with the square of their number.
  template <typename Write>
  void simpleStatement(Write write) {
    recycles_ = true;
    write();
    recycles_ = false;
    for (const auto& [type, name] : busy_) free_[type].push_back(name);
    busy_.clear();
  }
  // The same for a pointer to a variable of the type, which must be no string. Not for storing
  // through a POINTER TO, whose targets may alias.
  std::string temporaryPointer(const vel::SymbolDataType* type);

  // The beginning of the function: `head`, its first line, and declarations.
  std::string opening(const std::string& head) const;
  // The function behind its opening(); `front` follows the declarations, and `end` the statements.
  // Nothing may be added after it.
  std::string take(bool hasSelf, const std::string& front, const std::string& end);

  const UnitSymbol* const unit;
  std::unordered_map<const vel::ASTNode*, std::string> held;  // the temporaries of operands
  std::unordered_map<const vel::ASTNode*, Place> heldPlaces;  // reached by temporary pointers
  bool usesSelf = false;
  bool returns = false;  // contains a RETURN
  std::unordered_set<const VarSymbol*> used;
  std::unordered_set<const vel::Symbol*> companions;  // parameters whose companion is used

 private:
  std::string enclosed(const std::string& lines) const;
  void append(const std::string& text, const char* end);
  // Begins a line of C for the line of the source that is wanted unless the last one stands for it.
  void moveToWanted();

  const SymbolNames& names_;
  const SourceManager* sources_ = nullptr;  // null without follow()
  std::string directive_;                   // `#line` for the beginning of the unit
  std::uint32_t wanted_ = 0;
  std::uint32_t open_ = 0;  // the line that the last line of C stands for
  std::uint32_t last_ = 0;  // of the unit
  std::string lines_;
  std::string declarations_;  // of the temporaries
  bool recycles_ = false;
  std::vector<std::pair<const vel::SymbolDataType*, std::string>> busy_;
  std::unordered_map<const vel::SymbolDataType*, std::vector<std::string>> free_;
  std::string closing_;
  int depth_ = 1;
  int temporaries_ = 0;
};

// Appends `text` to `out`, copying only the shorter of the two.
void join(std::string& out, std::string text);

}  // namespace refhost
