#include "velrt/platform.h"

static void update_nothing(u32 offset, u32 count) {
  (void)offset;
  (void)count;
}

struct vel_platform_api __platform_api = {update_nothing, update_nothing};
