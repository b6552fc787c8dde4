/* Function blocks of the standard, written by hand. */
#ifndef BLOCKS_H
#define BLOCKS_H

#include "velrt.h"

struct on_delay {
  u8 in;
  i32 delay;
  u8 over;
  i32 elapsed;
  u8 runs;
  i32 last;
};

/* 1 when `in` has been set for `delay` milliseconds. */
static inline u8 run_on_delay(struct on_delay* timer, u8 in, i32 delay) {
  timer->in = in;
  timer->delay = delay;
  if (!in) {
    timer->over = 0;
    timer->elapsed = 0;
  } else if (!timer->over) {
    const i32 passed = timer->runs ? (i32)(vel_scan_time - (u32)timer->last) : 0;
    const i64 elapsed = (i64)timer->elapsed + passed;
    timer->over = elapsed >= delay;
    timer->elapsed = !timer->over ? (i32)elapsed : delay > 0 ? delay : 0;
  }
  timer->runs = in;
  timer->last = (i32)vel_scan_time;
  return timer->over;
}

struct up_counter {
  u8 up;
  u8 reset;
  i16 limit;
  u8 full;
  i16 count;
  u8 was_up;
};

/* Counts rising edges of `up`. 1 when the count has reached `limit`. */
static inline u8 run_up_counter(struct up_counter* counter, u8 up, u8 reset, i16 limit) {
  counter->up = up;
  counter->reset = reset;
  counter->limit = limit;
  if (reset) {
    counter->count = 0;
  } else if (up && !counter->was_up && counter->count < INT16_MAX) {
    ++counter->count;
  }
  counter->was_up = up;
  counter->full = counter->count >= limit;
  return counter->full;
}

struct rising_edge {
  u8 now;
  u8 rises;
  u8 before;
};

static inline u8 run_rising_edge(struct rising_edge* edge, u8 now) {
  edge->now = now;
  edge->rises = now && !edge->before;
  edge->before = now;
  return edge->rises;
}

#endif
