/* examples/gate_iec.st by hand and, with GATE_LAMP, examples/gate_letters.st, which also
 * shows in a bit of D11 that the motor runs. */
#include "bench/programs/local_io.h"
#include "bench/programs/scan_pair.h"
#include "velrt.h"

/* Byte offset of %MW10 or D10. */
#ifdef GATE_LAMP
enum { RUNS = 3092 };
#else
enum { RUNS = 20 };
#endif
enum { LAMPS = 8 }; /* the first of the four lamps */

static struct {
  u8 opened;
  u8 closed;
} gate VARIABLES;

static void init(void) { gate.opened = gate.closed = 0; }

static void scan(void) {
  gate.opened = read_now(1);
  gate.closed = read_now(2);
  sbit(0, read_now(2));

  if (gbit(INPUTS) && !gate.opened) {
    if (!gbit(OUTPUTS)) VEL_MEM(u16, RUNS) = (u16)(VEL_MEM(u16, RUNS) + 1);
    write_now(1, 0);
    write_now(0, 1);
    fill_now(LAMPS, 4, 1);
  } else {
    write_now(0, 0);
    write_now(1, !gate.closed);
    fill_now(LAMPS, 4, 0);
  }
#ifdef GATE_LAMP
  sbit(8 * (RUNS + 2), gbit(OUTPUTS) | gbit(OUTPUTS + 1));
#endif
  if (VEL_MEM(u16, RUNS) > 1000) mset(RUNS, 2, 0, 0);
}

const struct scan_program by_hand = {init, scan, {{&gate, sizeof gate}}};
