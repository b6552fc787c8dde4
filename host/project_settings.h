// Settings of the project being compiled.
#pragma once

#include <string>

namespace vel {

struct ProjectSettings {
  // The local I/O ranges of the controller (option "localio.addr"); empty when
  // the controller has none.
  std::string localIoAddress;
};

}  // namespace vel
