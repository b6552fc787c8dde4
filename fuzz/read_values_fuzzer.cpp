// Any text, narrow and wide, through the runtime's string-to-value functions.
#include <cstring>
#include <string>
#include <vector>

#include "velrt.h"

namespace {

void readAll(const void* text, int wide) {
  if (vel_read_bool(text, wide) > 1) __builtin_trap();
  const u64 small = vel_read_integer(text, wide, INT8_MIN, INT8_MAX);
  if (static_cast<i64>(small) < INT8_MIN || static_cast<i64>(small) > INT8_MAX) __builtin_trap();
  vel_read_integer(text, wide, INT64_MIN, INT64_MAX);
  if (vel_read_integer(text, wide, 0, UINT16_MAX) > UINT16_MAX) __builtin_trap();
  vel_read_integer(text, wide, 0, UINT64_MAX);
  vel_read_real(text, wide);
  vel_read_lreal(text, wide);
  vel_read_time(text, wide);
  vel_read_ltime(text, wide);
  if (vel_read_tod(text, wide) >= 86400000U) __builtin_trap();
  if (vel_read_date(text, wide) % 86400U != 0) __builtin_trap();
  vel_read_dt(text, wide);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // Copies of their own size, so that a read behind the terminator is seen.
  const std::string narrow(reinterpret_cast<const char*>(bytes), size);
  readAll(narrow.c_str(), 0);
  std::vector<u16> wide(size / sizeof(u16) + 1);
  if (size > 1) std::memcpy(wide.data(), bytes, size / sizeof(u16) * sizeof(u16));
  readAll(wide.data(), 1);
  // The same text in both widths has the same value.
  std::vector<u16> widened(narrow.begin(), narrow.end());
  for (u16& unit : widened) unit &= 0xFF;
  widened.push_back(0);
  if (vel_read_ltime(widened.data(), 1) != vel_read_ltime(narrow.c_str(), 0)) __builtin_trap();
  return 0;
}
