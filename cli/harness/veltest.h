/* The interface between the C of unit tests, which `velc test` generates, and libvelrun.a, which
 * runs them. */
#ifndef VELTEST_H
#define VELTEST_H

#include "velrt/types.h"
#include "velrun.h"

/* ---- For the C of the tests ----------------------------------------------------------------- */

/* Whether two values of the shape of the assertion's first operand differ. */
u8 vel_test_differs(u32 assertion, const void* left, const void* right);
/* Reports that the assertion does not hold and leaves the test. `operands` points to the values of
 * its operands, and is NULL if there are none to show; `text` may be NULL. */
_Noreturn void vel_test_fail(u32 assertion, const void* const* operands, const char* text);
/* Lets time pass for timers. Leaves the test if it is negative. */
void vel_test_advance(i64 nanoseconds);
/* Whether two values differ by no more than the tolerance. `less` tells whether the left one, which
 * may have a sign, is less than the right one. */
u8 vel_test_near(f64 left, f64 right, f64 tolerance);
u8 vel_test_near_whole(u8 less, u64 left, u64 right, i64 tolerance);

/* ---- What the generated program consists of ---------------------------------------------------
 */

typedef struct {
  void (*setup)(void); /* may be NULL, as may teardown */
  void (*body)(void);
  void (*teardown)(void);
} vel_test;

typedef struct {
  u32 count; /* of operands that are shown */
  const vel_run_shape* shapes[3];
} vel_test_assertion;

typedef struct {
  const vel_test* tests;
  u32 count;
} vel_test_part;

typedef struct {
  const vel_test_part* parts;
  u32 count;
  const vel_test_assertion* assertions;
  void (*finish)(void); /* called behind each test, in its process; may be NULL */
} vel_test_program;

/* ---- Running them -----------------------------------------------------------------------------
 */

/* Usage: PROGRAM RESULTS JOBS MILLISECONDS STRICT. Runs each test in a process of its own, JOBS of
 * them at a time, and ends it after MILLISECONDS. If STRICT is 1, a division by zero ends a test.
 *
 * Writes a record of each test to the file RESULTS, in any order: the number of the test (u32), how
 * it ended (u8), the signal that ended it (u8), its time in nanoseconds (u64), the size of its
 * report (u32), that report, the size of the report of its crash (u32) and that, see crash.h. Its
 * own report consists of items: the part of the test (u8, 0 for SETUP, 1 TEST, 2 TEARDOWN), the
 * kind (u8) and
 *  - VEL_TEST_ASSERTION: the number of the assertion (u32), the number of the first elementary
 *    value that differs, all ones for none (u32), the text (u32 for its size, all ones for none,
 * and the bytes), and the elementary values of the operands in order, without gaps
 *  - VEL_TEST_MESSAGE: a text in the same form
 *  - VEL_TEST_CRASH: a u8 that is 1 if an invalid operation on reals was the cause. It is the last
 * The numbers are in test_records.h.
 * Returns the exit status. */
int vel_test_main(int argc, char** argv, const vel_test_program* program);

#endif
