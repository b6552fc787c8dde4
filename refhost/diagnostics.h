// The messages of one translation, in the order in which they are found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hostkit/tree_builder.h"
#include "refhost/diagnostic.h"
#include "refhost/messages.h"

namespace refhost {

inline SourceRange rangeOf(const vel::ASTNode& node) {
  return {node.pos(), static_cast<std::uint32_t>(vel::TreeBuilder::source(node).size())};
}

// Everything that a message tells beyond its record in the contract.
struct Remarks {
  Remarks& note(const SourceRange& where, std::string text) {
    notes.push_back({where, std::move(text)});
    return *this;
  }
  Remarks& fix(const SourceRange& where, std::string replacement) {
    std::string title = "Write '" + replacement + "'";
    return fix({std::move(title), {{where, std::move(replacement)}}});
  }
  Remarks& fix(Fix added) {
    fixes.push_back(std::move(added));
    return *this;
  }

  std::uint32_t length = 0;
  std::vector<Note> notes;
  std::vector<Fix> fixes;
};

class Diagnostics {
 public:
  // Reports a message whose placeholders are filled with `args` in order. The result is valid until
  // messages are taken back.
  Remarks& report(const SourceRange& range, const MessageFormat& format,
                  std::initializer_list<std::string_view> args);

  // The list that operators append their messages to.
  std::vector<vel::VELMessage>& records() { return records_; }
  const std::vector<vel::VELMessage>& records() const { return records_; }
  // Gives those from index `first` on the ranges of the nodes of `call` at which they stand.
  void setRanges(std::size_t first, const vel::ASTNode& call);

  // Adds a note to each message from index `first` on.
  void note(std::size_t first, const SourceRange& where, const std::string& text);

  std::size_t count() const { return records_.size(); }
  // What the message at `index` tells beyond its record.
  Remarks& remarksOn(std::size_t index);

  // Takes all messages from index `first` on back.
  void drop(std::size_t first);
  // The same for warnings only.
  void dropWarnings(std::size_t first);
  // Leaves warnings that stand in `part` out of inOrder().
  void silence(SilentPart part) { silent_.push_back(std::move(part)); }
  const std::vector<SilentPart>& silentParts() const { return silent_; }

  // True if there is an error among the messages from index `first` on.
  bool hasErrors(std::size_t first = 0) const;

  // The messages from index `first` on, by file and place; those at one place keep their order. A
  // message with the place, code and text of another one is left out, and so is a doubt about a
  // part of what an error refuses.
  std::vector<Diagnostic> inOrder(std::size_t first) const;

 private:
  bool isSilenced(const vel::VELMessage& record) const;

  std::vector<vel::VELMessage> records_;
  // By index of the record; those at the end may be missing. A deque, since those who report hold
  // on to remarks while they look further and report more.
  std::deque<Remarks> remarks_;
  std::vector<SilentPart> silent_;
};

}  // namespace refhost
