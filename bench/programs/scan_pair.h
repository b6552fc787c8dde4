/* A program in two versions: translated by velc and written by hand. Both must have the same
 * variables in the same order. */
#ifndef SCAN_PAIR_H
#define SCAN_PAIR_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* An attribute of the object that contains the variables of a program. */
#define VARIABLES __attribute__((aligned(64)))

struct scan_variables {
  const void* at;
  size_t size; /* in bytes */
};

struct scan_program {
  void (*init)(void);
  void (*scan)(void);
  struct scan_variables variables[2]; /* the second one for a second PROGRAM, if any */
};

extern const struct scan_program translated;
extern const struct scan_program by_hand;

#ifdef __cplusplus
}
#endif

#endif
