/* The numbers in the records of tests, which velc reads; see veltest.h. C and C++. */
#ifndef VELRUN_TEST_RECORDS_H
#define VELRUN_TEST_RECORDS_H

/* How a test ended: by itself, by a signal, at its time limit, without a result. */
enum { VEL_TEST_DONE, VEL_TEST_SIGNALLED, VEL_TEST_LATE, VEL_TEST_LOST };

/* The items of its report. */
enum { VEL_TEST_ASSERTION, VEL_TEST_MESSAGE, VEL_TEST_CRASH };

#endif
