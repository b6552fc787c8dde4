#include "refhost/emit/store.h"

#include <fmt/format.h>

namespace refhost {

std::string storeText(BasicDataType to, int capacity, const std::string& place,
                      const std::string& value, BasicDataType from) {
  constexpr std::string_view kBit = "gbit(";
  if (place.compare(0, kBit.size(), kBit) == 0) {
    return fmt::format("sbit({}, {})", place.substr(kBit.size(), place.size() - kBit.size() - 1),
                       value);
  }
  if (isText(to)) {
    const char* const function = to == BasicDataType::String ? "vel_string_set" : "vel_wstring_set";
    return fmt::format("{}({}, {}, {})", function, place, capacity, value);
  }
  if (to == BasicDataType::LTime && from == BasicDataType::Time) {
    return fmt::format("{} = (i64)({}) * 1000000", place, value);
  }
  // The program has been warned of what is lost; C need not be.
  if (isInteger(to) && isInteger(from) && !widens(from, to)) {
    return fmt::format("{} = ({})({})", place, elementaryType(to)->cType, value);
  }
  return fmt::format("{} = {}", place, value);
}

}  // namespace refhost
