// Diagnostics. The plugin appends each record by value to a list that the host owns. It leaves
// the fields marked "for the host" at the values given here.
#pragma once

#include <cstdint>
#include <string>

#include "host/text_location.h"

namespace vel {

struct VELMessage {
  TextLocation location;       // of the invocation or of the faulty parameter
  std::int64_t reserved = -1;  // for the host
  int severity = 0;            // 1 error, 2 warning
  unsigned int code = 0;       // e.g. 0xC0040
  std::string text;            // translated and formatted
  std::string extra1;          // for the host
  std::string extra2;          // for the host
};

}  // namespace vel
