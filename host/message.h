// Diagnostics: one record each, appended by value to a list that the host owns. The plugin
// leaves the fields that are the host's own as they are here.
#pragma once

#include <cstdint>
#include <string>

#include "host/text_location.h"

namespace vel {

struct VELMessage {
  TextLocation location;       // of the invocation or of the parameter at fault
  std::int64_t reserved = -1;  // the host's own
  int severity = 0;            // 1 error, 2 warning
  unsigned int code = 0;       // e.g. 0xC0040
  std::string text;            // translated and formatted
  std::string extra1;          // the host's own
  std::string extra2;          // the host's own
};

}  // namespace vel
