#include "velrt/read.h"
#include "velrt_cursor.h"

/* ---- Fractions -------------------------------------------------------------- */

/* Digits after a decimal point. Further digits would be smaller than every unit. */
typedef struct {
  int count;
  u8 digits[32];
} fraction;

static int take_fraction(vel_cursor* c, fraction* out) {
  const int most = (int)sizeof out->digits;
  int digit = vel_take_digit(c, 10, 0);
  if (digit < 0) return 0;
  for (out->count = 0; digit >= 0; digit = vel_take_digit(c, 10, 1)) {
    if (out->count < most) out->digits[out->count++] = (u8)digit;
  }
  return 1;
}

/* The fraction `f` of `unit`, rounded down. Rounding down at each digit, from the last on, has
 * the same result as rounding down once. */
static u64 part_of(u64 unit, const fraction* f) {
  u64 part = 0;
  for (int i = f->count - 1; i >= 0; --i) part = (f->digits[i] * unit + part) / 10;
  return part;
}

/* ---- Durations -------------------------------------------------------------- */

static const struct {
  const char* name;
  u64 nanoseconds;
} units[] = {
    {"D", 86400000000000}, {"H", 3600000000000}, {"M", 60000000000}, {"S", 1000000000},
    {"MS", 1000000},       {"US", 1000},         {"NS", 1},
};
enum { UNIT_COUNT = sizeof units / sizeof *units };

/* Accepts the name of a unit from `first` on; UNIT_COUNT when there is none. */
static size_t take_unit(vel_cursor* c, size_t first) {
  for (size_t i = first; i < UNIT_COUNT; ++i) {
    vel_cursor probe = *c;
    if (vel_take_word(&probe, units[i].name) && !vel_is_letter(vel_peek(&probe))) {
      *c = probe;
      return i;
    }
  }
  return UNIT_COUNT;
}

/* Accepts a duration, in nanoseconds. Saturates at UINT64_MAX. */
static int take_duration(vel_cursor* c, u64* total) {
  size_t next = 0;
  fraction part = {0};
  *total = 0;
  do {
    u64 count = 0;
    if (!vel_take_digits(c, 10, &count)) return 0;
    if (vel_take(c, '.') && !take_fraction(c, &part)) return 0;
    const size_t unit = take_unit(c, next);
    if (unit == UNIT_COUNT) return 0;
    const u64 nanoseconds = units[unit].nanoseconds;
    *total = vel_add_saturating(*total, vel_multiply_saturating(count, nanoseconds));
    *total = vel_add_saturating(*total, part_of(nanoseconds, &part));
    next = unit + 1;
  } while (part.count == 0 && (vel_take(c, '_') || vel_is_digit(vel_peek(c))));
  return 1;
}

/* Reads a duration in units of `unit` nanoseconds, limited to -highest - 1 to `highest`. */
static i64 read_duration(const void* text, int wide, u64 unit, u64 highest) {
  vel_cursor c = vel_start(text, wide);
  if (!vel_take_word(&c, "T#") && !vel_take_word(&c, "TIME#") && !vel_take_word(&c, "LT#")) {
    vel_take_word(&c, "LTIME#");
  }
  const int negative = vel_take_sign(&c) < 0;
  u64 total = 0;
  if (!take_duration(&c, &total) || !vel_at_end(&c)) return 0;
  total /= unit;
  if (total > highest) return negative ? -(i64)highest - 1 : (i64)highest;
  return negative ? -(i64)total : (i64)total;
}

i32 vel_read_time(const void* text, int wide) {
  return (i32)read_duration(text, wide, 1000000, INT32_MAX);
}

i64 vel_read_ltime(const void* text, int wide) { return read_duration(text, wide, 1, INT64_MAX); }

/* ---- Calendar and clock ----------------------------------------------------- */

static const u32 seconds_of_day = 86400;

/* Accepts a number from `lowest` to `highest`. */
static int take_field(vel_cursor* c, u64 lowest, u64 highest, i64* field) {
  u64 value = 0;
  if (!vel_take_digits(c, 10, &value) || value < lowest || value > highest) return 0;
  *field = (i64)value;
  return 1;
}

static int days_of_month(i64 year, i64 month) {
  const int leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  if (month == 2) return leap ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

/* Days from 1970-01-01 on. Computes with years that begin in March, so that a leap day is the
 * last day of its year. */
static i64 days_from_date(i64 year, i64 month, i64 day) {
  const i64 y = month <= 2 ? year - 1 : year;
  const i64 day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return y * 365 + y / 4 - y / 100 + y / 400 + day_of_year - 719468;
}

/* Accepts a date, in seconds from 1970-01-01 on. */
static int take_date(vel_cursor* c, i64* seconds) {
  i64 year = 0;
  i64 month = 0;
  i64 day = 0;
  if (!take_field(c, 1, 9999, &year) || !vel_take(c, '-') || !take_field(c, 1, 12, &month) ||
      !vel_take(c, '-') || !take_field(c, 1, 31, &day) || day > days_of_month(year, month)) {
    return 0;
  }
  *seconds = days_from_date(year, month, day) * seconds_of_day;
  return 1;
}

/* Accepts a time of day, in milliseconds from midnight on. */
static int take_clock(vel_cursor* c, i64* milliseconds) {
  i64 hour = 0;
  i64 minute = 0;
  i64 second = 0;
  fraction part = {0};
  if (!take_field(c, 0, 23, &hour) || !vel_take(c, ':') || !take_field(c, 0, 59, &minute)) return 0;
  if (vel_take(c, ':')) {
    if (!take_field(c, 0, 59, &second)) return 0;
    if (vel_take(c, '.') && !take_fraction(c, &part)) return 0;
  }
  *milliseconds = ((hour * 60 + minute) * 60 + second) * 1000 + (i64)part_of(1000, &part);
  return 1;
}

static u32 cut_to(i64 value, u32 highest) {
  return value < 0 ? 0 : value > highest ? highest : (u32)value;
}

u32 vel_read_tod(const void* text, int wide) {
  vel_cursor c = vel_start(text, wide);
  i64 milliseconds = 0;
  if (!vel_take_word(&c, "TOD#")) vel_take_word(&c, "TIME_OF_DAY#");
  return take_clock(&c, &milliseconds) && vel_at_end(&c) ? (u32)milliseconds : 0;
}

u32 vel_read_date(const void* text, int wide) {
  vel_cursor c = vel_start(text, wide);
  i64 seconds = 0;
  if (!vel_take_word(&c, "D#")) vel_take_word(&c, "DATE#");
  if (!take_date(&c, &seconds) || !vel_at_end(&c)) return 0;
  return cut_to(seconds, UINT32_MAX / seconds_of_day * seconds_of_day);
}

u32 vel_read_dt(const void* text, int wide) {
  vel_cursor c = vel_start(text, wide);
  i64 seconds = 0;
  i64 milliseconds = 0;
  if (!vel_take_word(&c, "DT#")) vel_take_word(&c, "DATE_AND_TIME#");
  if (!take_date(&c, &seconds) || !vel_take(&c, '-') || !take_clock(&c, &milliseconds) ||
      !vel_at_end(&c)) {
    return 0;
  }
  return cut_to(seconds + milliseconds / 1000, UINT32_MAX);
}
