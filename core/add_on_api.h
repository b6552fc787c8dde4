// The entry points of an add-on, which is a library of operators for the plugin's registry.
#pragma once

#include <cstddef>

#include "core/op_manager_api.h"

namespace vel {

// Describes an operator of an add-on. Later versions may append members but never change the
// existing ones: a host reads only the members that lie within `size`. The add-on owns the
// strings, which are zero-terminated UTF-8 and live as long as the library is loaded. A null
// pointer means that the add-on does not describe this aspect.
struct OperatorDescription {
  std::size_t size;  // sizeof(OperatorDescription) where the add-on was compiled
  // The names of the inputs in the order of the parameters, separated by single blanks, for
  // calls such as `DEADBAND(IN := x, WIDTH := 0.1)`; empty for an operator without inputs.
  const char* inputs;
  // The page that `velc explain` shows for the operator, in Markdown.
  const char* page;
};

// The message codes reserved for add-ons. Those of the plugin begin with 0xC, those of a host
// with 0xF.
inline constexpr unsigned int kFirstAddOnCode = 0xA0000;
inline constexpr unsigned int kLastAddOnCode = 0xAFFFF;

}  // namespace vel

// An add-on exports this function, and leaves the operations of host/ undefined as the
// plugin does. The function creates each operator with new and passes it to
// registry->registerOperator(); the add-on remains the owner of those that are refused. The
// host calls it once, and unloads the library after it has deleted the registry. Returns false
// when the add-on cannot be used.
extern "C" VEL_PLUGIN_EXPORT bool RegisterOperators(vel::OpManagerAPI* registry);

// An add-on may export this function too. After RegisterOperators has returned true, the host
// calls it for each registered operator, with `name` as registered. Returns null for a name
// without a description. The result lives as long as the library is loaded.
extern "C" VEL_PLUGIN_EXPORT const vel::OperatorDescription* DescribeOperator(const char* name);
