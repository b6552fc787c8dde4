// The memory and the stack that a program takes in C.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "refhost/semantics/part.h"

namespace refhost {

class Sizes : public Part {
 public:
  using Part::Part;

  // Reports the types that contain themselves, are nested too deeply or are too large. To be called
  // once all variables have been declared.
  void checkTypes();
  // Counts a call in the unit that is being analysed.
  void countCall(const UnitSymbol& callee);
  // Counts a value that the unit that is being analysed holds in a temporary.
  void countTemporary(const Type* type);
  // Reports if the variables of the program or the calls of a unit take too much memory. To be
  // called once all units have been analysed.
  void checkUnits();

 private:
  // The part of the stack that a call of a unit takes.
  struct Frame {
    const UnitSymbol* unit = nullptr;
    std::uint64_t own = 0;    // bytes, without the calls in it
    std::uint64_t whole = 0;  // with the deepest of them; recursive calls count once
    std::unordered_set<Frame*> callees;
    Progress progress = Progress::Waiting;
  };

  void checkType(const Type& type);
  bool isExcessive(const Type& type);
  std::uint64_t sizeOf(const Type* type);
  Frame& frameOf(const UnitSymbol& unit);
  void checkMemory();

  std::unordered_map<const UnitSymbol*, Frame> frames_;
  bool typeReported_ = false;  // a type has been reported as too large
};

}  // namespace refhost
