/* The types of generated programs. */
#ifndef VELRT_TYPES_H
#define VELRT_TYPES_H

#include <stddef.h>
#include <stdint.h>

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

#endif
