/* Access to local inputs and outputs with immediate refresh. */
#ifndef LOCAL_IO_H
#define LOCAL_IO_H

#include "velrt.h"

/* The raw addresses of the first input bit and the first output bit. */
enum { INPUTS = 131072, OUTPUTS = 139264 };

static inline u8 read_now(u32 input) {
  __platform_api.UPDATEINPUT(input, 1);
  return gbit(INPUTS + input);
}

static inline void write_now(u32 output, u8 value) {
  sbit(OUTPUTS + output, value);
  __platform_api.UPDATEOUTPUT(output, 1);
}

static inline void fill_now(u32 first, u32 count, u8 value) {
  mset(OUTPUTS + first, count, 1, value);
  __platform_api.UPDATEOUTPUT(first, count);
}

#endif
