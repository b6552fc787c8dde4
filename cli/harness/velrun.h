/* The interface between libvelrun.a, which has the main function, and the driver that
 * `velc run` generates for each program. */
#ifndef VELRUN_H
#define VELRUN_H

#include <stddef.h>
#include <stdint.h>

typedef void (*vel_run_sink)(const void* bytes, size_t size);

/* Initializes all variables, before the first scan. */
void vel_run_prepare(void);
/* Runs one scan: every program, or the tasks that are due at `now`, the time in milliseconds since
 * the start. */
void vel_run_step(uint64_t now);
/* Passes the value of every variable to `sink`, in order of declaration. */
void vel_run_values(vel_run_sink sink);

/* The driver can use these as the platform's refresh of local I/O. Each traces its call in one
 * line. Not to be called after vel_run_values. */
void vel_run_trace_input(uint32_t offset, uint32_t count);
void vel_run_trace_output(uint32_t offset, uint32_t count);

#endif
