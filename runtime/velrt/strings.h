/* STRING and WSTRING variables. */
#ifndef VELRT_STRINGS_H
#define VELRT_STRINGS_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* STRING[n] is char[n + 1], WSTRING[n] is u16[n + 1] in UTF-16; both end in a zero. */

/* Copies `source` to `target`, which has `size` bytes with its terminator. What
 * does not fit is cut. The two may overlap. Nothing is written when `size` is 0. */
void vel_string_set(char* target, size_t size, const char* source);
/* The same for a WSTRING of `units` code units with its terminator. */
void vel_wstring_set(u16* target, size_t units, const u16* source);

/* Less than 0, 0, or greater than 0 as `a` comes before, is equal to, or comes
 * after `b`: by the first code unit that differs, as an unsigned number. */
int vel_string_compare(const char* a, const char* b);
int vel_wstring_compare(const u16* a, const u16* b);

#ifdef __cplusplus
}
#endif

#endif
