#include <string.h>

#include "velrt/strings.h"

/* Code units as unsigned numbers, for comparisons. */
static inline int vel_string_unit(char unit) { return (unsigned char)unit; }
static inline int vel_wstring_unit(u16 unit) { return unit; }

#define UNIT char
#define TEXT(name) vel_string_##name
#include "velrt_text.h"
#undef UNIT
#undef TEXT

#define UNIT u16
#define TEXT(name) vel_wstring_##name
#include "velrt_text.h"
