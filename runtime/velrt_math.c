#include <math.h>

#include "velrt/numeric.h"

f64 vel_pow(f64 base, f64 exponent) { return pow(base, exponent); }

f64 vel_sqrt(f64 x) { return sqrt(x); }
f64 vel_ln(f64 x) { return log(x); }
f64 vel_log10(f64 x) { return log10(x); }
f64 vel_exp(f64 x) { return exp(x); }
f64 vel_sin(f64 x) { return sin(x); }
f64 vel_cos(f64 x) { return cos(x); }
f64 vel_tan(f64 x) { return tan(x); }
f64 vel_asin(f64 x) { return asin(x); }
f64 vel_acos(f64 x) { return acos(x); }
f64 vel_atan(f64 x) { return atan(x); }
