/* Numeric functions and BCD. */
#ifndef VELRT_NUMERIC_H
#define VELRT_NUMERIC_H

#include "velrt/arithmetic.h"
#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Real functions --------------------------------------------------------- */

/* Computed as LREAL. A NaN gives NaN, and overflow gives an infinity.
 *
 *            range of x    outside it
 *   SQRT     x >= 0        NaN
 *   LN       x > 0         0: negative infinity; below: NaN. To base e
 *   LOG      x > 0         as LN. To base 10
 *   EXP      all           e to the power of x
 *   EXPT     all           x to the power of y; see vel_pow
 *   SIN      finite        NaN. In radians, as are all angles
 *   COS      finite        NaN
 *   TAN      finite        NaN
 *   ASIN     -1 to 1       NaN. Gives -pi/2 to pi/2
 *   ACOS     -1 to 1       NaN. Gives 0 to pi
 *   ATAN     all           gives -pi/2 to pi/2
 *   FABS     all           without its sign, -0.0 and infinities too */
#define SQRT(x) vel_sqrt(x)
#define LN(x) vel_ln(x)
#define LOG(x) vel_log10(x)
#define EXP(x) vel_exp(x)
#define EXPT(x, y) vel_pow((x), (y))
#define SIN(x) vel_sin(x)
#define COS(x) vel_cos(x)
#define TAN(x) vel_tan(x)
#define ASIN(x) vel_asin(x)
#define ACOS(x) vel_acos(x)
#define ATAN(x) vel_atan(x)
#define FABS(x) __builtin_fabs(x)

f64 vel_sqrt(f64 x);
f64 vel_ln(f64 x);
f64 vel_log10(f64 x);
f64 vel_exp(f64 x);
f64 vel_sin(f64 x);
f64 vel_cos(f64 x);
f64 vel_tan(f64 x);
f64 vel_asin(f64 x);
f64 vel_acos(f64 x);
f64 vel_atan(f64 x);

/* ---- Absolute value --------------------------------------------------------- */

/* The absolute value of an integer, in its own type. The lowest value of a signed type has
 * no positive counterpart and is returned unchanged. */
#define ABS(x)                                                            \
  __extension__({                                                         \
    __auto_type vel_x = (x);                                              \
    vel_x = (__typeof__(vel_x))(vel_x > 0 ? (u64)vel_x : 0 - (u64)vel_x); \
    vel_x;                                                                \
  })

/* ---- BCD -------------------------------------------------------------------- */

/* Decodes two BCD digits to 0 to 99. A half byte above 9 counts as 0. */
#define BCD_TO_INT(bcd) vel_bcd_to_int(bcd)
/* Encodes a number as two BCD digits. Saturates at 0 and 99. */
#define INT_TO_BCD(number) vel_int_to_bcd(number)

static inline i16 vel_bcd_to_int(u8 bcd) {
  const int tens = bcd >> 4 <= 9 ? bcd >> 4 : 0;
  const int ones = (bcd & 15) <= 9 ? bcd & 15 : 0;
  return (i16)(tens * 10 + ones);
}
static inline u8 vel_int_to_bcd(i64 number) {
  const i64 n = number < 0 ? 0 : number > 99 ? 99 : number;
  return (u8)(n / 10 * 16 + n % 10);
}

#ifdef __cplusplus
}
#endif

#endif
