/* STRING and WSTRING variables. */
#ifndef VELRT_STRINGS_H
#define VELRT_STRINGS_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* STRING[n] is char[n + 1], WSTRING[n] is u16[n + 1] in UTF-16; both are zero-terminated. */

/* Copies `source` to `target`, which has `size` bytes including the terminator, and truncates
 * it if necessary. The two may overlap. Does nothing when `size` is 0. */
void vel_string_set(char* target, size_t size, const char* source);
/* The same for a WSTRING of `units` code units including the terminator. */
void vel_wstring_set(u16* target, size_t units, const u16* source);

/* Less than, equal to, or greater than 0 when `a` is less than, equal to, or greater than `b`.
 * The first different code units decide, compared as unsigned numbers. */
int vel_string_compare(const char* a, const char* b);
int vel_wstring_compare(const u16* a, const u16* b);

/* The functions of the standard. Positions count from 1. Functions with a string as result write
 * it to `to`, which has `size` code units including the terminator, truncate it if necessary, and
 * return `to`. `size` is at least 1, and no other argument overlaps `to`.
 *   length    the number of code units
 *   left      the first `count` units; all of a shorter string, none for a negative count
 *   right     the last `count` units, likewise
 *   mid       `count` units from `position` on; none when there is no such position
 *   concat    the concatenation of `count` strings
 *   insert    `a` with `b` inserted after unit `position`, 0 for the start
 *   delete    `in` without `count` units from `position` on
 *   replace   `a` with `count` units from `position` on replaced by `b`
 *   find      the first position of `b` in `a`; 0 when there is none or `b` is empty
 * insert, delete and replace return the string unchanged when there is no such position; a
 * negative count is 0. Lengths and positions are at most 32767, the limit of STRING. */
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
