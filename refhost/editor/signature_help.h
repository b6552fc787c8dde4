// The call around a place, also one that is not finished.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "refhost/editor/program_view.h"
#include "refhost/syntax/span.h"

namespace refhost {

struct SignatureHelp {
  struct Parameter {
    Span label;  // its part of the label, in bytes
    std::string comment;
  };

  std::string label;  // the name, the parameters and the type of the result
  std::vector<Parameter> parameters;
  std::optional<std::size_t> active;  // the parameter of the argument at the place
  std::string comment;                // of the unit's declaration
  std::string topic;                  // of `velc explain`; empty for a unit of the program
};

// Of the innermost call whose arguments contain the place.
std::optional<SignatureHelp> signatureAt(const ProgramView& view, vel::TextLocation place);

}  // namespace refhost
