/* The string functions for one type of code unit. Before including this, define UNIT, the type,
 * and TEXT(name), the name of a function. */

static size_t TEXT(units)(const UNIT* in) {
  size_t units = 0;
  while (in[units] != 0) ++units;
  return units;
}

/* Appends `count` units to the `used` units in `to`, truncates them if necessary, and returns the
 * new number of units. */
static size_t TEXT(add)(UNIT* to, size_t size, size_t used, const UNIT* in, size_t count) {
  if (count > size - 1 - used) count = size - 1 - used;
  memmove(to + used, in, count * sizeof *to);
  to[used + count] = 0;
  return used + count;
}

/* `a` with `count` units from index `start` (from 0) on replaced by `b`. */
static UNIT* TEXT(splice)(UNIT* to, size_t size, const UNIT* a, const UNIT* b, size_t start,
                          i64 count) {
  const size_t rest = TEXT(units)(a) - start;
  const size_t skipped = count < 0 ? 0 : (u64)count < rest ? (size_t)count : rest;
  size_t used = TEXT(add)(to, size, 0, a, start);
  used = TEXT(add)(to, size, used, b, TEXT(units)(b));
  TEXT(add)(to, size, used, a + start + skipped, rest - skipped);
  return to;
}

/* True when `in` has a unit at `position`, counted from 1. */
static int TEXT(has)(const UNIT* in, i64 position) {
  return position >= 1 && (u64)position <= TEXT(units)(in);
}

void TEXT(set)(UNIT* target, size_t size, const UNIT* source) {
  if (size == 0) return;
  size_t units = 0;
  while (units < size - 1 && source[units] != 0) ++units;
  TEXT(add)(target, size, 0, source, units);
}

i16 TEXT(length)(const UNIT* in) {
  const size_t units = TEXT(units)(in);
  return (i16)(units < INT16_MAX ? units : INT16_MAX);
}

UNIT* TEXT(left)(UNIT* to, size_t size, const UNIT* in, i64 count) {
  return TEXT(mid)(to, size, in, count, 1);
}

UNIT* TEXT(right)(UNIT* to, size_t size, const UNIT* in, i64 count) {
  const i64 units = (i64)TEXT(units)(in);
  return TEXT(mid)(to, size, in, count, count < units ? units - (count < 0 ? 0 : count) + 1 : 1);
}

UNIT* TEXT(mid)(UNIT* to, size_t size, const UNIT* in, i64 count, i64 position) {
  to[0] = 0;
  if (count <= 0 || !TEXT(has)(in, position)) return to;
  const size_t start = (size_t)position - 1;
  const size_t rest = TEXT(units)(in) - start;
  TEXT(add)(to, size, 0, in + start, (u64)count < rest ? (size_t)count : rest);
  return to;
}

UNIT* TEXT(concat)(UNIT* to, size_t size, size_t count, const UNIT* const* texts) {
  size_t used = 0;
  to[0] = 0;
  for (size_t i = 0; i < count; ++i) {
    used = TEXT(add)(to, size, used, texts[i], TEXT(units)(texts[i]));
  }
  return to;
}

UNIT* TEXT(insert)(UNIT* to, size_t size, const UNIT* a, const UNIT* b, i64 position) {
  static const UNIT empty[1] = {0};
  const int stands = position == 0 || TEXT(has)(a, position);
  return TEXT(splice)(to, size, a, stands ? b : empty, stands ? (size_t)position : 0, 0);
}

UNIT* TEXT(delete)(UNIT* to, size_t size, const UNIT* in, i64 count, i64 position) {
  static const UNIT empty[1] = {0};
  return TEXT(replace)(to, size, in, empty, count, position);
}

UNIT* TEXT(replace)(UNIT* to, size_t size, const UNIT* a, const UNIT* b, i64 count, i64 position) {
  if (!TEXT(has)(a, position)) {
    TEXT(set)(to, size, a);
    return to;
  }
  return TEXT(splice)(to, size, a, b, (size_t)position - 1, count);
}

i16 TEXT(find)(const UNIT* a, const UNIT* b) {
  const size_t units = TEXT(units)(b);
  if (units == 0) return 0;
  const size_t last = TEXT(units)(a);
  for (size_t at = 0; at + units <= last && at < INT16_MAX; ++at) {
    if (memcmp(a + at, b, units * sizeof *a) == 0) return (i16)(at + 1);
  }
  return 0;
}

int TEXT(compare)(const UNIT* a, const UNIT* b) {
  while (*a != 0 && *a == *b) ++a, ++b;
  return TEXT(unit)(*a) - TEXT(unit)(*b);
}
