/* Runtime of generated programs: the names that the generated C relies on.
 *
 * C11 with the GNU extensions of gcc and clang. All values wrap unless a function says
 * otherwise; nothing here has undefined behaviour whatever it is given, save null or
 * dangling pointers. Only <stddef.h> and <stdint.h> come with it, so a program's own
 * names stay free. Nothing depends on the locale.
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
#include "velrt/types.h"
#include "velrt/variables.h"

#endif
