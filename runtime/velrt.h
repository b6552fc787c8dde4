/* Runtime of generated programs: the names that the generated C relies on.
 *
 * C11 with the GNU extensions of gcc and clang. All values wrap; nothing here has
 * undefined behaviour whatever it is given, save null or dangling pointers. Only
 * <stddef.h> and <stdint.h> come with it, so a program's own names stay free. */
#ifndef VELRT_H
#define VELRT_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Types ------------------------------------------------------------------ */

typedef uint8_t u8; /* also BOOL: 0 FALSE, 1 TRUE */
typedef int8_t i8;
typedef uint16_t u16; /* also a code unit of a WSTRING */
typedef int16_t i16;
typedef uint32_t u32; /* also DATE and DT (seconds since 1970-01-01), TOD (milliseconds) */
typedef int32_t i32;  /* also TIME (milliseconds) */
typedef uint64_t u64;
typedef int64_t i64; /* also LTIME (nanoseconds) */
typedef float f32;
typedef double f64;

/* ---- Device memory ---------------------------------------------------------- */

/* Bytes of the areas, which lie one after the other in `_m`: markers, inputs,
 * outputs. Every source file of one program must see the same sizes. */
#ifndef VEL_MEMORY_M
#define VEL_MEMORY_M 16384
#endif
#ifndef VEL_MEMORY_I
#define VEL_MEMORY_I 1024
#endif
#ifndef VEL_MEMORY_Q
#define VEL_MEMORY_Q 1024
#endif
#define VEL_MEMORY_BYTES (VEL_MEMORY_M + VEL_MEMORY_I + VEL_MEMORY_Q)

#if __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "device memory is little-endian, and so must the machine be"
#endif

/* The memory image, all zero at start. Weak: the program defines it, in the sizes
 * that it was compiled with, and its source files share one. */
u8 _m[VEL_MEMORY_BYTES] __attribute__((weak, aligned(8)));

/* Bit `a` of `_m`, 0 or 1; bit 0 is the lowest of byte 0. Outside `_m` 0. */
static inline u8 gbit(u32 a) {
  return a / 8 < VEL_MEMORY_BYTES && (_m[a / 8] & (1u << (a % 8))) != 0;
}

/* Sets bit `a` of `_m` when `d` is not 0, else clears it. Outside `_m` nothing is
 * written. */
static inline void sbit(u32 a, u8 d) {
  u8 mask = (u8)(1u << (a % 8));
  if (a / 8 >= VEL_MEMORY_BYTES) return;
  _m[a / 8] = (u8)(d != 0 ? _m[a / 8] | mask : _m[a / 8] & ~mask);
}

/* `size` bytes (at most 8) of `_m` from `offset` on. Where they are not all inside
 * `_m`, the address of 8 zero bytes that are nobody's. */
static inline u8* vel_memory_at(u32 offset, u32 size) {
  static union {
    u64 zero;
    u8 bytes[8];
  } outside;
  if (offset <= VEL_MEMORY_BYTES && size <= VEL_MEMORY_BYTES - offset) return _m + offset;
  outside.zero = 0;
  return outside.bytes;
}

/* Units of `_m`: may lie at any byte and share their bytes with other units. */
typedef u8 vel_unit_u8 __attribute__((may_alias, aligned(1)));
typedef i8 vel_unit_i8 __attribute__((may_alias, aligned(1)));
typedef u16 vel_unit_u16 __attribute__((may_alias, aligned(1)));
typedef i16 vel_unit_i16 __attribute__((may_alias, aligned(1)));
typedef u32 vel_unit_u32 __attribute__((may_alias, aligned(1)));
typedef i32 vel_unit_i32 __attribute__((may_alias, aligned(1)));
typedef u64 vel_unit_u64 __attribute__((may_alias, aligned(1)));
typedef i64 vel_unit_i64 __attribute__((may_alias, aligned(1)));
typedef f32 vel_unit_f32 __attribute__((may_alias, aligned(1)));
typedef f64 vel_unit_f64 __attribute__((may_alias, aligned(1)));

/* Lvalue: the unit of `type`, one of the names above, at byte `offset` of `_m`. A
 * unit that is not whole inside `_m` reads 0, and writing it changes nothing. */
#define VEL_MEM(type, offset) (*(vel_unit_##type*)(void*)vel_memory_at((offset), sizeof(type)))

/* ---- Integer division ------------------------------------------------------- */

/* Quotient, rounded towards zero. Division by zero gives 0; the smallest value
 * divided by -1 is itself. */
static inline i8 vel_div_i8(i8 a, i8 b) { return (i8)(b == 0 ? 0 : a / b); }
static inline i16 vel_div_i16(i16 a, i16 b) { return (i16)(b == 0 ? 0 : a / b); }
static inline i32 vel_div_i32(i32 a, i32 b) {
  return b == 0 ? 0 : b == -1 ? (i32)(0u - (u32)a) : a / b;
}
static inline i64 vel_div_i64(i64 a, i64 b) {
  return b == 0 ? 0 : b == -1 ? (i64)((u64)0 - (u64)a) : a / b;
}
static inline u8 vel_div_u8(u8 a, u8 b) { return (u8)(b == 0 ? 0 : a / b); }
static inline u16 vel_div_u16(u16 a, u16 b) { return (u16)(b == 0 ? 0 : a / b); }
static inline u32 vel_div_u32(u32 a, u32 b) { return b == 0 ? 0 : a / b; }
static inline u64 vel_div_u64(u64 a, u64 b) { return b == 0 ? 0 : a / b; }

