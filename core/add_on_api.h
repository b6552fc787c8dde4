// The entry point of an add-on: a library with operators for the registry of the plugin.
#pragma once

#include "core/op_manager_api.h"

// An add-on exports this function, and leaves the operations of host/ undefined as the
// plugin does. It hands each of its operators, made with new, to
// registry->registerOperator() and keeps those that are refused. The host calls it once and
// unloads the library after the registry. False when the add-on cannot be used.
extern "C" VEL_PLUGIN_EXPORT bool RegisterOperators(vel::OpManagerAPI* registry);
