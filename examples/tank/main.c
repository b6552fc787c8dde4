/* The tank in C around the program in tank.h: pump 1 runs, gets no water, and pump 2 takes over. */
#include <stdio.h>

#include "tank.h"
#include "velrt/clock.h"

#define INPUTS VEL_MEMORY_M
#define OUTPUTS (VEL_MEMORY_M + VEL_MEMORY_I)

int main(void) {
  double litres = 760;
  Tank_init();
  for (int second = 0; second <= 10; second++) {
    vel_scan_time = second * 1000;
    VEL_MEM(i16, INPUTS) = (i16)(litres * 27.648); /* %IW0 */
    VEL_MEM(u8, INPUTS + 2) = 2;                   /* %IX2.0, %IX2.1: only pump 2 has flow */
    Tank_scan();
    const u8 motors = VEL_MEM(u8, OUTPUTS) & 3; /* %QX0.0, %QX0.1 */
    printf("%2d s: %4.1f %%, motors %d %d, starts of pump 2: %d\n", second, Tank_data.level,
           motors & 1, motors >> 1, Tank_data.pumps.a[1].starts);
    litres += 20 - (motors & 2 ? 40 : 0);
  }
}
