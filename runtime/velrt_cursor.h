/* Reads a string unit by unit. Internal to the runtime. */
#ifndef VELRT_CURSOR_H
#define VELRT_CURSOR_H

#include "velrt/types.h"

/* A position in a zero-terminated string. Copy it to be able to return to the position. */
typedef struct {
  const void* at; /* u16* when `wide` is not 0, else char* */
  int wide;
} vel_cursor;

/* The code unit at the cursor; 0 at the end. */
static inline unsigned vel_peek(const vel_cursor* c) {
  return c->wide ? *(const u16*)c->at : *(const unsigned char*)c->at;
}

/* Advances by one unit. The cursor must not be at the end. */
static inline void vel_advance(vel_cursor* c) {
  c->at = (const char*)c->at + (c->wide ? sizeof(u16) : 1);
}

static inline int vel_is_letter(unsigned unit) { return (unit | 32) >= 'a' && (unit | 32) <= 'z'; }
static inline int vel_is_digit(unsigned unit) { return unit >= '0' && unit <= '9'; }

/* The position of the first unit of `text` that is not a blank. */
vel_cursor vel_start(const void* text, int wide);
/* Skips blanks. True when the cursor is then at the end. */
int vel_at_end(vel_cursor* c);

/* These advance past what they accept. When they do not accept it, the cursor stays. */

/* Accepts `unit`. */
int vel_take(vel_cursor* c, char unit);
/* Accepts `word`, given in capitals, in any letter case. */
int vel_take_word(vel_cursor* c, const char* word);
/* Accepts a sign: -1 or 1; 0 when there is none. */
int vel_take_sign(vel_cursor* c);
/* Accepts a digit of `base`, and an underscore before it when the digit `follows` another
 * one. Returns the value of the digit; -1 when there is none. */
int vel_take_digit(vel_cursor* c, unsigned base, int follows);
/* Accepts one or more digits. A value of more than 64 bits becomes UINT64_MAX. */
int vel_take_digits(vel_cursor* c, unsigned base, u64* value);
/* Accepts the base of a number, such as 16#; 10 when there is none. */
unsigned vel_take_base(vel_cursor* c);

/* Sums and products that saturate at UINT64_MAX. */
u64 vel_add_saturating(u64 a, u64 b);
u64 vel_multiply_saturating(u64 a, u64 b);

#endif
