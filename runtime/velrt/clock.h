/* The time that programs see. */
#ifndef VELRT_CLOCK_H
#define VELRT_CLOCK_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Milliseconds at the start of the scan, from any point in time on; wraps. The platform
 * sets it before each scan and leaves it alone during the scan, so that all timers of a
 * scan see one time. Two scans lie less than 24 days apart. 0 at start. */
extern u32 vel_scan_time;

#ifdef __cplusplus
}
#endif

#endif
