/* The process of one test, for the runner. */
#ifndef VELRUN_TEST_PROCESS_H
#define VELRUN_TEST_PROCESS_H

#include "veltest.h"

/* Runs a test, and writes the items of its report to `pipe`. */
void vel_test_run(const vel_test* test, const vel_test_assertion* assertions, int pipe);

/* Writes to the report in which part of the test it crashes or is stopped; `invalid`: because of an
 * invalid operation on reals. */
void vel_test_report_crash(u8 invalid);

#endif
