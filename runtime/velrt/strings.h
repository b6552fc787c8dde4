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

/* The functions of the standard. Positions count from 1. Those that make a text write it
 * to `to`, which has `size` code units with its terminator, cut what does not fit, and give
 * `to`; `size` is at least 1, and the texts that are read lie outside of `to`.
 *   length    code units
 *   left      the first `count` units; all of a shorter text, none for a negative count
 *   right     the last `count` units, likewise
 *   mid       `count` units from `position` on; none when no unit stands there
 *   concat    `count` texts, one behind the other
 *   insert    `b` behind unit `position` of `a`, 0 for its start
 *   delete    `in` without `count` units from `position` on
 *   replace   `b` in the place of `count` units of `a` from `position` on
 *   find      the first position of `b` in `a`; 0 when there is none or `b` is empty
 * insert, delete and replace leave the text as it is when there is no such position; a
 * negative count is 0. Lengths and positions are at most 32767, as STRING is. */
i16 vel_string_length(const char* in);
char* vel_string_left(char* to, size_t size, const char* in, i64 count);
char* vel_string_right(char* to, size_t size, const char* in, i64 count);
char* vel_string_mid(char* to, size_t size, const char* in, i64 count, i64 position);
char* vel_string_concat(char* to, size_t size, size_t count, const char* const* texts);
char* vel_string_insert(char* to, size_t size, const char* a, const char* b, i64 position);
char* vel_string_delete(char* to, size_t size, const char* in, i64 count, i64 position);
char* vel_string_replace(char* to, size_t size, const char* a, const char* b, i64 count,
                         i64 position);
i16 vel_string_find(const char* a, const char* b);

i16 vel_wstring_length(const u16* in);
u16* vel_wstring_left(u16* to, size_t size, const u16* in, i64 count);
u16* vel_wstring_right(u16* to, size_t size, const u16* in, i64 count);
u16* vel_wstring_mid(u16* to, size_t size, const u16* in, i64 count, i64 position);
u16* vel_wstring_concat(u16* to, size_t size, size_t count, const u16* const* texts);
u16* vel_wstring_insert(u16* to, size_t size, const u16* a, const u16* b, i64 position);
u16* vel_wstring_delete(u16* to, size_t size, const u16* in, i64 count, i64 position);
u16* vel_wstring_replace(u16* to, size_t size, const u16* a, const u16* b, i64 count, i64 position);
i16 vel_wstring_find(const u16* a, const u16* b);

#ifdef __cplusplus
}
#endif

#endif
