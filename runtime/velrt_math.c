#include <math.h>

#include "velrt.h"

f64 vel_pow(f64 base, f64 exponent) { return pow(base, exponent); }
