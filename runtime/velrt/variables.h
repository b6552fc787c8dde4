/* Variables of declared types: elements of arrays, and what pointers point to. */
#ifndef VELRT_VARIABLES_H
#define VELRT_VARIABLES_H

#include "velrt/types.h"

/* Types for access through pointers of a program, which may point to variables of other types. */
typedef u8 vel_any_u8 __attribute__((may_alias));
typedef i8 vel_any_i8 __attribute__((may_alias));
typedef u16 vel_any_u16 __attribute__((may_alias));
typedef i16 vel_any_i16 __attribute__((may_alias));
typedef u32 vel_any_u32 __attribute__((may_alias));
typedef i32 vel_any_i32 __attribute__((may_alias));
typedef u64 vel_any_u64 __attribute__((may_alias));
typedef i64 vel_any_i64 __attribute__((may_alias));
typedef f32 vel_any_f32 __attribute__((may_alias));
typedef f64 vel_any_f64 __attribute__((may_alias));
#define VEL_STRUCT struct __attribute__((may_alias))

/* The index from 0 of subscript `i` in an array with the bounds `low` and `high`. A subscript
 * outside of the bounds is replaced by the nearest bound. */
static inline size_t vel_index(i64 i, i64 low, i64 high) {
  return i <= low ? 0 : (size_t)((u64)(i < high ? i : high) - (u64)low);
}
/* The same for a subscript of type ULINT, which may exceed every bound. */
static inline size_t vel_index_u64(u64 i, i64 low, i64 high) {
  return vel_index(i <= INT64_MAX ? (i64)i : INT64_MAX, low, high);
}

#endif
