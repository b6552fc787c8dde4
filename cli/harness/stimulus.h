/* The stimulus: values that variables have from certain scans on. */
#ifndef VELRUN_STIMULUS_H
#define VELRUN_STIMULUS_H

#include <stdint.h>

/* Reads the stimulus from a file of rows. A row is the number of the scan from which it holds, from
 * 0, in 8 bytes; then for each variable of vel_run_stimulated a byte that is 1 if the row has a
 * value for it, and the bytes of the value. The numbers ascend. Exits when the file cannot be
 * read. */
void vel_stimulus_start(const char* path);

/* Gives the variables the values that hold in this scan. Must be called for each scan in order,
 * before the scan, and again behind it, so that the values hold whatever the program assigns. Does
 * nothing unless the stimulus has been started. */
void vel_stimulus_scan(uint64_t scan);

#endif
