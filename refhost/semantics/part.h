// The base class of the parts of the analysis, and the context that they share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "refhost/diagnostics.h"
#include "refhost/services/services.h"
#include "refhost/services/unit_symbol.h"
#include "refhost/syntax/tree.h"

namespace refhost {

class Prelude;
struct Parts;

// The names that can stand at the place of an expression.
enum class Sought : std::uint8_t {
  Value,       // variables, values of enumerations, TRUE, FALSE and NULL
  Place,       // variables that can be written
  Whole,       // variables with members, and enumerations in front of their values
  WholePlace,  // variables with members
  Constant,    // constants and values of enumerations
};

// Must outlive the parts.
struct Context {
  Context(Services& hostServices, Tree& program, Prelude& library, Diagnostics& found)
      : services(hostServices), tree(program), prelude(library), messages(found) {}

  // Null for the declarations outside of units.
  void enter(UnitSymbol* entered) {
    unit = entered;
    unitName = entered != nullptr ? entered->name() : std::string();
    unknown.clear();
    unknownParts.clear();
  }

  // Notes a name that no file declares; `Color#Red` for a value of a type.
  void noteMissing(std::string_view name) { missing.emplace(name.substr(0, name.find('#'))); }

  // True of a name that may be declared by a part of the program which could not be parsed.
  bool isExcused(std::string_view name) const {
    return mayMiss(unit) || tree.refused.count(name) != 0;
  }
  // True of a unit that may have declarations which could not be parsed. Null for none.
  bool mayMiss(const UnitSymbol* owner) const {
    return tree.incomplete || (owner != nullptr && owner->node->incomplete);
  }

  Services& services;
  Tree& tree;
  Prelude& prelude;
  Diagnostics& messages;
  UnitSymbol* unit = nullptr;  // being analysed; null for declarations outside of units
  std::string unitName;
  bool broken = false;       // the syntax has errors
  bool judgesReads = false;  // the unit has variables that ought to be read
  Sought sought = Sought::Value;
  FoldedMap<bool> unknown;  // names that have been reported as unknown in the unit
  // The same for members and parameters, by their types, units and operators.
  std::unordered_map<const void*, FoldedMap<bool>> unknownParts;
  std::set<std::string> missing;  // names that other files may declare
  FoldedMap<bool> hidden;         // names of units that operators have
};

// Sets what is sought until it goes out of scope.
class Seeking {
 public:
  Seeking(Context& context, Sought sought)
      : context_(context), before_(std::exchange(context.sought, sought)) {}
  ~Seeking() { context_.sought = before_; }
  Seeking(const Seeking&) = delete;
  Seeking& operator=(const Seeking&) = delete;

 private:
  Context& context_;
  Sought before_;
};

class Part {
 public:
  Part(Context& context, Parts& parts)
      : context_(context),
        parts_(parts),
        services_(context.services),
        tree_(context.tree),
        messages_(context.messages) {}
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

 protected:
  using Symbol = vel::Symbol;
  using Type = vel::SymbolDataType;

  ~Part() = default;

  template <typename... Args>
  Remarks& say(const ASTNode& where, const MessageFormat& format, const Args&... args) {
    return messages_.report(rangeOf(where), format, {std::string_view(args)...});
  }
  // `first` is the name in the first declaration, null for one that is not the program's.
  void sayRedeclared(const ASTNode& again, std::string_view name, const ASTNode* first) {
    Remarks& said = say(again, message::kRedeclared, name);
    if (first != nullptr) said.note(rangeOf(*first), "first declared here");
  }
  // Two arguments or initial values for one name.
  void sayTwice(const ASTNode& again, std::string_view name, const ASTNode& first) {
    say(again, message::kArgumentTwice, name).note(rangeOf(first), "first given here");
  }
  // Reports each name once in a unit. The name must outlive the analysis. Null if it is not
  // reported.
  Remarks* sayUnknown(const ASTNode& where, const MessageFormat& format, std::string_view name) {
    context_.noteMissing(name);
    if (context_.isExcused(name)) return nullptr;
    return context_.unknown.emplace(name, true).second ? &say(where, format, name) : nullptr;
  }
  // The same for a member or a parameter of `owner`: a type, a unit, an operator or a function.
  template <typename... Args>
  Remarks* sayUnknownPart(const SourceRange& where, const MessageFormat& format, const void* owner,
                          std::string_view name, const Args&... args) {
    if (!context_.unknownParts[owner].emplace(name, true).second) return nullptr;
    return &messages_.report(where, format, {std::string_view(args)...});
  }
  bool hasErrorFrom(std::size_t first) const { return messages_.hasErrors(first); }

  Context& context_;
  Parts& parts_;
  Services& services_;
  Tree& tree_;
  Diagnostics& messages_;
};

}  // namespace refhost
