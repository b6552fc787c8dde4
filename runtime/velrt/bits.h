/* Access to bits of variables and parameters, and filling of memory. */
#ifndef VELRT_BITS_H
#define VELRT_BITS_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Bits of variables ------------------------------------------------------ */

/* Bit `n` of the lowest `width` of `bits`, 0 or 1; 0 when there is no such bit. */
static inline u8 vel_bit(u64 bits, size_t width, i64 n) {
  return n >= 0 && (u64)n < width && (bits >> n & 1) != 0;
}
/* `bits` with bit `n` of the lowest `width` set to `d`; unchanged when there is no such bit. */
static inline u64 vel_with_bit(u64 bits, size_t width, i64 n, int d) {
  if (n < 0 || (u64)n >= width) return bits;
  return d ? bits | (u64)1 << n : bits & ~((u64)1 << n);
}

/* Bit `n` of the integer variable `x`, written `vgbit((x, n))`: 0 or 1, and 0 when `x`
 * has no such bit. */
#define vgbit(variable_and_bit) vel_bit_of variable_and_bit
#define vel_bit_of(x, n) vel_bit((u64)(x), sizeof(x) * 8, (n))
/* Sets bit `n` of the integer variable `x` when `d` is not 0, else clears it. Does nothing
 * when `x` has no such bit. */
#define vsbit(x, n, d)                                                                       \
  __extension__({                                                                            \
    const int vel_d = (d) != 0; /* first, because evaluating it may change `x` */            \
    const i64 vel_n = (n);                                                                   \
    __auto_type vel_x = &(x);                                                                \
    *vel_x = (__typeof__(*vel_x))vel_with_bit((u64)*vel_x, sizeof *vel_x * 8, vel_n, vel_d); \
  })

/* ---- Parts of variables ----------------------------------------------------- */

/* The bits of the integer `x` from bit `n` on, as many as the unsigned `type` has. All of them must
 * be bits of `x`. */
#define VEL_PART(type, x, n) ((type)((u64)(x) >> (n)))
/* Replaces these bits of the integer variable `x` by `d`. */
#define VEL_SET_PART(type, x, n, d)                                                               \
  __extension__({                                                                                 \
    const type vel_d = (d); /* first, because evaluating it may change `x` */                     \
    __auto_type vel_x = &(x);                                                                     \
    *vel_x =                                                                                      \
        (__typeof__(*vel_x))(((u64)*vel_x & ~((u64)(type) ~(type)0 << (n))) | (u64)vel_d << (n)); \
  })

/* ---- Bits of parameters ----------------------------------------------------- */

/* An actual parameter. Its bit 0 is the lowest bit of its first byte. */
typedef struct {
  void* data;
  u32 bits; /* number of its bits */
} vel_bit_param;

/* Bit `bit` of the parameter, 0 or 1; 0 when it has no such bit. */
u8 getBitOfParam(const vel_bit_param* param, i64 bit);
/* Sets that bit when `value` is not 0, else clears it. Does nothing when the parameter has no
 * such bit. */
void setBitOfParam(const vel_bit_param* param, i64 bit, u8 value);

/* ---- Zones ------------------------------------------------------------------ */

/* Fills `n` bits of the `bytes` bytes at `memory`, from bit `a` on, with 1 when `set` is
 * not 0, else with 0. Ignores bits outside. */
void vel_fill_bits(u8* memory, u32 bytes, u32 a, u32 n, int set);
/* Fills `n` bytes, from byte `a` on, with `value`. Ignores bytes outside. */
void vel_fill_bytes(u8* memory, u32 bytes, u32 a, u32 n, u8 value);

#ifdef __cplusplus
}
#endif

#endif
