#include "velrt_cursor.h"

static void skip_blanks(vel_cursor* c) {
  while (vel_peek(c) == ' ' || vel_peek(c) == '\t') vel_advance(c);
}

vel_cursor vel_start(const void* text, int wide) {
  vel_cursor c = {text, wide};
  skip_blanks(&c);
  return c;
}

int vel_at_end(vel_cursor* c) {
  skip_blanks(c);
  return vel_peek(c) == 0;
}

int vel_take(vel_cursor* c, char unit) {
  if (vel_peek(c) != (unsigned char)unit) return 0;
  vel_advance(c);
  return 1;
}

int vel_take_word(vel_cursor* c, const char* word) {
  vel_cursor probe = *c;
  for (; *word != 0; ++word) {
    const unsigned unit = vel_peek(&probe);
    const unsigned capital = unit >= 'a' && unit <= 'z' ? unit - ('a' - 'A') : unit;
    if (capital != (unsigned char)*word) return 0;
    vel_advance(&probe);
  }
  *c = probe;
  return 1;
}

int vel_take_sign(vel_cursor* c) { return vel_take(c, '-') ? -1 : vel_take(c, '+'); }

int vel_take_digit(vel_cursor* c, unsigned base, int follows) {
  vel_cursor probe = *c;
  if (follows) vel_take(&probe, '_');
  const unsigned unit = vel_peek(&probe);
  const unsigned digit = vel_is_digit(unit)    ? unit - '0'
                         : vel_is_letter(unit) ? (unit | 32) - 'a' + 10
                                               : base;
  if (digit >= base) return -1;
  vel_advance(&probe);
  *c = probe;
  return (int)digit;
}

int vel_take_digits(vel_cursor* c, unsigned base, u64* value) {
  int digit = vel_take_digit(c, base, 0);
  if (digit < 0) return 0;
  *value = 0;
  for (; digit >= 0; digit = vel_take_digit(c, base, 1)) {
    *value = vel_add_saturating(vel_multiply_saturating(*value, base), (u64)digit);
  }
  return 1;
}

unsigned vel_take_base(vel_cursor* c) {
  static const struct {
    const char* text;
    unsigned base;
  } bases[] = {{"2#", 2}, {"8#", 8}, {"16#", 16}};
  for (size_t i = 0; i < sizeof bases / sizeof *bases; ++i) {
    if (vel_take_word(c, bases[i].text)) return bases[i].base;
  }
  return 10;
}

u64 vel_add_saturating(u64 a, u64 b) { return a > UINT64_MAX - b ? UINT64_MAX : a + b; }

u64 vel_multiply_saturating(u64 a, u64 b) {
  return b != 0 && a > UINT64_MAX / b ? UINT64_MAX : a * b;
}
