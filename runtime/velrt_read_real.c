#include <float.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include "velrt/read.h"
#include "velrt_cursor.h"

/* Converts a string to a form that strtod and strtof read and round correctly in every locale:
 * without a decimal point, which depends on the locale, and without digits too far back to
 * matter. */

/* More digits than it takes to distinguish two adjacent numbers and their midpoint. */
enum { MAX_DIGITS = 800 };

typedef struct {
  char text[MAX_DIGITS + 40]; /* for strtod; starts with the sign */
  int length;
  int infinite; /* written as infinity, not too large */
} c_number;

/* The exponent of the digits that are kept; `sticky` is set when a dropped digit is not zero. */
typedef struct {
  i64 exponent;
  int sticky;
} dropped;

static void put(c_number* out, char unit) { out->text[out->length++] = unit; }

static void put_exponent(c_number* out, char mark, i64 exponent) {
  const i64 limit = 1000000; /* far outside the range of exponents */
  if (exponent > limit) exponent = limit;
  if (exponent < -limit) exponent = -limit;
  snprintf(out->text + out->length, sizeof out->text - (size_t)out->length, "%c%d", mark,
           (int)exponent);
}

/* Accepts the digits of a decimal number and drops leading zeros. `scale` is the change of the
 * exponent for each digit. */
static int take_decimals(vel_cursor* c, c_number* out, i64 scale, dropped* rest) {
  int digit = vel_take_digit(c, 10, 0);
  if (digit < 0) return 0;
  for (; digit >= 0; digit = vel_take_digit(c, 10, 1)) {
    rest->exponent += scale;
    if (out->length == 1 && digit == 0) continue;
    if (out->length <= MAX_DIGITS) {
      put(out, (char)('0' + digit));
    } else {
      ++rest->exponent;
      rest->sticky |= digit != 0;
    }
  }
  return 1;
}

static int take_decimal_number(vel_cursor* c, c_number* out) {
  dropped rest = {0, 0};
  if (!take_decimals(c, out, 0, &rest)) return 0;
  if (vel_take(c, '.') && !take_decimals(c, out, -1, &rest)) return 0;
  if (vel_take_word(c, "E")) {
    const int negative = vel_take_sign(c) < 0;
    u64 value = 0;
    if (!vel_take_digits(c, 10, &value)) return 0;
    const i64 exponent = value > INT64_MAX / 2 ? INT64_MAX / 2 : (i64)value;
    rest.exponent += negative ? -exponent : exponent;
  }
  if (rest.sticky) {
    put(out, '1');
    --rest.exponent;
  }
  if (out->length == 1) put(out, '0');
  put_exponent(out, 'e', rest.exponent);
  return 1;
}

static int take_based_number(vel_cursor* c, unsigned base, c_number* out) {
  const int bits = base == 2 ? 1 : base == 8 ? 3 : 4;
  dropped rest = {0, 0};
  u64 mantissa = 0;
  int digit = vel_take_digit(c, base, 0);
  if (digit < 0) return 0;
  for (; digit >= 0; digit = vel_take_digit(c, base, 1)) {
    if (mantissa >> (64 - bits) == 0) {
      mantissa = mantissa << bits | (u64)digit;
    } else {
      rest.exponent += bits;
      rest.sticky |= digit != 0;
    }
  }
  if (rest.sticky) mantissa |= 1;
  out->length += snprintf(out->text + out->length, sizeof out->text - (size_t)out->length, "0x%llx",
                          (unsigned long long)mantissa);
  put_exponent(out, 'p', rest.exponent);
  return 1;
}

static int take_prefix(vel_cursor* c) {
  return vel_take_word(c, "REAL#") || vel_take_word(c, "LREAL#");
}

/* False when `text` is not a number. */
static int read_number(const void* text, int wide, c_number* out) {
  vel_cursor c = vel_start(text, wide);
  int sign = vel_take_sign(&c);
  if (take_prefix(&c) && sign == 0) sign = vel_take_sign(&c);
  out->length = 0;
  put(out, sign < 0 ? '-' : '+');

  const unsigned base = vel_take_base(&c);
  out->infinite = base == 10 && vel_take_word(&c, "INF");
  if (out->infinite || (base == 10 && vel_take_word(&c, "NAN"))) {
    snprintf(out->text + 1, sizeof out->text - 1, out->infinite ? "inf" : "nan");
  } else if (!(base == 10 ? take_decimal_number(&c, out) : take_based_number(&c, base, out))) {
    return 0;
  }
  return vel_at_end(&c);
}

f32 vel_read_real(const void* text, int wide) {
  c_number number;
  if (!read_number(text, wide, &number)) return 0;
  const f32 value = strtof(number.text, NULL);
  return isinf(value) && !number.infinite ? copysignf(FLT_MAX, value) : value;
}

f64 vel_read_lreal(const void* text, int wide) {
  c_number number;
  if (!read_number(text, wide, &number)) return 0;
  const f64 value = strtod(number.text, NULL);
  return isinf(value) && !number.infinite ? copysign(DBL_MAX, value) : value;
}
