// `check` and `generate` of a call, with the steps around them that every host takes. The
// reference host does more with a call, and has its own steps (`refhost/semantics/calls.cpp`).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/expression.h"
#include "hostkit/services.h"

namespace hostkit {

// Looks up the operator in the registry of `services` and lets it check the call, on whose
// parameters the types must be recorded. Returns the type of the result, which has no name if the
// call has no value, and records it on the node. Returns nullopt, always with a message, if there
// is no such operator, if its check fails, or if it reports an error although it succeeds (as
// LIMIT does).
std::optional<DataTypeInfo> checkCall(Services& services, Invocation& invocation,
                                      const std::string& unit,
                                      std::vector<vel::VELMessage>& messages);

// Returns the C of a call that checkCall has accepted, and adds the operator's static code to
// `services.staticCode`. An operator generates nothing if the host lacks a symbol that it looks up;
// the result is then empty, and a message reports this as an error.
std::string generateCall(Services& services, vel::Generator& generator, Invocation& invocation,
                         std::vector<vel::VELMessage>& messages);

}  // namespace hostkit
