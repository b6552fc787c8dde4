// Symbol visibility of the two libraries that meet here: the host compiler's
// library, whose operations the plugin imports, and the plugin, which exports
// its entry point only.
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
