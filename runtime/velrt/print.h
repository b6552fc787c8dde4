/* Conversion of values to strings. */
#ifndef VELRT_PRINT_H
#define VELRT_PRINT_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The number of code units of the longest string, including its terminator, rounded up. */
#define VEL_PRINTED_UNITS 32

/* A buffer for the string of a value. Every use of the name makes a new buffer, so that one
 * expression can contain several conversions. It lives until the end of the enclosing
 * block. */
#define _returnString ((void*)(u16[VEL_PRINTED_UNITS]){0})

/* x_TO_STRING and x_TO_WSTRING write `value` to `to`, which has room for VEL_PRINTED_UNITS
 * code units, and return it as char* or u16*. They cannot fail, and STRING_TO_x converts the
 * string back to the same value:
 *   BOOL                    TRUE, FALSE
 *   integers, bit strings   decimal, -12
 *   REAL, LREAL             the fewest digits that identify the value: 0.1, 100.0; with an
 *                           exponent outside of 0.0001 to 1E16: 1.5e+20; NaN, Inf, -Inf
 *   TIME, LTIME             T#1500ms, LTIME#-20ns
 *   DATE, DT                D#2026-11-21, DT#2026-11-21-12:30:15; a DATE that is not at
 *                           midnight is rounded down to its day
 *   TOD                     TOD#12:30:15, TOD#12:30:15.250; the hours of an invalid TOD of
 *                           24 hours or more exceed 23 */
#define BOOL_TO_STRING(value, to) vel_print_bool((value) != 0, (to))
#define BYTE_TO_STRING(value, to) vel_print_unsigned((u8)(value), (to))
#define WORD_TO_STRING(value, to) vel_print_unsigned((u16)(value), (to))
#define DWORD_TO_STRING(value, to) vel_print_unsigned((u32)(value), (to))
#define LWORD_TO_STRING(value, to) vel_print_unsigned((u64)(value), (to))
#define SINT_TO_STRING(value, to) vel_print_signed((i8)(value), (to))
#define USINT_TO_STRING(value, to) vel_print_unsigned((u8)(value), (to))
#define INT_TO_STRING(value, to) vel_print_signed((i16)(value), (to))
#define UINT_TO_STRING(value, to) vel_print_unsigned((u16)(value), (to))
#define DINT_TO_STRING(value, to) vel_print_signed((i32)(value), (to))
#define UDINT_TO_STRING(value, to) vel_print_unsigned((u32)(value), (to))
#define LINT_TO_STRING(value, to) vel_print_signed((i64)(value), (to))
#define ULINT_TO_STRING(value, to) vel_print_unsigned((u64)(value), (to))
#define REAL_TO_STRING(value, to) vel_print_real((f32)(value), (to))
#define LREAL_TO_STRING(value, to) vel_print_lreal((f64)(value), (to))
#define TIME_TO_STRING(value, to) vel_print_time((i32)(value), (to))
#define LTIME_TO_STRING(value, to) vel_print_ltime((i64)(value), (to))
#define DATE_TO_STRING(value, to) vel_print_date((u32)(value), (to))
#define DT_TO_STRING(value, to) vel_print_dt((u32)(value), (to))
#define TOD_TO_STRING(value, to) vel_print_tod((u32)(value), (to))

#define BOOL_TO_WSTRING(value, to) vel_widen(BOOL_TO_STRING(value, to))
#define BYTE_TO_WSTRING(value, to) vel_widen(BYTE_TO_STRING(value, to))
#define WORD_TO_WSTRING(value, to) vel_widen(WORD_TO_STRING(value, to))
#define DWORD_TO_WSTRING(value, to) vel_widen(DWORD_TO_STRING(value, to))
#define LWORD_TO_WSTRING(value, to) vel_widen(LWORD_TO_STRING(value, to))
#define SINT_TO_WSTRING(value, to) vel_widen(SINT_TO_STRING(value, to))
#define USINT_TO_WSTRING(value, to) vel_widen(USINT_TO_STRING(value, to))
#define INT_TO_WSTRING(value, to) vel_widen(INT_TO_STRING(value, to))
#define UINT_TO_WSTRING(value, to) vel_widen(UINT_TO_STRING(value, to))
#define DINT_TO_WSTRING(value, to) vel_widen(DINT_TO_STRING(value, to))
#define UDINT_TO_WSTRING(value, to) vel_widen(UDINT_TO_STRING(value, to))
#define LINT_TO_WSTRING(value, to) vel_widen(LINT_TO_STRING(value, to))
#define ULINT_TO_WSTRING(value, to) vel_widen(ULINT_TO_STRING(value, to))
#define REAL_TO_WSTRING(value, to) vel_widen(REAL_TO_STRING(value, to))
#define LREAL_TO_WSTRING(value, to) vel_widen(LREAL_TO_STRING(value, to))
#define TIME_TO_WSTRING(value, to) vel_widen(TIME_TO_STRING(value, to))
#define LTIME_TO_WSTRING(value, to) vel_widen(LTIME_TO_STRING(value, to))
#define DATE_TO_WSTRING(value, to) vel_widen(DATE_TO_STRING(value, to))
#define DT_TO_WSTRING(value, to) vel_widen(DT_TO_STRING(value, to))
#define TOD_TO_WSTRING(value, to) vel_widen(TOD_TO_STRING(value, to))

/* All of them return `to`. */
char* vel_print_bool(int value, void* to);
char* vel_print_signed(i64 value, void* to);
char* vel_print_unsigned(u64 value, void* to);
char* vel_print_real(f32 value, void* to);
char* vel_print_lreal(f64 value, void* to);
char* vel_print_time(i32 milliseconds, void* to);
char* vel_print_ltime(i64 nanoseconds, void* to);
char* vel_print_date(u32 seconds, void* to);
char* vel_print_dt(u32 seconds, void* to);
char* vel_print_tod(u32 milliseconds, void* to);
/* Converts the ASCII string at `to` to a WSTRING in place; `to` has to be aligned for that. */
u16* vel_widen(void* to);

#ifdef __cplusplus
}
#endif

#endif
