// What a call at the cursor calls, and its parameters.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/names_at.h"

namespace refhost {

struct CalleeParameter {
  enum class Passing : std::uint8_t { In, Out, InOut };

  std::string name;
  std::string type;  // empty for an operand of several types
  Passing passing = Passing::In;
  const vel::SymbolDataType* dataType = nullptr;  // null if it is not known
  SymbolId id = kNoSymbol;
};

struct CalleeAt {
  enum class Kind : std::uint8_t { Unit, Instance, Operator, StandardFunction, Assertion, Task };

  // The parameter of an argument in the `index`-th place, from 0: of an extensible operator also
  // behind the last; parameters.size() for none. With `all` outputs count, too.
  std::size_t positional(std::size_t index, bool all) const;
  std::size_t named(std::string_view wanted) const;  // parameters.size() for none
  // The name of a parameter, also of one behind the last of an extensible operator.
  std::string parameterName(std::size_t index) const;

  Kind kind = Kind::Unit;
  std::string name;
  std::string result;  // its type; empty for none or one that depends on the operands
  std::vector<CalleeParameter> parameters;  // two at least of those that may be repeated
  bool extensible = false;                  // the last parameter may be repeated
  bool takesNames = true;                   // it has named arguments
  bool takesEnable = true;                  // it has EN and ENO
  SymbolId id = kNoSymbol;                  // of the unit
};

// The parameters in brackets and the result, with or without the name in front; `places`, if not
// null, gets the range of each parameter in it.
std::string signatureText(const CalleeAt& callee, bool named, std::vector<Span>* places = nullptr);

// The names of the arguments between the brackets around the cursor, on both sides of it, without
// that at the cursor.
std::vector<std::string_view> givenArguments(const NamesAt& names, const CodeBracket& bracket);

// True of the operators X_TO_Y and TO_Y, of which there are hundreds.
bool isConversion(std::string_view operatorName);

// What is called where the tokens from `first` to `last` of the context are followed by a '('.
std::optional<CalleeAt> calleeAt(const NamesAt& names, std::size_t first, std::size_t last);
// A function, an operator or a unit by its name.
std::optional<CalleeAt> calleeNamed(const NamesAt& names, std::string_view name);
// The unit of a function block's or a PROGRAM's instances.
std::optional<CalleeAt> calleeOfType(const NamesAt& names, const PlaceType& type);

}  // namespace refhost
