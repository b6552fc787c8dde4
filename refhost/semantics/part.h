// The base class of the parts of the analysis, and the context that they share.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/message.h"
#include "refhost/messages.h"
#include "refhost/services/services.h"
#include "refhost/services/unit_symbol.h"
#include "refhost/syntax/tree.h"

namespace refhost {

class Prelude;
struct Parts;

// Must outlive the parts.
struct Context {
  Context(Services& hostServices, Tree& program, Prelude& library,
          std::vector<vel::VELMessage>& found)
      : services(hostServices), tree(program), prelude(library), messages(found) {}

  void enter(UnitSymbol& entered) {
    unit = &entered;
    unitName = entered.name();
    unknown.clear();
  }

  Services& services;
  Tree& tree;
  Prelude& prelude;
  std::vector<vel::VELMessage>& messages;
  UnitSymbol* unit = nullptr;  // being analysed; null for declarations outside of units
  std::string unitName;
  FoldedMap<bool> unknown;  // names that have been reported as unknown in the unit
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
  void say(const ASTNode& where, const MessageFormat& format, const Args&... args) {
    report(messages_, where.pos(), format, {std::string_view(args)...});
  }
  // Reports each name once in a unit. The name must outlive the analysis.
  void sayUnknown(const ASTNode& where, const MessageFormat& format, std::string_view name) {
    if (context_.unknown.emplace(name, true).second) say(where, format, name);
  }
  bool hasErrorFrom(std::size_t first) const { return hasErrors(messages_, first); }

  Context& context_;
  Parts& parts_;
  Services& services_;
  Tree& tree_;
  std::vector<vel::VELMessage>& messages_;
};

}  // namespace refhost
