/* Conversion of strings to values. */
#ifndef VELRT_READ_H
#define VELRT_READ_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* STRING_TO_x and WSTRING_TO_x both accept a STRING (char*) or a WSTRING (u16*).
 *
 * The whole string must be one value, in any letter case; spaces and tabs around it are
 * ignored. Any other string gives 0, FALSE or the start of the calendar. A value outside
 * the type's range gives the nearest value of the type.
 *
 * Numbers may have a sign and single underscores between digits:
 *   integers, bit strings   12, -12, 1_000, 2#1010, 8#17, 16#1F, -16#1F
 *   REAL, LREAL             the same and 1.5, 1.5E3, 2e-3; NaN, Inf; before or after the
 *                           sign REAL# or LREAL#. Rounded once, to the nearest value
 *   BOOL                    TRUE, FALSE, 1, 0
 *   TIME, LTIME             1d2h3m4s5ms6us7ns, each unit at most once and in this order,
 *                           1h_30m, the last with a fraction 1.5s; before it a sign, and
 *                           before that T#, TIME#, LT# or LTIME#. Truncated to the unit
 *                           of the type
 *   DATE                    2026-11-21; before it D# or DATE#
 *   TOD                     12:30, 12:30:15, 12:30:15.250; before it TOD# or
 *                           TIME_OF_DAY#
 *   DT                      2026-11-21-12:30:15, as DATE and TOD; before it DT# or
 *                           DATE_AND_TIME#
 * A date, hour, minute or second that does not exist is not a value. */
#define STRING_TO_BOOL(text) VEL_READ(vel_read_bool, text)
#define STRING_TO_BYTE(text) VEL_READ_INTEGER(u8, text, 0, UINT8_MAX)
#define STRING_TO_WORD(text) VEL_READ_INTEGER(u16, text, 0, UINT16_MAX)
#define STRING_TO_DWORD(text) VEL_READ_INTEGER(u32, text, 0, UINT32_MAX)
#define STRING_TO_LWORD(text) VEL_READ_INTEGER(u64, text, 0, UINT64_MAX)
#define STRING_TO_SINT(text) VEL_READ_INTEGER(i8, text, INT8_MIN, INT8_MAX)
#define STRING_TO_USINT(text) VEL_READ_INTEGER(u8, text, 0, UINT8_MAX)
#define STRING_TO_INT(text) VEL_READ_INTEGER(i16, text, INT16_MIN, INT16_MAX)
#define STRING_TO_UINT(text) VEL_READ_INTEGER(u16, text, 0, UINT16_MAX)
#define STRING_TO_DINT(text) VEL_READ_INTEGER(i32, text, INT32_MIN, INT32_MAX)
#define STRING_TO_UDINT(text) VEL_READ_INTEGER(u32, text, 0, UINT32_MAX)
#define STRING_TO_LINT(text) VEL_READ_INTEGER(i64, text, INT64_MIN, INT64_MAX)
#define STRING_TO_ULINT(text) VEL_READ_INTEGER(u64, text, 0, UINT64_MAX)
#define STRING_TO_REAL(text) VEL_READ(vel_read_real, text)
#define STRING_TO_LREAL(text) VEL_READ(vel_read_lreal, text)
#define STRING_TO_TIME(text) VEL_READ(vel_read_time, text)
#define STRING_TO_LTIME(text) VEL_READ(vel_read_ltime, text)
#define STRING_TO_TOD(text) VEL_READ(vel_read_tod, text)
#define STRING_TO_DATE(text) VEL_READ(vel_read_date, text)
#define STRING_TO_DT(text) VEL_READ(vel_read_dt, text)

#define WSTRING_TO_BOOL(text) STRING_TO_BOOL(text)
#define WSTRING_TO_BYTE(text) STRING_TO_BYTE(text)
#define WSTRING_TO_WORD(text) STRING_TO_WORD(text)
#define WSTRING_TO_DWORD(text) STRING_TO_DWORD(text)
#define WSTRING_TO_LWORD(text) STRING_TO_LWORD(text)
#define WSTRING_TO_SINT(text) STRING_TO_SINT(text)
#define WSTRING_TO_USINT(text) STRING_TO_USINT(text)
#define WSTRING_TO_INT(text) STRING_TO_INT(text)
#define WSTRING_TO_UINT(text) STRING_TO_UINT(text)
#define WSTRING_TO_DINT(text) STRING_TO_DINT(text)
#define WSTRING_TO_UDINT(text) STRING_TO_UDINT(text)
#define WSTRING_TO_LINT(text) STRING_TO_LINT(text)
#define WSTRING_TO_ULINT(text) STRING_TO_ULINT(text)
#define WSTRING_TO_REAL(text) STRING_TO_REAL(text)
#define WSTRING_TO_LREAL(text) STRING_TO_LREAL(text)
#define WSTRING_TO_TIME(text) STRING_TO_TIME(text)
#define WSTRING_TO_LTIME(text) STRING_TO_LTIME(text)
#define WSTRING_TO_TOD(text) STRING_TO_TOD(text)
#define WSTRING_TO_DATE(text) STRING_TO_DATE(text)
#define WSTRING_TO_DT(text) STRING_TO_DT(text)

/* 1 for a WSTRING, 0 for a STRING. */
#define VEL_IS_WIDE(text) _Generic((text), char* : 0, const char* : 0, u16* : 1, const u16* : 1)
/* Both expand `text` only once, so that nested calls do not grow exponentially. */
#define VEL_READ(read, text)               \
  __extension__({                          \
    __auto_type vel_text = (text);         \
    read(vel_text, VEL_IS_WIDE(vel_text)); \
  })
#define VEL_READ_INTEGER(type, text, lowest, highest)                       \
  ((type) __extension__({                                                   \
    __auto_type vel_text = (text);                                          \
    vel_read_integer(vel_text, VEL_IS_WIDE(vel_text), (lowest), (highest)); \
  }))

/* `text` is a u16* when `wide` is not 0, else a char*. */
u8 vel_read_bool(const void* text, int wide);
/* `lowest` is 0 or below. A negative value is returned modulo 2 to the power of 64. */
u64 vel_read_integer(const void* text, int wide, i64 lowest, u64 highest);
f32 vel_read_real(const void* text, int wide);
f64 vel_read_lreal(const void* text, int wide);
i32 vel_read_time(const void* text, int wide);
i64 vel_read_ltime(const void* text, int wide);
u32 vel_read_tod(const void* text, int wide);
u32 vel_read_date(const void* text, int wide);
u32 vel_read_dt(const void* text, int wide);

#ifdef __cplusplus
}
#endif

#endif
