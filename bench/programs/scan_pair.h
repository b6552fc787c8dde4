/* A program twice: as velc translates it and as it is written by hand. Both keep their
 * variables in the same order and types. */
#ifndef SCAN_PAIR_H
#define SCAN_PAIR_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Of the object that holds a program's variables. */
#define VARIABLES __attribute__((aligned(64)))

struct scan_variables {
  const void* at;
  size_t size; /* in bytes */
};

struct scan_program {
  void (*init)(void);
  void (*scan)(void);
  struct scan_variables variables[2]; /* of a second PROGRAM too, if there is one */
};

extern const struct scan_program translated;
extern const struct scan_program by_hand;

#ifdef __cplusplus
}
#endif

#endif
