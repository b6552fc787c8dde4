#include "stimulus.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "velrun.h"

static FILE* file; /* NULL when there are no more rows */
static uint64_t next_scan;
static char* next;    /* the row of next_scan, without its number */
static char* current; /* in the same form: what holds now */
static size_t row_size;
static size_t at; /* the place in a row of the variable that is visited */

static void count(const vel_run_shape* shape, void* variable) {
  (void)variable;
  row_size += 1 + shape->size;
}

static void take_next(const vel_run_shape* shape, void* variable) {
  (void)variable;
  if (next[at] != 0) memcpy(current + at, next + at, 1 + shape->size);
  at += 1 + shape->size;
}

static void apply(const vel_run_shape* shape, void* variable) {
  if (current[at] != 0) memcpy(variable, current + at + 1, shape->size);
  at += 1 + shape->size;
}

static void visit_all(vel_run_visit visit) {
  at = 0;
  vel_run_stimulated(visit);
}

static void read_row(void) {
  if (fread(&next_scan, sizeof next_scan, 1, file) == 1 &&
      fread(next, 1, row_size, file) == row_size) {
    return;
  }
  fclose(file);
  file = NULL;
}

void vel_stimulus_start(const char* path) {
  file = fopen(path, "rb");
  vel_run_stimulated(count);
  next = malloc(row_size + 1);
  current = calloc(row_size + 1, 1);
  if (file == NULL || next == NULL || current == NULL) exit(EXIT_FAILURE);
  read_row();
}

void vel_stimulus_scan(uint64_t scan) {
  if (current == NULL) return;
  for (; file != NULL && next_scan <= scan; read_row()) visit_all(take_next);
  visit_all(apply);
}
