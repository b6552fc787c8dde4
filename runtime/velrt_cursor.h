/* Reading a text unit by unit. For the runtime's own sources. */
#ifndef VELRT_CURSOR_H
#define VELRT_CURSOR_H

#include "velrt/types.h"

/* A place in a text that ends in a zero. A copy is a place to come back to. */
typedef struct {
  const void* at; /* u16* when `wide` is not 0, else char* */
  int wide;
} vel_cursor;

/* The code unit at the cursor; 0 at the end. */
static inline unsigned vel_peek(const vel_cursor* c) {
  return c->wide ? *(const u16*)c->at : *(const unsigned char*)c->at;
}

/* Passes the unit at the cursor, which must not be at the end. */
static inline void vel_advance(vel_cursor* c) {
  c->at = (const char*)c->at + (c->wide ? sizeof(u16) : 1);
}

static inline int vel_is_letter(unsigned unit) { return (unit | 32) >= 'a' && (unit | 32) <= 'z'; }
static inline int vel_is_digit(unsigned unit) { return unit >= '0' && unit <= '9'; }

/* The start of `text` but for blanks. */
vel_cursor vel_start(const void* text, int wide);
/* Is there nothing left but blanks? Passes them. */
int vel_at_end(vel_cursor* c);

/* Each passes what it takes, and passes nothing where it is not there. */

/* True when `unit` is there. */
int vel_take(vel_cursor* c, char unit);
/* True when `word`, given in capitals, is there in capitals or not. */
int vel_take_word(vel_cursor* c, const char* word);
/* -1 or 1 for a sign, 0 where there is none. */
int vel_take_sign(vel_cursor* c);
/* The value of a digit of `base`, also of one behind an underscore when it `follows`
 * another digit; -1 where there is none. */
int vel_take_digit(vel_cursor* c, unsigned base, int follows);
/* True when there is at least one digit. A value above 64 bits becomes UINT64_MAX. */
int vel_take_digits(vel_cursor* c, unsigned base, u64* value);
/* The base of a number that is written with one, such as 16#, else 10. */
unsigned vel_take_base(vel_cursor* c);

/* Sums and products that stop at UINT64_MAX. */
u64 vel_add_saturating(u64 a, u64 b);
u64 vel_multiply_saturating(u64 a, u64 b);

#endif
