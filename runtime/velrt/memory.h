/* Device memory. */
#ifndef VELRT_MEMORY_H
#define VELRT_MEMORY_H

#include "velrt/bits.h"
#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Sizes in bytes of the areas, which follow each other in `_m`: markers, inputs, outputs,
 * and hidden state, which has no addresses. All source files of a program must be compiled
 * with the same sizes. */
#ifndef VEL_MEMORY_M
#define VEL_MEMORY_M 16384
#endif
#ifndef VEL_MEMORY_I
#define VEL_MEMORY_I 1024
#endif
#ifndef VEL_MEMORY_Q
#define VEL_MEMORY_Q 1024
#endif
#ifndef VEL_MEMORY_STATE
#define VEL_MEMORY_STATE 0
#endif
#define VEL_MEMORY_BYTES (VEL_MEMORY_M + VEL_MEMORY_I + VEL_MEMORY_Q + VEL_MEMORY_STATE)

#if __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "device memory is little-endian, and so must the machine be"
#endif

/* The memory image, initially zero. Every source file of a program defines it, in the sizes with
 * which it is compiled, and all of them share the largest. C++ has no common symbols. */
#ifdef __cplusplus
u8 _m[VEL_MEMORY_BYTES] __attribute__((weak, aligned(8)));
#else
u8 _m[VEL_MEMORY_BYTES] __attribute__((common, aligned(8)));
#endif

/* Bit `a` of `_m`, 0 or 1; bit 0 is the lowest of byte 0. 0 outside `_m`. */
static inline u8 gbit(u32 a) {
  return a / 8 < VEL_MEMORY_BYTES && (_m[a / 8] & (1u << (a % 8))) != 0;
}

/* Sets bit `a` of `_m` when `d` is not 0, else clears it. Does nothing outside `_m`. */
static inline void sbit(u32 a, u8 d) {
  u8 mask = (u8)(1u << (a % 8));
  if (a / 8 >= VEL_MEMORY_BYTES) return;
  _m[a / 8] = (u8)(d != 0 ? _m[a / 8] | mask : _m[a / 8] & ~mask);
}

/* The address of `size` bytes (at most 8) of `_m` at `offset`. Unless all of them are inside
 * `_m`, the address of 8 zero bytes that have no other use. */
static inline u8* vel_memory_at(u32 offset, u32 size) {
  static union {
    u64 zero;
    u8 bytes[8];
  } outside;
  if (offset <= VEL_MEMORY_BYTES && size <= VEL_MEMORY_BYTES - offset) return _m + offset;
  outside.zero = 0;
  return outside.bytes;
}

/* Types for access to `_m`, where units may be unaligned and overlap each other. */
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

/* An lvalue: the unit of `type` (`u16` for vel_unit_u16) at byte `offset` of `_m`. A unit that
 * is not completely inside `_m` reads as 0, and writing to it has no effect. */
#define VEL_MEM(type, offset) (*(vel_unit_##type*)(void*)vel_memory_at((offset), sizeof(type)))

/* A pointer to the `type` at byte `offset` of `_m`, which must be aligned for it and hold all of
 * it. */
#define VEL_AT(type, offset) ((__typeof__(type)*)(void*)(_m + (offset)))

/* Fills a zone of `_m`. If `bitUnits` is 1, sets the `n` bits from bit `a` on when `v` is not 0
 * and else clears them; if it is 0, sets the `n` bytes from byte `a` on to the low byte of
 * `v`. Ignores the part of the zone that is outside `_m`. */
static inline void mset(u32 a, u32 n, u32 bitUnits, u32 v) {
  if (bitUnits != 0) {
    vel_fill_bits(_m, VEL_MEMORY_BYTES, a, n, v != 0);
  } else {
    vel_fill_bytes(_m, VEL_MEMORY_BYTES, a, n, (u8)v);
  }
}

#ifdef __cplusplus
}
#endif

#endif
