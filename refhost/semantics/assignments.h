// Judges which values may be given to which places.
#pragma once

#include <cstddef>

#include "refhost/semantics/part.h"

namespace refhost {

class Assignments : public Part {
 public:
  using Part::Part;

  // Judges `source`, of type `from`, given to a place of type `to`; messages stand at
  // `at`. `call` is the operator's call that `source` is, if it is one: what its check
  // has said of the assignment is not said again.
  void judge(const Type* to, const Type* from, const ASTNode& source, vel::TextLocation at,
             const Call* call = nullptr);
  void judge(const Type* to, const Type* from, const ASTNode& source) {
    judge(to, from, source, source.pos());
  }
  // The operator's check of `call` has appended the messages from number `first` to the last.
  void hasChecked(const Call& call, std::size_t first) {
    checked_ = {&call, first, messages_.size()};
  }

 private:
  // assignments.cpp
  void judgeUntyped(const Type& to, const ASTNode& source, vel::TextLocation at);
  bool hasBeenSaid(const vel::VELMessage& message, const Call& call) const;

  // compatibility.cpp
  bool judgeDerived(const Type& to, const Type& from, const ASTNode& source, vel::TextLocation at);
  void judgeRange(const Type& to, const ASTNode& source, vel::TextLocation at);
  void judgePointer(const Type& to, const Type& from, const ASTNode& source, vel::TextLocation at);

  // The messages that the latest check of an operator has appended.
  struct {
    const Call* call = nullptr;
    std::size_t first = 0;
    std::size_t last = 0;
  } checked_;
};

}  // namespace refhost
