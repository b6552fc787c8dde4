#include "refhost/messages.h"

#include <algorithm>
#include <string>

namespace refhost {

bool hasErrors(const std::vector<vel::VELMessage>& messages, std::size_t first) {
  return std::any_of(messages.begin() + static_cast<std::ptrdiff_t>(first), messages.end(),
                     [](const vel::VELMessage& message) {
                       return message.severity == static_cast<int>(Severity::Error);
                     });
}

void report(std::vector<vel::VELMessage>& messages, vel::TextLocation location,
            const MessageFormat& format, std::initializer_list<std::string_view> args) {
  vel::VELMessage message;
  message.location = location;
  message.severity = static_cast<int>(format.severity);
  message.code = format.code;
  std::string_view rest = format.format;
  for (std::string_view arg : args) {
    const std::size_t placeholder = rest.find("%s");
    if (placeholder == std::string_view::npos) break;
    message.text.append(rest.substr(0, placeholder)).append(arg);
    rest.remove_prefix(placeholder + 2);
  }
  message.text.append(rest);
  messages.push_back(std::move(message));
}

}  // namespace refhost
