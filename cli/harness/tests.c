/* What tests call, and the process of one test. test_runner.c starts these processes. */
#include <setjmp.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "test_process.h"
#include "test_records.h"
#include "values.h"
#include "velrt/clock.h"
#include "veltest.h"

#define NONE 0xFFFFFFFFu

static const vel_test_assertion* assertions;
static int report; /* the pipe to which items are written */
static jmp_buf leave_part;
static u8 current_part;
static u64 now; /* in nanoseconds */
static u32 differing = NONE;

/* ---- The report ----------------------------------------------------------------------------- */

static void put(const void* bytes, size_t size) {
  const char* next = bytes;
  while (size > 0) {
    const ssize_t written = write(report, next, size);
    if (written <= 0) _exit(EXIT_FAILURE);
    next += written;
    size -= (size_t)written;
  }
}

static void put_text(const char* text) {
  const u32 size = text != NULL ? (u32)strlen(text) : NONE;
  put(&size, sizeof size);
  if (text != NULL) put(text, size);
}

static void begin_item(u8 kind) {
  put(&current_part, 1);
  put(&kind, 1);
}

/* A member of a structure or an element of an array; 0 behind the last one and for elementary
 * values. */
static int part_at(const vel_run_shape* shape, size_t number, vel_run_part* part) {
  if (number >= shape->count || (shape->parts == NULL && shape->element == NULL)) return 0;
  if (shape->parts != NULL) {
    *part = shape->parts[number];
  } else {
    part->shape = shape->element;
    part->offset = number * shape->element->size;
  }
  return 1;
}

static void put_bytes(char* bytes, size_t size) { put(bytes, size); }

_Noreturn static void fail_with(const char* message) {
  begin_item(VEL_TEST_MESSAGE);
  put_text(message);
  longjmp(leave_part, 1);
}

_Noreturn void vel_test_fail(u32 assertion, const void* const* operands, const char* text) {
  begin_item(VEL_TEST_ASSERTION);
  put(&assertion, sizeof assertion);
  put(&differing, sizeof differing);
  put_text(text);
  for (u32 i = 0; i < assertions[assertion].count; ++i) {
    vel_visit_bytes(assertions[assertion].shapes[i], (void*)operands[i], put_bytes);
  }
  longjmp(leave_part, 1);
}

void vel_test_report_crash(u8 invalid) {
  begin_item(VEL_TEST_CRASH);
  put(&invalid, 1);
}

/* ---- Comparisons ---------------------------------------------------------------------------- */

/* Every REAL is an LREAL. */
static f64 real_at(const vel_run_shape* shape, const char* bytes) {
  f32 single;
  f64 value;
  if (shape->kind == VEL_RUN_F64) {
    memcpy(&value, bytes, sizeof value);
    return value;
  }
  memcpy(&single, bytes, sizeof single);
  return (f64)single;
}

static int elementary_differs(const vel_run_shape* shape, const char* left, const char* right) {
  switch (shape->kind) {
    case VEL_RUN_F32:
    case VEL_RUN_F64:
      return !(real_at(shape, left) == real_at(shape, right));
    case VEL_RUN_STRING:
      return strncmp(left, right, shape->size) != 0;
    case VEL_RUN_WSTRING:
      for (size_t i = 0; i + 1 < shape->size; i += 2) {
        if (memcmp(left + i, right + i, 2) != 0) return 1;
        if (left[i] == 0 && left[i + 1] == 0) break;
      }
      return 0;
    default:
      return memcmp(left, right, shape->size) != 0;
  }
}

/* Counts the elementary values in `number` up to the first one that differs. */
static int differs(const vel_run_shape* shape, const char* left, const char* right, u32* number) {
  vel_run_part part;
  if (!part_at(shape, 0, &part)) {
    if (elementary_differs(shape, left, right)) return 1;
    ++*number;
  }
  for (size_t i = 0; part_at(shape, i, &part); ++i) {
    if (differs(part.shape, left + part.offset, right + part.offset, number)) return 1;
  }
  return 0;
}

u8 vel_test_differs(u32 assertion, const void* left, const void* right) {
  u32 number = 0;
  const int differ = differs(assertions[assertion].shapes[0], left, right, &number);
  differing = differ ? number : NONE;
  return (u8)differ;
}

u8 vel_test_near(f64 left, f64 right, f64 tolerance) {
  const f64 difference = left < right ? right - left : left - right;
  return tolerance >= 0 && (left == right || difference <= tolerance);
}

u8 vel_test_near_whole(u8 less, u64 left, u64 right, i64 tolerance) {
  const u64 difference = less ? right - left : left - right;
  return tolerance >= 0 && difference <= (u64)tolerance;
}

/* ---- Time ----------------------------------------------------------------------------------- */

void vel_test_advance(i64 nanoseconds) {
  if (nanoseconds < 0) fail_with("ADVANCE_TIME of less than 0 ns or more than 292 years");
  now += (u64)nanoseconds;
  vel_scan_time = (u32)(now / 1000000);
}

/* ---- One test ------------------------------------------------------------------------------- */

/* False if it was left before its end. */
static int run_part(u8 part, void (*function)(void)) {
  current_part = part;
  differing = NONE;
  if (function == NULL) return 1;
  if (setjmp(leave_part) != 0) return 0;
  function();
  return 1;
}

void vel_test_run(const vel_test* test, const vel_test_assertion* table, int pipe) {
  assertions = table;
  report = pipe;
  if (!run_part(0, test->setup)) return;
  run_part(1, test->body);
  run_part(2, test->teardown);
}
