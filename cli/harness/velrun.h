/* What `velc run` adds to a generated program so that it can be run: the program's
 * side, written by velc for each program, of what libvelrun.a calls. */
#ifndef VELRUN_H
#define VELRUN_H

#include <stddef.h>

typedef void (*vel_run_sink)(const void* bytes, size_t size);

/* Gives every variable its value before the first scan. */
void vel_run_prepare(void);
/* One scan of every program. */
void vel_run_step(void);
/* Passes the value of every variable to `sink`, in order of declaration. */
void vel_run_values(vel_run_sink sink);

#endif
