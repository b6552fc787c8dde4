/* examples/valve.st by hand. */
#include "bench/programs/scan_pair.h"
#include "velrt.h"

static struct {
  i16 request;
  i16 opening;
  f32 volts;
} valve VARIABLES;

static void init(void) {
  valve.request = 130;
  valve.opening = 0;
  valve.volts = 0;
}

static void scan(void) {
  const i16 request = valve.request;
  valve.opening = (i16)(request < 0 ? 0 : request > 100 ? 100 : request);
  valve.volts = (f32)valve.opening / 10.0f;
}

const struct scan_program by_hand = {init, scan, {{&valve, sizeof valve}}};
