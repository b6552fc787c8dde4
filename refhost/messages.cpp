#include "refhost/messages.h"

#include <cstddef>
#include <utility>

namespace refhost {

std::string filledIn(const MessageFormat& format, std::initializer_list<std::string_view> args) {
  std::string text;
  std::string_view rest = format.format;
  for (std::string_view arg : args) {
    const std::size_t placeholder = rest.find("%s");
    if (placeholder == std::string_view::npos) break;
    text.append(rest.substr(0, placeholder)).append(arg);
    rest.remove_prefix(placeholder + 2);
  }
  return text.append(rest);
}

void report(std::vector<vel::VELMessage>& messages, vel::TextLocation location,
            const MessageFormat& format, std::initializer_list<std::string_view> args) {
  vel::VELMessage message;
  message.location = location;
  message.severity = static_cast<int>(format.severity);
  message.code = format.code;
  message.text = filledIn(format, args);
  messages.push_back(std::move(message));
}

}  // namespace refhost
