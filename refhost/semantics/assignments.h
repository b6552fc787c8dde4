// Checks that a value may be assigned to its target.
#pragma once

#include <cstddef>
#include <string_view>

#include "refhost/semantics/part.h"

namespace refhost {

class Assignments : public Part {
 public:
  using Part::Part;

  // Checks the assignment of `source`, of type `from`, to a variable of type `to`; messages are
  // reported on the range `at`. If `source` is the call of an operator, `call` is that call: a
  // message that the operator's own check has reported is not repeated.
  void check(const Type* to, const Type* from, const ASTNode& source, const SourceRange& at,
             const Call* call = nullptr);
  void check(const Type* to, const Type* from, const ASTNode& source) {
    check(to, from, source, rangeOf(source));
  }
  // True if check() finds no error; reports nothing.
  bool accepts(const Type* to, const Expr& source);
  // Checks that a reference to `to`, which messages call `name`, can be bound to `source`.
  void checkBound(std::string_view name, const Type* to, const Expr& source);
  // To be called after the operator has checked `call`: its messages are those from index `first`.
  void noteOperatorCheck(const Call& call, std::size_t first) {
    checked_ = {&call, first, messages_.count()};
  }

 private:
  // assignments.cpp
  bool operatorHasReported(const MessageFormat& format, std::string_view text,
                           const Call& call) const;

  // compatibility.cpp
  bool checkDerived(const Type& to, const Type& from, const ASTNode& source, const SourceRange& at);
  void checkRange(const Type& to, const ASTNode& source, const SourceRange& at);
  // Reports that the value cannot be assigned.
  void refuse(const Type& to, const Type& from, const ASTNode& source, const SourceRange& at);
  void checkPointer(const Type& to, const Type& from, const ASTNode& source, const SourceRange& at);

  // The messages of the latest check of an operator, as a half-open range of indices.
  struct {
    const Call* call = nullptr;
    std::size_t first = 0;
    std::size_t last = 0;
  } checked_;
};

}  // namespace refhost
