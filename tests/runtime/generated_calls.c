#include "generated_calls.h"

#include <string.h>

#define DEFINE_CONVERSIONS(name, type)                                                   \
  type read_##name(const char* text) { return STRING_TO_##name((text)); }                \
  type read_wide_##name(const u16* text) { return WSTRING_TO_##name((text)); }           \
  void print_##name(type value, char* text) {                                            \
    strcpy(text, name##_TO_STRING((value), _returnString));                              \
  }                                                                                      \
  void print_wide_##name(type value, u16* text) {                                        \
    vel_wstring_set(text, VEL_PRINTED_UNITS, name##_TO_WSTRING((value), _returnString)); \
  }
FOR_EACH_TYPE(DEFINE_CONVERSIONS)

i16 crossed_narrow(const char* text) { return WSTRING_TO_INT((text)); }
i16 crossed_wide(const u16* text) { return STRING_TO_INT((text)); }

int compare_texts(i16 a, i16 b) {
  return vel_string_compare(INT_TO_STRING((a), _returnString), INT_TO_STRING((b), _returnString));
}

i32 nested(const char* text) {
  return STRING_TO_DINT((DINT_TO_WSTRING((STRING_TO_DINT((text))), _returnString)));
}

#define DEFINE_INTEGER(type)                                                    \
  type abs_##type(type x) {                                                     \
    _Static_assert(sizeof ABS((x)) == sizeof x, "ABS keeps the type's width");  \
    return ABS((x));                                                            \
  }                                                                             \
  u8 get_bit_##type(type x, i64 n) { return vgbit((x, n)); }                    \
  type set_bit_##type(type x, i64 n, int d) {                                   \
    vsbit(x, n, d);                                                             \
    return x;                                                                   \
  }                                                                             \
  type mux_##type(type k, type a, type b, type c) {                             \
    const type narrow = ((type)FC_MUX_INT(3, k, (type)a, (type)b, (type)c));    \
    const type wide = ((type)FC_MUX_LONGLONG(3, k, (type)a, (type)b, (type)c)); \
    return narrow != wide ? 77 : wide;                                          \
  }
FOR_EACH_INTEGER(DEFINE_INTEGER)

f32 mux_f32(i16 k, f32 a, f32 b) { return ((f32)FC_MUX_LONGREAL(2, k, (f32)a, (f32)b)); }
f64 mux_f64(u64 k, f64 a, f64 b) { return ((f64)FC_MUX_LONGREAL(2, k, (f64)a, (f64)b)); }

void count_evaluations(int* x, int* k) {
  i16 words[2] = {0, 0};
  vsbit(words[(*x)++], 3, 1);
  (void)ABS((words[(*x)++]));
  (void)FC_MUX_INT(2, (*k)++, (i16)1, (i16)2);
  (void)STRING_TO_INT((INT_TO_STRING((words[--(*x)]), _returnString)));
}

void set_memory_bit(u32 offset, int n, int d) { vsbit(VEL_MEM(i16, offset), n, d); }
