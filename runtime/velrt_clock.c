#include "velrt/clock.h"

u32 vel_scan_time;
