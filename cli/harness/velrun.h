/* What `velc run` adds to a generated program so that it can be run: the program's
 * side, written by velc for each program, of what libvelrun.a calls. */
#ifndef VELRUN_H
#define VELRUN_H

#include <stddef.h>
#include <stdint.h>

typedef void (*vel_run_sink)(const void* bytes, size_t size);

/* Gives every variable its value before the first scan. */
void vel_run_prepare(void);
/* One scan of every program. */
void vel_run_step(void);
/* Passes the value of every variable to `sink`, in order of declaration. */
void vel_run_values(vel_run_sink sink);

/* Offered to the program's side as the platform's refresh of local I/O: each writes a
 * line about its call. Before the values are handed out only. */
void vel_run_trace_input(uint32_t offset, uint32_t count);
void vel_run_trace_output(uint32_t offset, uint32_t count);

#endif
