/* The main function of programs that `velc run` runs. Usage:
 *   PROGRAM VALUES TRACE SCANS CYCLE [CLOCK RETAINED CRASH]
 * Loads the retained variables from the file RETAINED unless it is missing, and runs the scans, the
 * first of them at the time CLOCK. Then writes the elementary values of all variables to the file
 * VALUES, the trace to TRACE and the retained variables to RETAINED. A retained variable is a byte
 * that is 1 if it has a value, and then its elementary values in order. Exits with status 1 when it
 * cannot read or write them. Where it crashes stands in the file CRASH then, see crash.h. */
#include "velrun.h"

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>

#include "crash.h"
#include "velrt/clock.h"

static FILE* file; /* of values or of retained variables */
static FILE* trace;

static void write_bytes(char* bytes, size_t size) { fwrite(bytes, 1, size, file); }

static void read_bytes(char* bytes, size_t size) {
  if (fread(bytes, 1, size, file) != size) exit(EXIT_FAILURE);
}

/* Transfers the elementary values in order, without gaps. */
static void transfer(const vel_run_shape* shape, char* bytes,
                     void (*transfer_bytes)(char*, size_t)) {
  const vel_run_shape* const element = shape->element;
  if (shape->parts != NULL) {
    for (size_t i = 0; i < shape->count; ++i) {
      transfer(shape->parts[i].shape, bytes + shape->parts[i].offset, transfer_bytes);
    }
  } else if (element != NULL && (element->element != NULL || element->parts != NULL)) {
    for (size_t i = 0; i < shape->count; ++i) {
      transfer(element, bytes + i * element->size, transfer_bytes);
    }
  } else {
    transfer_bytes(bytes, shape->size);
  }
}

static void put(const vel_run_shape* shape, void* variable) {
  transfer(shape, variable, write_bytes);
}

static void store(const vel_run_shape* shape, void* variable) {
  fputc(1, file);
  put(shape, variable);
}

static void load(const vel_run_shape* shape, void* variable) {
  if (fgetc(file) == 1) transfer(shape, variable, read_bytes);
}

void vel_run_trace_input(uint32_t offset, uint32_t count) {
  fprintf(trace, "UPDATEINPUT = %" PRIu32 ", %" PRIu32 "\n", offset, count);
}

void vel_run_trace_output(uint32_t offset, uint32_t count) {
  fprintf(trace, "UPDATEOUTPUT = %" PRIu32 ", %" PRIu32 "\n", offset, count);
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

int main(int argc, char** argv) {
  if (argc != 5 && argc != 8) return EXIT_FAILURE;
  unsigned long long scans = strtoull(argv[3], NULL, 10);
  const uint64_t cycle = strtoull(argv[4], NULL, 10);
  const uint64_t clock = argc == 8 ? strtoull(argv[5], NULL, 10) : 0;
  const char* const retained = argc == 8 ? argv[6] : NULL;
  if (argc == 8) vel_crash_report(argv[7]);
  uint64_t now = 0;
  trace = create(argv[2]);
  if (trace == NULL) return EXIT_FAILURE;

  vel_run_prepare();
  if (retained != NULL && (file = fopen(retained, "rb")) != NULL) {
    vel_run_retained(load);
    fclose(file);
  }
  vel_run_settings();
  for (; scans > 0; --scans) {
    vel_scan_time = (uint32_t)(clock + now);
    vel_run_step(now);
    now += cycle;
  }
  if (finish(trace, argv[2]) != EXIT_SUCCESS) return EXIT_FAILURE;
  if (write_all(argv[1], vel_run_values, put) != EXIT_SUCCESS) return EXIT_FAILURE;
  return retained == NULL ? EXIT_SUCCESS : write_all(retained, vel_run_retained, store);
}
