/* What generated programs ask of the platform that they run on. */
#ifndef VELRT_PLATFORM_H
#define VELRT_PLATFORM_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Refreshes `count` bits of the local inputs or outputs at once, from bit `offset` of
 * their range on. */
struct vel_platform_api {
  void (*UPDATEINPUT)(u32 offset, u32 count);
  void (*UPDATEOUTPUT)(u32 offset, u32 count);
};

/* A platform with local inputs and outputs puts its functions here before the first
 * scan, or defines the whole table. At start they do nothing; they are never null. */
extern struct vel_platform_api __platform_api;

#ifdef __cplusplus
}
#endif

#endif
