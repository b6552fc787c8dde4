// String functions of the contract.
#include "host/text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "host/ast_node_helper.h"
#include "hostkit/folding.h"

std::string stringToUpper(const std::string& text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), hostkit::toUpper);
  return upper;
}

std::vector<std::string> stringSplit(const std::string& text, const std::string& separators) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find_first_of(separators, start);
    parts.push_back(text.substr(start, end - start));
    if (end == std::string::npos) return parts;
    start = end + 1;
  }
}

std::string AstNodeHelper::stringFormat(unsigned int /*code*/, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);
  std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  return text;
}
