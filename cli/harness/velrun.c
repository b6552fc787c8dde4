/* The main function of programs that `velc run` runs. Usage: PROGRAM VALUES TRACE SCANS CYCLE.
 * Runs the scans, and writes the bytes of all values to the file VALUES and the trace to the file
 * TRACE. Exits with status 1 when it cannot write them. */
#include "velrun.h"

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>

#include "velrt/clock.h"

static FILE* values;
static FILE* trace;

/* Writes the elementary values in order, without gaps. */
static void put(const vel_run_shape* shape, void* variable) {
  char* const bytes = variable;
  const vel_run_shape* const element = shape->element;
  if (shape->parts != NULL) {
    for (size_t i = 0; i < shape->count; ++i) {
      put(shape->parts[i].shape, bytes + shape->parts[i].offset);
    }
  } else if (element != NULL && (element->element != NULL || element->parts != NULL)) {
    for (size_t i = 0; i < shape->count; ++i) put(element, bytes + i * element->size);
  } else {
    fwrite(bytes, 1, shape->size, values);
  }
}

void vel_run_trace_input(uint32_t offset, uint32_t count) {
  fprintf(trace, "UPDATEINPUT = %" PRIu32 ", %" PRIu32 "\n", offset, count);
}

void vel_run_trace_output(uint32_t offset, uint32_t count) {
  fprintf(trace, "UPDATEOUTPUT = %" PRIu32 ", %" PRIu32 "\n", offset, count);
}

static FILE* create(const char* path) {
  FILE* const file = fopen(path, "wb");
  if (file == NULL) perror(path);
  return file;
}

static int finish(FILE* file, const char* path) {
  const int failed = ferror(file);
  if (fclose(file) == 0 && !failed) return EXIT_SUCCESS;
  perror(path);
  return EXIT_FAILURE;
}

int main(int argc, char** argv) {
  if (argc != 5) return EXIT_FAILURE;
  unsigned long long scans = strtoull(argv[3], NULL, 10);
  const uint64_t cycle = strtoull(argv[4], NULL, 10);
  uint64_t now = 0;
  trace = create(argv[2]);
  if (trace == NULL) return EXIT_FAILURE;

  vel_run_prepare();
  for (; scans > 0; --scans) {
    vel_scan_time = (uint32_t)now;
    vel_run_step(now);
    now += cycle;
  }
  if (finish(trace, argv[2]) != EXIT_SUCCESS) return EXIT_FAILURE;

  values = create(argv[1]);
  if (values == NULL) return EXIT_FAILURE;
  vel_run_values(put);
  return finish(values, argv[1]);
}
