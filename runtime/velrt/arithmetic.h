/* The arithmetic and the loops of Structured Text. */
#ifndef VELRT_ARITHMETIC_H
#define VELRT_ARITHMETIC_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Integer division ------------------------------------------------------- */

/* With VEL_STRICT a division by zero calls a function that the platform defines. */
#ifdef VEL_STRICT
void vel_division_by_zero(void);
#define VEL_BY_ZERO (vel_division_by_zero(), 0)
#else
#define VEL_BY_ZERO 0
#endif

/* Quotient, rounded towards zero. Division by zero gives 0; the smallest value
 * divided by -1 is itself. */
static inline i8 vel_div_i8(i8 a, i8 b) { return (i8)(b == 0 ? VEL_BY_ZERO : a / b); }
static inline i16 vel_div_i16(i16 a, i16 b) { return (i16)(b == 0 ? VEL_BY_ZERO : a / b); }
static inline i32 vel_div_i32(i32 a, i32 b) {
  return b == 0 ? VEL_BY_ZERO : b == -1 ? (i32)(0u - (u32)a) : a / b;
}
static inline i64 vel_div_i64(i64 a, i64 b) {
  return b == 0 ? VEL_BY_ZERO : b == -1 ? (i64)((u64)0 - (u64)a) : a / b;
}
static inline u8 vel_div_u8(u8 a, u8 b) { return (u8)(b == 0 ? VEL_BY_ZERO : a / b); }
static inline u16 vel_div_u16(u16 a, u16 b) { return (u16)(b == 0 ? VEL_BY_ZERO : a / b); }
static inline u32 vel_div_u32(u32 a, u32 b) { return b == 0 ? VEL_BY_ZERO : a / b; }
static inline u64 vel_div_u64(u64 a, u64 b) { return b == 0 ? VEL_BY_ZERO : a / b; }

/* Remainder, with the sign of `a`. Modulo zero gives 0. */
static inline i8 vel_mod_i8(i8 a, i8 b) { return (i8)(b == 0 ? VEL_BY_ZERO : a % b); }
static inline i16 vel_mod_i16(i16 a, i16 b) { return (i16)(b == 0 ? VEL_BY_ZERO : a % b); }
static inline i32 vel_mod_i32(i32 a, i32 b) { return b == 0 ? VEL_BY_ZERO : b == -1 ? 0 : a % b; }
static inline i64 vel_mod_i64(i64 a, i64 b) { return b == 0 ? VEL_BY_ZERO : b == -1 ? 0 : a % b; }
static inline u8 vel_mod_u8(u8 a, u8 b) { return (u8)(b == 0 ? VEL_BY_ZERO : a % b); }
static inline u16 vel_mod_u16(u16 a, u16 b) { return (u16)(b == 0 ? VEL_BY_ZERO : a % b); }
static inline u32 vel_mod_u32(u32 a, u32 b) { return b == 0 ? VEL_BY_ZERO : a % b; }
static inline u64 vel_mod_u64(u64 a, u64 b) { return b == 0 ? VEL_BY_ZERO : a % b; }

/* ---- Complement ------------------------------------------------------------- */

/* The bitwise complement of `x`. */
static inline u8 vel_not_u8(u8 x) { return (u8)~x; }
static inline u16 vel_not_u16(u16 x) { return (u16)~x; }

/* ---- Values ----------------------------------------------------------------- */

/* `x` for macros that compare, shift or convert it: a compiler that sees the expression of a
 * constant or of a BOOL there warns of what the program does not say. */
#define VEL_VALUE(type) \
  static inline type vel_value_##type(type x) { return x; }
VEL_VALUE(i8)
VEL_VALUE(i16)
VEL_VALUE(i32)
VEL_VALUE(i64)
VEL_VALUE(u8)
VEL_VALUE(u16)
VEL_VALUE(u32)
VEL_VALUE(u64)
VEL_VALUE(f64)
#undef VEL_VALUE

/* ---- Power ------------------------------------------------------------------ */

/* `base` to the power of `exponent`. Anything to the power of 0 is 1; a negative
 * base with a fractional exponent gives NaN; overflow gives an infinity. */
f64 vel_pow(f64 base, f64 exponent);

/* ---- Times ------------------------------------------------------------------ */

/* Converts a duration computed as a real number to the integer of a TIME or LTIME: truncates,
 * saturates when out of range, and converts NaN to 0. */
static inline i32 vel_truncate_i32(f64 x) {
  if (!(x > -2147483648.0)) return x != x ? 0 : INT32_MIN;
  return x < 2147483647.0 ? (i32)x : INT32_MAX;
}
static inline i64 vel_truncate_i64(f64 x) {
  if (!(x > -9223372036854775808.0)) return x != x ? 0 : INT64_MIN;
  return x < 9223372036854775808.0 ? (i64)x : INT64_MAX;
}

/* A time of day plus `milliseconds`; wraps at midnight. */
static inline u32 vel_tod_shift(u32 tod, i64 milliseconds) {
  const i64 day = 86400000;
  const i64 moved = ((i64)tod + milliseconds % day) % day;
  return (u32)(moved < 0 ? moved + day : moved);
}

/* A date and time plus `seconds`; wraps. */
static inline u32 vel_dt_shift(u32 dt, i64 seconds) { return (u32)((u64)dt + (u64)seconds); }

/* ---- FOR loops -------------------------------------------------------------- */

/* 1 when a loop at `x` can take another step of `by` without passing `to`, else 0; always 0 for
 * a step of 0. Does not compute x + by, which could overflow. */
static inline int vel_for_more_i64(i64 x, i64 to, i64 by) {
  if (by > 0) return x <= to && (u64)to - (u64)x >= (u64)by;
  return by < 0 && x >= to && (u64)x - (u64)to >= (u64)0 - (u64)by;
}
static inline int vel_for_more_u64(u64 x, u64 to, i64 by) {
  if (by > 0) return x <= to && to - x >= (u64)by;
  return by < 0 && x >= to && x - to >= (u64)0 - (u64)by;
}
static inline int vel_for_up_i64(i64 x, i64 to, u64 by) {
  return by > 0 && x <= to && (u64)to - (u64)x >= by;
}
static inline int vel_for_up_u64(u64 x, u64 to, u64 by) {
  return by > 0 && x <= to && to - x >= by;
}

#ifdef __cplusplus
}
#endif

#endif
