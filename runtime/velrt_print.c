#include <string.h>

#include "velrt/print.h"

/* ---- Parts of texts --------------------------------------------------------- */

/* Each writes to `to`, without a terminator, and returns the end of its output. */

static char* put_text(char* to, const char* text) {
  while (*text != 0) *to++ = *text++;
  return to;
}

/* Writes at least `width` digits. */
static char* put_number(char* to, u64 value, int width) {
  char digits[20];
  int count = 0;
  for (; value != 0 || count < width; value /= 10) digits[count++] = (char)('0' + value % 10);
  while (count > 0) *to++ = digits[--count];
  return to;
}

static char* put_signed(char* to, i64 value) {
  if (value >= 0) return put_number(to, (u64)value, 1);
  *to++ = '-';
  return put_number(to, 0 - (u64)value, 1);
}

/* Computes with eras of 400 years, which begin in March so that a leap day is the last day of
 * its year. */
static char* put_date(char* to, u32 seconds) {
  const u32 days = seconds / 86400 + 719468; /* from 0000-03-01 on */
  const u32 era = days / 146097;
  const u32 day_of_era = days % 146097;
  const u32 year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const u32 day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const u32 months = (5 * day_of_year + 2) / 153; /* from March on */
  const u32 month = months < 10 ? months + 3 : months - 9;
  const u32 year = era * 400 + year_of_era + (month <= 2);
  to = put_number(to, year, 4);
  *to++ = '-';
  to = put_number(to, month, 2);
  *to++ = '-';
  return put_number(to, day_of_year - (153 * months + 2) / 5 + 1, 2);
}

static char* put_clock(char* to, u32 seconds) {
  to = put_number(to, seconds / 3600, 2);
  *to++ = ':';
  to = put_number(to, seconds / 60 % 60, 2);
  *to++ = ':';
  return put_number(to, seconds % 60, 2);
}

/* ---- Values ----------------------------------------------------------------- */

char* vel_print_bool(int value, void* to) { return strcpy(to, value ? "TRUE" : "FALSE"); }

char* vel_print_signed(i64 value, void* to) {
  *put_signed(to, value) = 0;
  return to;
}

char* vel_print_unsigned(u64 value, void* to) {
  *put_number(to, value, 1) = 0;
  return to;
}

char* vel_print_time(i32 milliseconds, void* to) {
  *put_text(put_signed(put_text(to, "T#"), milliseconds), "ms") = 0;
  return to;
}

char* vel_print_ltime(i64 nanoseconds, void* to) {
  *put_text(put_signed(put_text(to, "LTIME#"), nanoseconds), "ns") = 0;
  return to;
}

char* vel_print_date(u32 seconds, void* to) {
  *put_date(put_text(to, "D#"), seconds) = 0;
  return to;
}

char* vel_print_dt(u32 seconds, void* to) {
  char* end = put_date(put_text(to, "DT#"), seconds);
  *end++ = '-';
  *put_clock(end, seconds % 86400) = 0;
  return to;
}

char* vel_print_tod(u32 milliseconds, void* to) {
  char* end = put_clock(put_text(to, "TOD#"), milliseconds / 1000);
  if (milliseconds % 1000 != 0) {
    *end++ = '.';
    end = put_number(end, milliseconds % 1000, 3);
  }
  *end = 0;
  return to;
}

u16* vel_widen(void* to) {
  const unsigned char* const narrow = to;
  u16* const wide = to;
  /* Backwards, so that no unit overwrites a byte that has yet to be read. */
  for (size_t i = strlen(to) + 1; i-- > 0;) wide[i] = narrow[i];
  return wide;
}
