// Checks that a value may be assigned to its target.
#pragma once

#include <cstddef>

#include "refhost/semantics/part.h"

namespace refhost {

class Assignments : public Part {
 public:
  using Part::Part;

  // Checks the assignment of `source`, of type `from`, to a variable of type `to`; messages are
  // reported at `at`. If `source` is the call of an operator, `call` is that call: a message that
  // the operator's own check has reported is not repeated.
  void check(const Type* to, const Type* from, const ASTNode& source, vel::TextLocation at,
             const Call* call = nullptr);
  void check(const Type* to, const Type* from, const ASTNode& source) {
    check(to, from, source, source.pos());
  }
  // To be called after the operator has checked `call`: its messages are those from index `first`.
  void noteOperatorCheck(const Call& call, std::size_t first) {
    checked_ = {&call, first, messages_.size()};
  }

 private:
  // assignments.cpp
  bool operatorHasReported(const vel::VELMessage& message, const Call& call) const;

  // compatibility.cpp
  bool checkDerived(const Type& to, const Type& from, const ASTNode& source, vel::TextLocation at);
  void checkRange(const Type& to, const ASTNode& source, vel::TextLocation at);
  void checkPointer(const Type& to, const Type& from, const ASTNode& source, vel::TextLocation at);

  // The messages of the latest check of an operator, as a half-open range of indices.
  struct {
    const Call* call = nullptr;
    std::size_t first = 0;
    std::size_t last = 0;
  } checked_;
};

}  // namespace refhost
