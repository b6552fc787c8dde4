#define _POSIX_C_SOURCE 200809L
#include "trace.h"

#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "values.h"

static int target = -1;
static char* record;
static size_t record_size;
static size_t filled;

static void count(const vel_run_shape* shape, void* variable) {
  (void)variable;
  record_size += vel_count_bytes(shape);
}

static void append_bytes(char* bytes, size_t size) {
  memcpy(record + filled, bytes, size);
  filled += size;
}

static void append(const vel_run_shape* shape, void* variable) {
  vel_visit_bytes(shape, variable, append_bytes);
}

void vel_trace_start(int descriptor) {
  target = descriptor;
  vel_run_traced(count);
  record = malloc(record_size + 1);
  if (record == NULL) exit(EXIT_FAILURE);
}

int vel_trace_scan(void) {
  if (target < 0) return 1;
  filled = 0;
  vel_run_traced(append);
  for (size_t written = 0; written < record_size;) {
    const ssize_t wrote = write(target, record + written, record_size - written);
    if (wrote >= 0) {
      written += (size_t)wrote;
    } else if (errno != EINTR) {
      return 0;
    }
  }
  return 1;
}