/* Remainder, with the sign of `a`. Modulo zero gives 0. */
static inline i8 vel_mod_i8(i8 a, i8 b) { return (i8)(b == 0 ? 0 : a % b); }
static inline i16 vel_mod_i16(i16 a, i16 b) { return (i16)(b == 0 ? 0 : a % b); }
static inline i32 vel_mod_i32(i32 a, i32 b) { return b == 0 || b == -1 ? 0 : a % b; }
static inline i64 vel_mod_i64(i64 a, i64 b) { return b == 0 || b == -1 ? 0 : a % b; }
static inline u8 vel_mod_u8(u8 a, u8 b) { return (u8)(b == 0 ? 0 : a % b); }
static inline u16 vel_mod_u16(u16 a, u16 b) { return (u16)(b == 0 ? 0 : a % b); }
static inline u32 vel_mod_u32(u32 a, u32 b) { return b == 0 ? 0 : a % b; }
static inline u64 vel_mod_u64(u64 a, u64 b) { return b == 0 ? 0 : a % b; }

/* ---- Power ------------------------------------------------------------------ */

/* `base` to the power of `exponent`. Anything to the power of 0 is 1; a negative
 * base with a fractional exponent gives NaN; what is too large gives an infinity. */
f64 vel_pow(f64 base, f64 exponent);

/* ---- Times ------------------------------------------------------------------ */

/* A duration computed as a real number: its fraction is dropped, what is out of range
 * takes the nearest value of the type, and NaN is 0. */
static inline i32 vel_truncate_i32(f64 x) {
  if (!(x > -2147483648.0)) return x != x ? 0 : INT32_MIN;
  return x < 2147483647.0 ? (i32)x : INT32_MAX;
}
static inline i64 vel_truncate_i64(f64 x) {
  if (!(x > -9223372036854775808.0)) return x != x ? 0 : INT64_MIN;
  return x < 9223372036854775808.0 ? (i64)x : INT64_MAX;
}

/* A time of day moved by `milliseconds`, round the clock. */
static inline u32 vel_tod_shift(u32 tod, i64 milliseconds) {
  const i64 day = 86400000;
  const i64 moved = ((i64)tod + milliseconds % day) % day;
  return (u32)(moved < 0 ? moved + day : moved);
}

/* A date and time moved by `seconds`; wraps. */
static inline u32 vel_dt_shift(u32 dt, i64 seconds) { return (u32)((u64)dt + (u64)seconds); }

/* ---- Bits of variables ------------------------------------------------------ */

/* Bit `n` of the integer variable `x`, written `vgbit((x, n))`, and what sets it to
 * `d`. */
#define vgbit(variable_and_bit) vel_bit_of variable_and_bit
#define vel_bit_of(x, n) ((u8)(((u64)(x) >> (n)) & 1u))
#define vsbit(x, n, d) \
  ((x) = (__typeof__(x))((d) ? (u64)(x) | (u64)1 << (n) : (u64)(x) & ~((u64)1 << (n))))

/* ---- Strings ---------------------------------------------------------------- */

/* STRING[n] is char[n + 1], WSTRING[n] is u16[n + 1] in UTF-16; both end in a zero. */

/* Copies `source` to `target`, which has `size` bytes with its terminator. What
 * does not fit is cut. The two may overlap. Nothing is written when `size` is 0. */
void vel_string_set(char* target, size_t size, const char* source);
/* The same for a WSTRING of `units` code units with its terminator. */
void vel_wstring_set(u16* target, size_t units, const u16* source);

/* Less than 0, 0, or greater than 0 as `a` comes before, is equal to, or comes
 * after `b`: by the first code unit that differs, as an unsigned number. */
int vel_string_compare(const char* a, const char* b);
int vel_wstring_compare(const u16* a, const u16* b);

/* ---- FOR loops -------------------------------------------------------------- */

/* May a loop at `x` take one more step of `by` without passing `to`? 1 or 0; with
 * a step of 0 always 0. Never computes x + by, so nothing overflows. */
static inline int vel_for_more_i64(i64 x, i64 to, i64 by) {
  if (by > 0) return x <= to && (u64)to - (u64)x >= (u64)by;
  return by < 0 && x >= to && (u64)x - (u64)to >= (u64)0 - (u64)by;
}
static inline int vel_for_more_u64(u64 x, u64 to, i64 by) {
  if (by > 0) return x <= to && to - x >= (u64)by;
  return by < 0 && x >= to && x - to >= (u64)0 - (u64)by;
}

#ifdef __cplusplus
}
#endif

#endif
