#define _POSIX_C_SOURCE 200809L
#include "pacing.h"

#include <errno.h>
#include <inttypes.h>
#include <signal.h>
#include <time.h>

static volatile sig_atomic_t ending;
static int started;
static uint64_t start; /* nanoseconds, like all times here but `now` */
static uint64_t period;
static uint64_t scans;
static uint64_t sum;
static uint64_t latest;
static uint64_t latest_scan;
static uint64_t overruns;

static void end(int signal) {
  (void)signal;
  ending = 1;
}

static uint64_t clock_time(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (uint64_t)time.tv_sec * 1000000000 + (uint64_t)time.tv_nsec;
}

void vel_pacing_start(uint64_t cycle) {
  struct sigaction action = {.sa_handler = end};
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, NULL);
  sigaction(SIGTERM, &action, NULL);
  period = cycle * 1000000;
  start = clock_time();
  started = 1;
}

static void count(uint64_t lateness) {
  if (lateness > latest || scans == 0) {
    latest = lateness;
    latest_scan = scans;
  }
  if (period > 0 && lateness >= period) ++overruns;
  sum += lateness;
  ++scans;
}

int vel_pacing_wait(uint64_t now) {
  if (!started) return 1;
  const uint64_t due = start + now * 1000000;
  const struct timespec time = {(time_t)(due / 1000000000), (long)(due % 1000000000)};
  while (!ending && clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, NULL) == EINTR) {
  }
  if (ending) return 0;
  const uint64_t begin = clock_time();
  count(begin > due ? begin - due : 0);
  return 1;
}

void vel_pacing_report(FILE* file) {
  fprintf(file, "%" PRIu64 " %" PRIu64 " %" PRIu64 " %" PRIu64 " %" PRIu64 "\n", scans, sum, latest,
          latest_scan, overruns);
}
