/* Runs tests, each in a process of its own: what one of them does to variables, device memory and
 * the clock does not concern the next, and one that crashes or never ends fails alone. */
#define _GNU_SOURCE /* feenableexcept */
#include <errno.h>
#include <fcntl.h>
#include <fenv.h>
#include <poll.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include "crash.h"
#include "test_process.h"
#include "test_records.h"

/* How long a test that is late may take to report where it is. */
#define GRACE 1000000000u

typedef struct {
  pid_t id; /* 0 for none */
  int pipe;
  u32 test;
  u64 begin; /* in nanoseconds */
  u8 late;
  char* report;
  size_t size;
  size_t capacity;
} process;

static struct {
  const vel_test_program* program;
  FILE* results;
  process* processes;
  u32 jobs;
  u64 limit; /* of a test, in nanoseconds */
  int strict;
  const char* results_path;
} runner;

static u64 clock_now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (u64)time.tv_sec * 1000000000u + (u64)time.tv_nsec;
}

static const vel_test* test_at(u32 number) {
  const vel_test_part* part = runner.program->parts;
  for (; number >= part->count; ++part) number -= part->count;
  return part->tests + number;
}

static void die(const char* what) {
  perror(what);
  exit(EXIT_FAILURE);
}

void vel_division_by_zero(void) { raise(SIGFPE); }

/* The file in which a process reports where it crashed. */
static const char* crash_path(const process* child) {
  static char path[4096];
  snprintf(path, sizeof path, "%s.%u", runner.results_path, (u32)(child - runner.processes));
  return path;
}

static void finish_test(void) {
  signal(SIGALRM, SIG_IGN); /* the time limit must not interrupt it */
  if (runner.program->finish != NULL) runner.program->finish();
}

static void finish_crashed_test(const siginfo_t* cause) {
  if (cause->si_signo != SIGALRM) signal(SIGALRM, SIG_IGN);
  vel_test_report_crash(cause->si_signo == SIGFPE && cause->si_code == FPE_FLTINV);
  if (runner.program->finish != NULL) runner.program->finish();
}

static void start(process* child, u32 test) {
  int ends[2];
  if (pipe(ends) != 0) die("pipe");
  fflush(runner.results);
  child->begin = clock_now();
  child->id = fork();
  if (child->id < 0) die("fork");
  if (child->id == 0) {
    close(ends[0]);
    vel_crash_report(crash_path(child), finish_crashed_test);
    if (runner.strict) feenableexcept(FE_DIVBYZERO | FE_INVALID); /* 0.0 / 0.0 is invalid */
    vel_test_run(test_at(test), runner.program->assertions, ends[1]);
    finish_test();
    _exit(EXIT_SUCCESS);
  }
  close(ends[1]);
  child->pipe = ends[0];
  child->test = test;
  child->late = 0;
  child->size = 0;
}

/* Reads what is there. 0 at the end. */
static int read_report(process* child) {
  if (child->size == child->capacity) {
    child->capacity = child->capacity == 0 ? 4096 : 2 * child->capacity;
    child->report = realloc(child->report, child->capacity);
    if (child->report == NULL) die("realloc");
  }
  const ssize_t count =
      read(child->pipe, child->report + child->size, child->capacity - child->size);
  if (count < 0 && errno == EINTR) return 1;
  if (count > 0) child->size += (size_t)count;
  return count > 0;
}

static void write_crash(const process* child, int crashed) {
  u64 places[VEL_CRASH_MOST_CALLS];
  FILE* const file = crashed ? fopen(crash_path(child), "rb") : NULL;
  const u32 size = file != NULL ? (u32)fread(places, 1, sizeof places, file) : 0;
  if (file != NULL) fclose(file);
  fwrite(&size, sizeof size, 1, runner.results);
  fwrite(places, 1, size, runner.results);
}

static void finish(process* child) {
  const u64 time = clock_now() - child->begin;
  const u32 size = (u32)child->size;
  int status = 0;
  close(child->pipe);
  while (waitpid(child->id, &status, 0) < 0 && errno == EINTR) {
  }
  u8 end = VEL_TEST_LOST;
  u8 signal_number = 0;
  if (child->late) {
    end = VEL_TEST_LATE;
  } else if (WIFSIGNALED(status)) {
    end = VEL_TEST_SIGNALLED;
    signal_number = (u8)WTERMSIG(status);
  } else if (WEXITSTATUS(status) == EXIT_SUCCESS) {
    end = VEL_TEST_DONE;
  }
  fwrite(&child->test, sizeof child->test, 1, runner.results);
  fwrite(&end, sizeof end, 1, runner.results);
  fwrite(&signal_number, sizeof signal_number, 1, runner.results);
  fwrite(&time, sizeof time, 1, runner.results);
  fwrite(&size, sizeof size, 1, runner.results);
  if (size > 0) fwrite(child->report, 1, size, runner.results);
  write_crash(child, end != VEL_TEST_DONE);
  child->id = 0;
}

/* Waits for a report or for the time limit of a test. */
static void wait_for_processes(struct pollfd* events) {
  const u64 now = clock_now();
  u64 left = runner.limit;
  for (u32 i = 0; i < runner.jobs; ++i) {
    process* const child = runner.processes + i;
    events[i] = (struct pollfd){child->id != 0 ? child->pipe : -1, POLLIN, 0};
    if (child->id == 0) continue;
    const u64 used = now - child->begin;
    const u64 allowed = runner.limit + (child->late ? GRACE : 0);
    if (used < allowed) {
      if (allowed - used < left) left = allowed - used;
    } else if (child->late) {
      kill(child->id, SIGKILL);
    } else {
      child->late = 1;
      kill(child->id, SIGALRM); /* which it reports, see crash.h */
      left = 0;
    }
  }
  poll(events, runner.jobs, (int)(left / 1000000) + 1);
  for (u32 i = 0; i < runner.jobs; ++i) {
    if (events[i].revents != 0 && !read_report(runner.processes + i)) {
      finish(runner.processes + i);
    }
  }
}

int vel_test_main(int argc, char** argv, const vel_test_program* program) {
  if (argc != 5) return EXIT_FAILURE;
  runner.program = program;
  runner.results_path = argv[1];
  runner.results = fopen(argv[1], "wb");
  if (runner.results == NULL) die(argv[1]);
  runner.jobs = (u32)strtoul(argv[2], NULL, 10);
  runner.limit = (u64)strtoull(argv[3], NULL, 10) * 1000000u;
  runner.strict = argv[4][0] == '1';
  runner.processes = calloc(runner.jobs, sizeof *runner.processes);
  struct pollfd* const events = calloc(runner.jobs, sizeof *events);
  if (runner.processes == NULL || events == NULL) die("calloc");
  u32 tests = 0;
  for (u32 i = 0; i < program->count; ++i) tests += program->parts[i].count;
  u32 next = 0;
  for (;;) {
    u32 running = 0;
    for (u32 i = 0; i < runner.jobs; ++i) {
      if (runner.processes[i].id == 0 && next < tests) start(runner.processes + i, next++);
      if (runner.processes[i].id != 0) ++running;
    }
    if (running == 0) break;
    wait_for_processes(events);
  }
  if (fclose(runner.results) != 0) die(argv[1]);
  return EXIT_SUCCESS;
}
