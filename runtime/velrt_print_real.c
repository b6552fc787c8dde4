#include <float.h>
#include <inttypes.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "velrt/print.h"

typedef struct {
  u64 digits;
  int exponent; /* of the last digit */
} decimal;

/* The differences between REAL and LREAL. */
typedef struct {
  f64 smallest_normal;
  int kept_digits;    /* decimal digits that every normal number preserves */
  int telling_digits; /* decimal digits that distinguish every number from its neighbours */
  f64 (*parse)(const char* text);
} format;

static f64 parse_real(const char* text) { return (f64)strtof(text, NULL); }
static f64 parse_lreal(const char* text) { return strtod(text, NULL); }

static const format real_format = {FLT_MIN, FLT_DIG, FLT_DECIMAL_DIG, parse_real};
static const format lreal_format = {DBL_MIN, DBL_DIG, DBL_DECIMAL_DIG, parse_lreal};

/* `value` rounded to `count` digits. Skips the decimal point, which depends on the locale. */
static decimal rounded(f64 value, int count) {
  char text[48];
  decimal result = {0, 0};
  snprintf(text, sizeof text, "%.*e", count - 1, value);
  const char* at = text;
  for (; *at != 'e'; ++at) {
    if (*at >= '0' && *at <= '9') result.digits = result.digits * 10 + (u64)(*at - '0');
  }
  result.exponent = (int)strtol(at + 1, NULL, 10) - (count - 1);
  return result;
}

static int reads_as(decimal number, f64 value, const format* f) {
  char text[32];
  snprintf(text, sizeof text, "%" PRIu64 "e%d", number.digits, number.exponent);
  return f->parse(text) == value;
}

/* The fewest digits that read as `value`, which is above 0; of several such numbers the nearest.
 * A normal number starts with kept_digits: if it needs fewer, they end in zeros. */
static decimal shortest(f64 value, const format* f) {
  decimal number = {0, 0};
  int count = value >= f->smallest_normal ? f->kept_digits : 1;
  for (; count <= f->telling_digits; ++count) {
    number = rounded(value, count);
    if (reads_as(number, value, f)) break;
    /* At a power of two the spacing of numbers above is twice that below, so that the second
     * nearest decimal may read as `value` although the nearest does not. */
    ++number.digits;
    if (reads_as(number, value, f)) break;
  }
  for (; number.digits % 10 == 0; number.digits /= 10) ++number.exponent;
  return number;
}

static char* put_digits(char* to, const char* digits, int count) {
  memcpy(to, digits, (size_t)count);
  return to + count;
}

static char* put_zeros(char* to, int count) {
  memset(to, '0', (size_t)count);
  return to + count;
}

/* Writes at least one digit on each side of the point. */
static void put_decimal(char* to, decimal number) {
  char digits[24];
  const int count = snprintf(digits, sizeof digits, "%" PRIu64, number.digits);
  const int exponent = number.exponent + count - 1; /* that of the first digit */
  const int plain = exponent >= -4 && exponent <= 15;
  const int whole = !plain ? 1 : exponent < 0 ? 0 : exponent + 1;
  const int given = whole < count ? whole : count;

  if (whole == 0) to = put_zeros(to, 1);
  to = put_digits(to, digits, given);
  to = put_zeros(to, whole - given);
  *to++ = '.';
  if (whole == 0) to = put_zeros(to, -exponent - 1);
  to = count > given ? put_digits(to, digits + given, count - given) : put_zeros(to, 1);
  if (!plain) {
    const int length = snprintf(digits, sizeof digits, "e%+03d", exponent);
    to = put_digits(to, digits, length);
  }
  *to = 0;
}

static char* print(f64 value, void* to, const format* f) {
  char* at = to;
  if (isnan(value)) return strcpy(to, "NaN");
  if (signbit(value)) *at++ = '-';
  const f64 magnitude = fabs(value);
  if (isinf(magnitude)) {
    strcpy(at, "Inf");
  } else if (magnitude == 0) {
    strcpy(at, "0.0");
  } else {
    put_decimal(at, shortest(magnitude, f));
  }
  return to;
}

char* vel_print_real(f32 value, void* to) { return print((f64)value, to, &real_format); }
char* vel_print_lreal(f64 value, void* to) { return print(value, to, &lreal_format); }
