#include "refhost/emit/store.h"

#include <fmt/format.h>

namespace refhost {

std::string enclosed(const std::string& text) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')') --depth;
    if (depth == 0 && i + 1 < text.size()) return "(" + text + ")";
  }
  return text;
}

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
  if (isInteger(to) && from == BasicDataType::Pointer) {
    return fmt::format("{} = ({})(uintptr_t){}", place, cType(to), enclosed(value));
  }
  // The program has been warned of what is lost; C need not be.
  if (isInteger(to) && isInteger(from) && !widens(from, to)) {
    return fmt::format("{} = ({})({})", place, elementaryType(to)->cType, value);
  }
  std::string text;
  text.reserve(place.size() + 3 + value.size() + 1);  // and a ';'
  text += place;
  text += " = ";
  text += value;
  return text;
}

}  // namespace refhost
