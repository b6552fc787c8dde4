// The plugin's two operations on a call, by the rules that every host follows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/expression.h"
#include "hostkit/services.h"

namespace hostkit {

// Finds the operator that the call names in the registry of `services`, and has it check the
// call, whose parameters have their types recorded. Nothing when there is no such operator or
// the call is refused: by the operator, or by an error among its messages, since LIMIT reports
// some and returns true. A message says why even where the operator has none. Else the type of
// the result, without a name where the call has no type; it is recorded on the node too.
std::optional<DataTypeInfo> checkCall(Services& services, Invocation& invocation,
                                      const std::string& unit,
                                      std::vector<vel::VELMessage>& messages);

// The C that takes the place of a call that was accepted; what it needs in front of the program
// joins `services.staticCode`. Operators have none where the host
// lacks what they look for, which is an error then: the text is empty, and a message says so.
std::string generateCall(Services& services, vel::Generator& generator, Invocation& invocation,
                         std::vector<vel::VELMessage>& messages);

}  // namespace hostkit
