/* Runtime of generated programs: the names that the generated C uses.
 *
 * C11 with the GNU extensions of gcc and clang. All values wrap on overflow unless a
 * function says otherwise. No argument causes undefined behaviour, except null or dangling
 * pointers. Nothing depends on the locale. The only headers included are <stddef.h> and
 * <stdint.h>, so that other names of the C library stay free for the program.
 *
 * Most names that generated calls use are macros with parameters, so that a variable
 * may have such a name too. Each evaluates its arguments once. */
#ifndef VELRT_H
#define VELRT_H

#include "velrt/arithmetic.h"
#include "velrt/clock.h"
#include "velrt/memory.h"
#include "velrt/mux.h"
#include "velrt/numeric.h"
#include "velrt/platform.h"
#include "velrt/print.h"
#include "velrt/read.h"
#include "velrt/strings.h"
#include "velrt/tasks.h"
#include "velrt/types.h"
#include "velrt/variables.h"

#endif
