/* The clock of programs. */
#ifndef VELRT_CLOCK_H
#define VELRT_CLOCK_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The time at the start of the scan in milliseconds, from any origin; wraps. The platform
 * sets it before each scan and does not change it during the scan, so that all timers of a
 * scan see the same time. Two scans must be less than 24 days apart. Initially 0. */
extern u32 vel_scan_time;

#ifdef __cplusplus
}
#endif

#endif
