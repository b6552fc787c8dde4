// The standard functions that are neither operators of the plugin nor part of the prelude. Each is
// translated into an operator of the language or a function of the runtime.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

#include "refhost/syntax/tree.h"

namespace refhost {

class Spelling;

struct StandardFunction {
  enum class Kind : std::uint8_t {
    Operation,   // `operation`, applied from left to right
    Comparison,  // `operation` between each two adjacent inputs
    Count,       // of the runtime: a length or position, an INT
    Part,        // of the runtime: a string no longer than the first input
    Join,        // of the runtime: a string no longer than all inputs together
    Clock,       // the time of the scan
    Bound,       // of the dimension of an array: the member `cName` of an ARRAY[*]
    IsBound,     // whether the REFERENCE TO is bound
  };

  std::string_view name;
  Kind kind;
  ExprKind operation;  // of an Operation or a Comparison
  // Names of the inputs. In functions of the runtime, inputs whose names begin with IN are strings
  // and the others integers.
  std::array<std::string_view, 4> formals;
  bool extensible;         // IN3, IN4 and so on may follow
  const char* cName = "";  // of the runtime, without vel_string_ or vel_wstring_

  // The number of inputs that a call must have.
  int inputs() const;
  // The position of the input `formal`, -1 for none.
  int position(std::string_view formal) const;
  bool takesText(int index) const;
};

// Null when there is no such function. The lookup ignores letter case.
const StandardFunction* standardFunction(std::string_view name);
void forEachStandardFunction(const std::function<void(const StandardFunction&)>& visit);
// Offers the functions that `accepts` takes.
void offerStandardFunctions(Spelling& spelling,
                            const std::function<bool(const StandardFunction&)>& accepts);

}  // namespace refhost
