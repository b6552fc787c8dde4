/* The interface between libvelrun.a, which has the main function, and the driver that
 * `velc run` generates for each program. */
#ifndef VELRUN_H
#define VELRUN_H

#include <stddef.h>
#include <stdint.h>

/* How the elementary values lie in a variable. There is one shape for each type. */
typedef struct vel_run_shape vel_run_shape;

typedef struct {
  size_t offset;
  const vel_run_shape* shape;
} vel_run_part;

/* How elementary values are compared. */
enum { VEL_RUN_BYTES, VEL_RUN_F32, VEL_RUN_F64, VEL_RUN_STRING, VEL_RUN_WSTRING };

struct vel_run_shape {
  size_t size;                  /* in bytes, padding included */
  size_t count;                 /* of elements or parts; 1 for an elementary value */
  const vel_run_shape* element; /* of an array; else NULL */
  const vel_run_part* parts;    /* of a structure; else NULL */
  int kind;                     /* of an elementary value */
};

/* Gets a variable of this shape. */
typedef void (*vel_run_visit)(const vel_run_shape* shape, void* variable);

/* Initializes all variables, before the first scan. */
void vel_run_prepare(void);
/* Gives variables the values of the command line. */
void vel_run_settings(void);
/* Runs one scan: every program, or the tasks that are due at `now`, the time in milliseconds since
 * the start. */
void vel_run_step(uint64_t now);
/* Visits every variable that is to be printed, in order of declaration. */
void vel_run_values(vel_run_visit visit);
/* The same for those that are retained, whose values `visit` may change. */
void vel_run_retained(vel_run_visit visit);
/* The same for those that are traced. */
void vel_run_traced(vel_run_visit visit);
/* The same for those of the stimulus, all of which are elementary; `visit` may change them. */
void vel_run_stimulated(vel_run_visit visit);

/* The main function of programs that `velc build` makes, whose driver calls it. Returns the exit
 * status: 0, or 2 for arguments that it does not know. */
int vel_build_main(int argc, char** argv);

/* The driver can use these as the platform's refresh of local I/O. Each traces its call in one
 * line. Not to be called after vel_run_values. */
void vel_run_trace_input(uint32_t offset, uint32_t count);
void vel_run_trace_output(uint32_t offset, uint32_t count);

#endif
