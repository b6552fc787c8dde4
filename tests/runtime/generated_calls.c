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

#define DEFINE_INTEGER(type)                                 \
  u8 get_bit_##type(type x, i64 n) { return vgbit((x, n)); } \
  type set_bit_##type(type x, i64 n, int d) {                \
    vsbit(x, n, d);                                          \
    return x;                                                \
  }
FOR_EACH_INTEGER(DEFINE_INTEGER)

i16 crossed(const char* text) {
  return STRING_TO_INT((INT_TO_WSTRING((WSTRING_TO_INT((text))), _returnString)));
}

int compare_texts(i16 a, i16 b) {
  return vel_string_compare(INT_TO_STRING((a), _returnString), INT_TO_STRING((b), _returnString));
}

int count_evaluations(int x) {
  i16 words[8] = {0};
  vsbit(words[x++], 3, 1);
  (void)FC_MUX_INT(2, ABS((x++)), (i16)1, (i16)2);
  (void)STRING_TO_INT((INT_TO_STRING((words[--x]), _returnString)));
  return x;
}
