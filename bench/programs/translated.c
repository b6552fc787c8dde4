/* The translation VEL_TRANSLATION of the program VEL_PROGRAM. */
#include VEL_TRANSLATION

#include "bench/programs/scan_pair.h"

#define NAME(program, part) PASTE(program, part)
#define PASTE(program, part) program##part

/* Where the variables lie is no difference between the two programs. */
static struct VEL_PROGRAM NAME(VEL_PROGRAM, _data) VARIABLES;

const struct scan_program translated = {NAME(VEL_PROGRAM, _init), NAME(VEL_PROGRAM, _scan),
                                        &NAME(VEL_PROGRAM, _data), sizeof NAME(VEL_PROGRAM, _data)};
