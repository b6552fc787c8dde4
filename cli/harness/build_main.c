#include <errno.h>
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "velrt/clock.h"
#include "velrt/read.h"
#include "velrun.h"

static const char usage[] =
    "Usage: %s [--scans N] [--cycle TIME]\n"
    "Runs scans of every PROGRAM: N, else 1. For the programs, TIME passes from one scan to the "
    "next,\n"
    "such as T#100ms or a number of milliseconds, else 10.\n";

/* Parses a number without sign. Returns 0 when `text` is none. */
static int parse(const char* text, uint64_t* number) {
  char* end;
  if (text == NULL || *text < '0' || *text > '9') return 0;
  errno = 0;
  *number = strtoull(text, &end, 10);
  return *end == 0 && errno == 0;
}

static int parse_cycle(const char* text, uint64_t* milliseconds) {
  if (text == NULL || parse(text, milliseconds)) return text != NULL;
  const i32 time = vel_read_time(text, 0);
  *milliseconds = (uint64_t)time;
  return time > 0;
}

int vel_build_main(int argc, char** argv) {
  uint64_t scans = 1;
  uint64_t cycle = 10;
  for (int i = 1; i < argc; i += 2) {
    if (strcmp(argv[i], "--scans") == 0 && parse(argv[i + 1], &scans)) continue;
    if (strcmp(argv[i], "--cycle") == 0 && parse_cycle(argv[i + 1], &cycle)) continue;
    const int help = strcmp(argv[i], "--help") == 0 || strcmp(argv[i], "-h") == 0;
    fprintf(help ? stdout : stderr, usage, argv[0]);
    return help ? EXIT_SUCCESS : 2;
  }
  vel_run_prepare();
  for (uint64_t scan = 0; scan < scans; ++scan) {
    vel_scan_time = (uint32_t)(scan * cycle);
    vel_run_step(scan * cycle);
  }
  return EXIT_SUCCESS;
}
