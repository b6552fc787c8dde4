/* The functions that the platform provides to generated programs. */
#ifndef VELRT_PLATFORM_H
#define VELRT_PLATFORM_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Functions that immediately refresh `count` bits of the local inputs or outputs, from bit
 * `offset` of their range on. */
struct vel_platform_api {
  void (*UPDATEINPUT)(u32 offset, u32 count);
  void (*UPDATEOUTPUT)(u32 offset, u32 count);
};

/* A platform with local inputs and outputs sets its functions here before the first scan, or
 * defines the whole table. The initial functions do nothing; the pointers are never null. */
extern struct vel_platform_api __platform_api;

#ifdef __cplusplus
}
#endif

#endif
