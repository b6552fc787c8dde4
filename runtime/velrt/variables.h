/* Variables of declared types: elements of arrays, and what pointers point to. */
#ifndef VELRT_VARIABLES_H
#define VELRT_VARIABLES_H

#include "velrt/types.h"

/* What a pointer of a program points to may be a variable of any other type. */
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

/* The place of subscript `i` among those from `low` to `high`: a subscript outside of
 * them means the nearest that there is. */
static inline size_t vel_index(i64 i, i64 low, i64 high) {
  return i <= low ? 0 : (size_t)((u64)(i < high ? i : high) - (u64)low);
}

#endif
