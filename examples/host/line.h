// A line of input: `x : INT`, `{bitparam} p : WORD`, `y := LIMIT(0, x, 100)`, `ZSET(%QB0, %QB7)`.
// Operands are literals, names, bits (`x.3`), addresses and calls; `//` begins a comment.
#pragma once

#include <algorithm>

#include "host/symbol.h"
#include "hostkit/messages.h"
#include "hostkit/tree.h"

// An operand that is a call, its leaf 0. A host may use any number that the contract does not name.
constexpr Expression::Operator kCall{100};
constexpr int kMostCalls = 1000;  // in a line, because deeper nesting could exhaust the stack

class Line {
 public:
  // Creates the nodes in `tree`. Throws a vel::VELMessage for a syntax error. The plugin only
  // copies positions, so that here they can be the `number` of the line and a column, from 1.
  Line(std::string_view source, std::uint32_t number, hostkit::Tree& tree)
      : source_(source), number_(number), tree_(tree) {
    take();
    if (std::count(source.begin(), source.end(), '(') > kMostCalls) fail(next_, "too many calls");
    if (next_.empty()) return;
    if (take("{bitparam}")) kind = vel::SymbolVar::kBitParameter;
    const std::string_view first = take();
    if (next_ == ":" ? !hostkit::isName(first) : kind != vel::SymbolVar::kInput)
      fail(first, "a declaration is expected");
    if (next_ == ":" || next_ == ":=") subject = place(first);
    type = take(":") ? take() : std::string_view();
    if (type.empty()) call = invocation(take(":=") ? take() : first);
    take(";");
    if (!next_.empty()) fail(next_, "the end of the line is expected");
  }

  Expression* subject = nullptr;  // the name declared or assigned to; null when there is none
  Invocation* call = nullptr;     // null in a declaration
  std::string_view type;          // in a declaration
  std::int32_t kind = vel::SymbolVar::kInput;

 private:
  Invocation* invocation(std::string_view name) {
    vel::ASTText* const word = tree_.word(from(name));
    if (!hostkit::isName(name) || !take("(")) fail(name, "a call is expected");
    const std::string_view first = source_.substr(end_);
    hostkit::Tree::Leaves operands;
    while (next_ != ")" && (operands.empty() || take(","))) operands.push_back(operand());
    const hostkit::Tree::Span list = from(first);
    if (!take(")")) fail(next_, "',' or ')' is expected");
    return tree_.invocation(from(name), word, list, std::move(operands));
  }

  Expression* operand() {
    const std::string_view first = take();
    if (next_ == "(") {
      Invocation* const inner = invocation(first);
      return tree_.expression(from(first), kCall, {inner});
    }
    Expression* const literal = tree_.literal(from(first));
    return literal != nullptr ? literal : place(first);
  }

  Expression* place(std::string_view name) {
    Expression* const made = tree_.place({name, where(name)});
    if (made == nullptr) fail(name, "an operand is expected");
    return made;
  }

  // Length of the first token. Literals contain separators in quotes, and colons after a `#`.
  static std::size_t wordLength(std::string_view text) {
    if (text.substr(0, 2) == "//") return 0;
    if (text.substr(0, 2) == ":=") return 2;
    for (std::size_t at = 0; at < text.size(); ++at) {
      const char c = text[at];
      if (c == '\'' || c == '"') {
        for (++at; at < text.size() && text[at] != c; ++at) at += text[at] == '$' ? 1 : 0;
      } else if (std::string_view(" \t\r,();=/").find(c) != std::string_view::npos ||
                 (c == ':' && text.substr(0, at).find('#') == std::string_view::npos)) {
        return std::max<std::size_t>(at, 1);
      }
    }
    return text.size();
  }

  // Returns the next token, which is empty at the end, and reads the one after it.
  std::string_view take() {
    const std::string_view taken = next_;
    end_ = offset(taken) + taken.size();
    const std::size_t start = std::min(source_.find_first_not_of(" \t\r", end_), source_.size());
    next_ = source_.substr(start, wordLength(source_.substr(start)));
    return taken;
  }
  bool take(std::string_view word) { return next_ == word && !take().empty(); }

  std::size_t offset(std::string_view word) const {
    return static_cast<std::size_t>(word.data() - source_.data());
  }
  vel::TextLocation where(std::string_view word) const {
    return vel::TextLocation(number_, static_cast<std::uint32_t>(offset(word) + 1));
  }
  // The span from `first` to the last token taken.
  hostkit::Tree::Span from(std::string_view first) const {
    return {source_.substr(offset(first), end_ - offset(first)), where(first)};
  }
  [[noreturn]] void fail(std::string_view word, const char* text) const {
    throw hostkit::errorAt(where(word), text);
  }

  std::string_view source_;
  std::uint32_t number_;
  hostkit::Tree& tree_;
  std::string_view next_ = source_.substr(0, 0);
  std::size_t end_ = 0;
};
