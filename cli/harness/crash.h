/* Reports where a program crashes. */
#ifndef VELRUN_CRASH_H
#define VELRUN_CRASH_H

#include <signal.h>

/* So many addresses are reported at most. */
enum { VEL_CRASH_MOST_CALLS = 128 };

/* From now on a program that a fault, abort() or SIGALRM ends writes to the file `path` where it
 * was: the addresses of that place and of those from which it was called, inside out, of many calls
 * the first and the last. Each is a uint64_t as the file of the program has it. Then it calls
 * `finish`, unless that is NULL, with what is known of the signal, which ends it as it does without
 * a report. It works when the stack is exhausted, too, in the thread that calls this. */
void vel_crash_report(const char* path, void (*finish)(const siginfo_t* cause));

#endif
