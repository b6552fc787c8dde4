// The numbers that the memory of elementary values has, of any size. The machine is little-endian,
// see velrt/memory.h.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace refhost {

inline std::uint64_t unsignedAt(std::string_view bytes) {
  std::uint64_t value = 0;
  std::memcpy(&value, bytes.data(), bytes.size());
  return value;
}

inline std::int64_t signedAt(std::string_view bytes) {
  const auto missing = static_cast<int>(64 - bytes.size() * 8);
  return static_cast<std::int64_t>(unsignedAt(bytes) << missing) >> missing;
}

// Of a REAL or an LREAL.
inline double realAt(std::string_view bytes) {
  float single = 0;
  double value = 0;
  if (bytes.size() == sizeof value) {
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }
  std::memcpy(&single, bytes.data(), sizeof single);
  return single;
}

}  // namespace refhost
