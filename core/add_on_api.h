// The entry points of an add-on: a library with operators for the registry of the plugin.
#pragma once

#include <cstddef>

#include "core/op_manager_api.h"

namespace vel {

// What an add-on tells of one of its operators. A later version may append members, never
// change those that are there: a host reads only those that lie within `size`. The texts are
// the add-on's, in UTF-8, end in a zero and live as long as the library is loaded; null says
// nothing.
struct OperatorDescription {
  std::size_t size;  // sizeof(OperatorDescription) where the add-on was compiled
  // The names of the inputs in the order of the parameters, separated by single blanks, for
  // calls such as `DEADBAND(IN := x, WIDTH := 0.1)`; empty for an operator without inputs.
  const char* inputs;
  // What `velc explain` shows of the operator, in Markdown.
  const char* page;
};

// The codes of messages that are free for add-ons. Those of the plugin begin with 0xC, those
// of a host with 0xF.
inline constexpr unsigned int kFirstAddOnCode = 0xA0000;
inline constexpr unsigned int kLastAddOnCode = 0xAFFFF;

}  // namespace vel

// An add-on exports this function, and leaves the operations of host/ undefined as the
// plugin does. It hands each of its operators, made with new, to
// registry->registerOperator() and keeps those that are refused. The host calls it once and
// unloads the library after the registry. False when the add-on cannot be used.
extern "C" VEL_PLUGIN_EXPORT bool RegisterOperators(vel::OpManagerAPI* registry);

// An add-on may export this one too. The host calls it, once RegisterOperators has returned
// true, for each operator that was taken; `name` is as registered. Null for names of which
// the add-on has nothing to tell. What it returns lives as long as the library is loaded.
extern "C" VEL_PLUGIN_EXPORT const vel::OperatorDescription* DescribeOperator(const char* name);
