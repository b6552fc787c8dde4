/* The elementary values of variables, in order and without the gaps between them. */
#ifndef VELRUN_VALUES_H
#define VELRUN_VALUES_H

#include "velrun.h"

/* Gets each run of bytes that has no gaps. */
typedef void (*vel_bytes_visit)(char* bytes, size_t size);

void vel_visit_bytes(const vel_run_shape* shape, void* variable, vel_bytes_visit visit);

/* Counts the bytes of all values of a variable. */
size_t vel_count_bytes(const vel_run_shape* shape);

#endif
