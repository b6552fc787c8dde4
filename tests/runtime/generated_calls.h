// Calls as generated programs make them, compiled as C: some of the names are macros that
// C++ does not have the means for.
#pragma once

#include "velrt.h"

#ifdef __cplusplus
extern "C" {
#endif

// clang-format off
#define FOR_EACH_TYPE(X) \
  X(BOOL, u8) X(BYTE, u8) X(WORD, u16) X(DWORD, u32) X(LWORD, u64) X(SINT, i8) X(INT, i16) \
  X(DINT, i32) X(LINT, i64) X(USINT, u8) X(UINT, u16) X(UDINT, u32) X(ULINT, u64) X(REAL, f32) \
  X(LREAL, f64) X(TIME, i32) X(LTIME, i64) X(DATE, u32) X(TOD, u32) X(DT, u32)
#define FOR_EACH_INTEGER(X) X(i8) X(i16) X(i32) X(i64) X(u8) X(u16) X(u32) X(u64)
// clang-format on

#define DECLARE_CONVERSIONS(name, type)      \
  type read_##name(const char* text);        \
  type read_wide_##name(const u16* text);    \
  void print_##name(type value, char* text); \
  void print_wide_##name(type value, u16* text);
FOR_EACH_TYPE(DECLARE_CONVERSIONS)

#define DECLARE_INTEGER(type)       \
  u8 get_bit_##type(type x, i64 n); \
  type set_bit_##type(type x, i64 n, int d);
FOR_EACH_INTEGER(DECLARE_INTEGER)

// WSTRING_TO_INT(text), and STRING_TO_INT of the text that its value has as a WSTRING.
i16 crossed(const char* text);
// Compares the texts of two numbers; both are made in one expression.
int compare_texts(i16 a, i16 b);
// What is left of `x` after two increments and a decrement, each in a macro's argument.
int count_evaluations(int x);

#ifdef __cplusplus
}
#endif
