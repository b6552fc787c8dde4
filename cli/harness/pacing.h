/* Scans by the clock. */
#ifndef VELRUN_PACING_H
#define VELRUN_PACING_H

#include <stdint.h>
#include <stdio.h>

/* From now on scans wait for their time; `cycle` milliseconds pass from one to the next. SIGINT and
 * SIGTERM end the waiting. */
void vel_pacing_start(uint64_t cycle);

/* Waits until `now`, in milliseconds since the start, and counts how late the scan begins. Returns
 * 0 when the run is to end instead. Returns 1 at once unless pacing has been started. */
int vel_pacing_wait(uint64_t now);

/* Writes in one line the number of scans, the sum of their lateness and the greatest in
 * nanoseconds, the scan that had that, from 0, and the number of those that began a cycle or more
 * too late. */
void vel_pacing_report(FILE* file);

#endif
