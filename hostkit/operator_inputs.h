// The inputs of operators: how many a function-call operator has, and by which names calls may
// give them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hostkit/services.h"

namespace hostkit {

// Declares every function-call operator of the registry in `services.operators` as a function
// with its inputs, and hands it to Answers::addUnit: the registry itself makes no program units
// for them, and their checks count the inputs. To be called once the registry is complete.
void declareFunctionOperators(Services& services);

// The names of an operator's inputs in the order of its parameters; of an extensible one, those
// that it has at least.
std::vector<std::string> inputNames(const Services& services, std::string_view operatorName);

// The position of an operator's input `formal` among its parameters, from 0; -1 when it has
// none of that name. The plugin knows parameters by position only, so that a host puts those
// that are named in this order before it calls check. The inputs of an add-on's operator are
// those that `services.descriptions` names; one of which it says nothing may be called `IN`.
int operatorInput(const Services& services, std::string_view operatorName, std::string_view formal);
// The same where there are no add-ons.
int operatorInput(std::string_view operatorName, std::string_view formal);

}  // namespace hostkit
