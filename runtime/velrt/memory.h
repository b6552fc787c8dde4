/* Device memory. */
#ifndef VELRT_MEMORY_H
#define VELRT_MEMORY_H

#include "velrt/bits.h"
#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bytes of the areas, which lie one after the other in `_m`: markers, inputs, outputs,
 * and hidden state that no address reaches. Every source file of one program must see
 * the same sizes. */
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

/* Fills a zone of `_m`. With `bitUnits` 1 its `n` bits from bit `a` on, which are set when
 * `v` is not 0, else cleared; with 0 its `n` bytes from byte `a` on, with the low byte of
 * `v`. The part of the zone that is outside `_m` is left out. */
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
