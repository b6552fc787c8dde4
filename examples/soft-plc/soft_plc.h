/* Shared by the threads of the soft PLC, the one that scans and the one that serves clients: a copy
 * of the device memory. They touch it for as long as it takes to copy, so that no client delays a
 * scan. */
#ifndef SOFT_PLC_H
#define SOFT_PLC_H

#include <pthread.h>

#include "plc_memory.h"
#include "velrt.h"

enum {
  IMAGE = VEL_MEMORY_M + VEL_MEMORY_I + VEL_MEMORY_Q, /* bytes */
  INPUTS = VEL_MEMORY_M,                              /* the first byte of %I */
  OUTPUTS = VEL_MEMORY_M + VEL_MEMORY_I               /* the first byte of %Q */
};

extern pthread_mutex_t lock;
extern u8 image[IMAGE];   /* as clients see the memory */
extern u8 written[IMAGE]; /* 1 for what they have written since the last scan began */

/* Serves clients from now on, and ends the program if that fails. Without any request for
 * `watchdog` milliseconds, all inputs become 0; never, if it is 0. Returns the port on which
 * clients can connect. */
int start_service(const char* address, int port, int watchdog);

#endif
