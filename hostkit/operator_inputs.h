// The inputs of operators: their number for function-call operators, and their names, which calls
// with named arguments use.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hostkit/services.h"

namespace hostkit {

// Creates a function with inputs for every function-call operator of `services.operators`, and
// passes it to Answers::addUnit. Their checks count these inputs, but the registry creates no
// program units for them. To be called when the registry is complete.
void declareFunctionOperators(Services& services);

// The names of an operator's inputs in the order of its parameters; only the required ones of an
// extensible operator.
std::vector<std::string> inputNames(const Services& services, std::string_view operatorName);

// The position of the input `formal` of an operator, from 0; -1 when there is no such input. The
// plugin knows parameters by position only, so that a host has to sort named arguments into this
// order before it calls check. The inputs of an add-on's operator come from
// `services.descriptions`; an operator without a description has one input, `IN`.
int operatorInput(const Services& services, std::string_view operatorName, std::string_view formal);
// The same for a host without add-ons.
int operatorInput(std::string_view operatorName, std::string_view formal);

}  // namespace hostkit
