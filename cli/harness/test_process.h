/* The process of one test, for the runner. */
#ifndef VELRUN_TEST_PROCESS_H
#define VELRUN_TEST_PROCESS_H

#include "veltest.h"

/* Runs a test, and writes the items of its report to `pipe`. */
void vel_test_run(const vel_test* test, const vel_test_assertion* assertions, int pipe);

#endif
