/* The translation VEL_TRANSLATION of the program VEL_PROGRAM, and of VEL_SECOND where each scan
 * runs another one behind it. */
#include VEL_TRANSLATION

#include "bench/programs/scan_pair.h"

#define NAME(program, part) PASTE(program, part)
#define PASTE(program, part) program##part

/* Where the variables lie is no difference between the two programs. */
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
