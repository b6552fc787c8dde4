/* The main program of `velc run`: PROGRAM VALUES SCANS runs the scans and leaves the
 * bytes of all values in the file VALUES. Status 1 when that could not be done. */
#include "velrun.h"

#include <stdio.h>
#include <stdlib.h>

static FILE* values;

static void put(const void* bytes, size_t size) { fwrite(bytes, 1, size, values); }

int main(int argc, char** argv) {
  if (argc != 3) return EXIT_FAILURE;
  unsigned long long scans = strtoull(argv[2], NULL, 10);

  vel_run_prepare();
  for (; scans > 0; --scans) vel_run_step();

  values = fopen(argv[1], "wb");
  if (values == NULL) {
    perror(argv[1]);
    return EXIT_FAILURE;
  }
  vel_run_values(put);
  const int failed = ferror(values);
  if (fclose(values) != 0 || failed) {
    perror(argv[1]);
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
