#include "cli/local_io.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace velc {

namespace {

// Removes the range at the begin of `text`, behind two characters that nobody reads. False if there
// is none.
bool takeLocalRange(std::string_view& text) {
  constexpr std::size_t kTag = 2;
  const std::size_t dash = text.find('-', std::min(kTag, text.size()));
  const std::size_t end = text.find(';', std::min(dash, text.size()));
  if (end == std::string::npos) return false;
  const auto isNumber = [](std::string_view number) {
    const std::size_t first = number.find_first_not_of(" \t");
    if (first == std::string::npos) return false;
    number = number.substr(first, number.find_last_not_of(" \t") - first + 1);
    // The C has the numbers as they stand, where a leading zero would make them octal.
    return number.find_first_not_of("0123456789") == std::string::npos &&
           (number.size() == 1 || number[0] != '0');
  };
  const bool numbers =
      isNumber(text.substr(kTag, dash - kTag)) && isNumber(text.substr(dash + 1, end - dash - 1));
  text.remove_prefix(end + 1);
  return numbers;
}

}  // namespace

std::string checkLocalIo(const std::string& text) {
  std::string_view rest = text;
  const bool fits = text.substr(0, 2).find('-') == std::string::npos && takeLocalRange(rest) &&
                    takeLocalRange(rest) && rest.find_first_not_of(" \t\r\n") == std::string::npos;
  if (fits || text.empty()) return {};
  return fmt::format("'{}' does not have the form I:131072-131088;Q:139264-139280;", text);
}

}  // namespace velc
