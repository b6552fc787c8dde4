#include "velrt/read.h"
#include "velrt_cursor.h"

u8 vel_read_bool(const void* text, int wide) {
  vel_cursor c = vel_start(text, wide);
  return (vel_take_word(&c, "TRUE") || vel_take(&c, '1')) && vel_at_end(&c);
}

u64 vel_read_integer(const void* text, int wide, i64 lowest, u64 highest) {
  vel_cursor c = vel_start(text, wide);
  const int negative = vel_take_sign(&c) < 0;
  const unsigned base = vel_take_base(&c);
  u64 magnitude = 0;
  if (!vel_take_digits(&c, base, &magnitude) || !vel_at_end(&c)) return 0;
  const u64 limit = negative ? 0 - (u64)lowest : highest;
  if (magnitude > limit) magnitude = limit;
  return negative ? 0 - magnitude : magnitude;
}
