// Numbers of things in texts.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>

namespace velc {

// "1 file", "2 files". `what` is the singular.
inline std::string counted(std::uint64_t count, const char* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

}  // namespace velc
