// Symbol visibility. The plugin imports the operations of the host compiler's library
// (VEL_HOST_API) and exports only its entry point (VEL_PLUGIN_EXPORT).
#pragma once

#if defined(_WIN32)
#if defined(VEL_BUILDING_HOST)
#define VEL_HOST_API __declspec(dllexport)
#else
#define VEL_HOST_API __declspec(dllimport)
#endif
#define VEL_PLUGIN_EXPORT __declspec(dllexport)
#else
#define VEL_HOST_API __attribute__((visibility("default")))
#define VEL_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif
