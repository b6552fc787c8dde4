/* Includes VEL_TRANSLATION, the translation of the program VEL_PROGRAM. If VEL_SECOND is defined,
 * each scan runs that program too. */
#include VEL_TRANSLATION

#include "bench/programs/scan_pair.h"

#define NAME(program, part) PASTE(program, part)
#define PASTE(program, part) program##part

/* Aligned as in the program written by hand, so that the addresses do not favour one of the two. */
#define DATA(program) static struct program NAME(program, _data) VARIABLES
#define DATA_OF(program) \
  { &NAME(program, _data), sizeof NAME(program, _data) }

DATA(VEL_PROGRAM);
#ifdef VEL_SECOND
DATA(VEL_SECOND);

static void both_init(void) {
  NAME(VEL_PROGRAM, _init)();
  NAME(VEL_SECOND, _init)();
}
static void both_scan(void) {
  NAME(VEL_PROGRAM, _scan)();
  NAME(VEL_SECOND, _scan)();
}

const struct scan_program translated = {
    both_init, both_scan, {DATA_OF(VEL_PROGRAM), DATA_OF(VEL_SECOND)}};
#else
const struct scan_program translated = {
    NAME(VEL_PROGRAM, _init), NAME(VEL_PROGRAM, _scan), {DATA_OF(VEL_PROGRAM)}};
#endif
