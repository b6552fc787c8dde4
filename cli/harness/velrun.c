/* The main function of programs that `velc run` runs. Usage:
 *   PROGRAM VALUES REFRESHES SCANS CYCLE [OPTION=VALUE...]
 * Runs the scans. Then writes the elementary values of all variables to the file VALUES and the
 * refreshes of local I/O to REFRESHES. Exits with status 1 when it cannot read or write a file.
 * Options:
 *   clock=N            the time of the first scan in milliseconds; 0 without it
 *   retained=FILE      loads the retained variables from FILE, unless it is missing, before the
 *                      first scan and writes them behind the last: each a byte that is 1 if it has
 *                      a value, and then its elementary values in order
 *   crash=FILE         writes to FILE where it crashes, see crash.h
 *   trace=DESCRIPTOR   traces the scans, see trace.h
 *   stimulus=FILE      see stimulus.h
 *   realtime=FILE      paces the scans and reports it to FILE, see pacing.h */
#include "velrun.h"

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "crash.h"
#include "pacing.h"
#include "stimulus.h"
#include "trace.h"
#include "values.h"
#include "velrt/clock.h"

static FILE* file; /* of values or of retained variables */
static FILE* refreshes;

static void write_bytes(char* bytes, size_t size) { fwrite(bytes, 1, size, file); }

static void read_bytes(char* bytes, size_t size) {
  if (fread(bytes, 1, size, file) != size) exit(EXIT_FAILURE);
}

static void put(const vel_run_shape* shape, void* variable) {
  vel_visit_bytes(shape, variable, write_bytes);
}

static void store(const vel_run_shape* shape, void* variable) {
  fputc(1, file);
  put(shape, variable);
}

static void load(const vel_run_shape* shape, void* variable) {
  if (fgetc(file) == 1) vel_visit_bytes(shape, variable, read_bytes);
}

void vel_run_trace_input(uint32_t offset, uint32_t count) {
  fprintf(refreshes, "UPDATEINPUT = %" PRIu32 ", %" PRIu32 "\n", offset, count);
}

void vel_run_trace_output(uint32_t offset, uint32_t count) {
  fprintf(refreshes, "UPDATEOUTPUT = %" PRIu32 ", %" PRIu32 "\n", offset, count);
}

static FILE* create(const char* path) {
  FILE* const created = fopen(path, "wb");
  if (created == NULL) perror(path);
  return created;
}

static int finish(FILE* written, const char* path) {
  const int failed = ferror(written);
  if (fclose(written) == 0 && !failed) return EXIT_SUCCESS;
  perror(path);
  return EXIT_FAILURE;
}

static int write_all(const char* path, void (*visit_all)(vel_run_visit), vel_run_visit visit) {
  file = create(path);
  if (file == NULL) return EXIT_FAILURE;
  visit_all(visit);
  return finish(file, path);
}

/* The value of the last option with this name; NULL for none. */
static const char* option(char** arguments, const char* name) {
  const size_t length = strlen(name);
  const char* value = NULL;
  for (; *arguments != NULL; ++arguments) {
    const int named = strncmp(*arguments, name, length) == 0 && (*arguments)[length] == '=';
    if (named) value = *arguments + length + 1;
  }
  return value;
}

static uint64_t number(const char* text) { return text == NULL ? 0 : strtoull(text, NULL, 10); }

static int run(uint64_t scans, uint64_t cycle, uint64_t clock) {
  uint64_t now = 0;
  for (uint64_t scan = 0; scan < scans && vel_pacing_wait(now); ++scan) {
    vel_stimulus_scan(scan);
    vel_scan_time = (uint32_t)(clock + now);
    vel_run_step(now);
    vel_stimulus_scan(scan);
    if (!vel_trace_scan()) return EXIT_FAILURE;
    now += cycle;
  }
  return EXIT_SUCCESS;
}

static int write_report(const char* path) {
  FILE* const report = create(path);
  if (report == NULL) return EXIT_FAILURE;
  vel_pacing_report(report);
  return finish(report, path);
}

int main(int argc, char** argv) {
  if (argc < 5) return EXIT_FAILURE;
  const uint64_t cycle = number(argv[4]);
  char** const options = argv + 5;
  const char* const crash = option(options, "crash");
  const char* const retained = option(options, "retained");
  const char* const trace = option(options, "trace");
  const char* const stimulus = option(options, "stimulus");
  const char* const realtime = option(options, "realtime");
  if (crash != NULL) vel_crash_report(crash, NULL);
  refreshes = create(argv[2]);
  if (refreshes == NULL) return EXIT_FAILURE;

  vel_run_prepare();
  if (retained != NULL && (file = fopen(retained, "rb")) != NULL) {
    vel_run_retained(load);
    fclose(file);
  }
  vel_run_settings();
  if (trace != NULL) vel_trace_start(atoi(trace));
  if (stimulus != NULL) vel_stimulus_start(stimulus);
  if (realtime != NULL) vel_pacing_start(cycle);
  if (run(number(argv[3]), cycle, number(option(options, "clock"))) != EXIT_SUCCESS) {
    return EXIT_FAILURE;
  }
  if (finish(refreshes, argv[2]) != EXIT_SUCCESS) return EXIT_FAILURE;
  if (realtime != NULL && write_report(realtime) != EXIT_SUCCESS) return EXIT_FAILURE;
  if (write_all(argv[1], vel_run_values, put) != EXIT_SUCCESS) return EXIT_FAILURE;
  return retained == NULL ? EXIT_SUCCESS : write_all(retained, vel_run_retained, store);
}
