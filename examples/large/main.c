/* A platform that runs ten scans of 10 ms each. */
#include <stdio.h>

#include "gen/Plant.h"

int main(void) {
  Plant_init();
  for (int scan = 0; scan < 10; ++scan) {
    vel_scan_time = 10 * (u32)scan;
    Plant_scan();
  }
  printf("%.1f litres\n", Plant_data.tank.level.litres);
  return 0;
}
