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

std::vector<std::string_view> argumentsIn(const MessageFormat& format, std::string_view text) {
  constexpr std::string_view kPlaceholder = "%s";
  std::vector<std::string_view> arguments;
  std::string_view rest = format.format;
  for (bool first = true;; first = false) {
    const std::size_t end = rest.find(kPlaceholder);
    const std::string_view fixed = rest.substr(0, end);
    const bool last = end == std::string_view::npos;
    std::size_t at = text.find(fixed);
    if (last && text.size() >= fixed.size()) at = text.size() - fixed.size();
    const bool fits = at != std::string_view::npos && text.substr(at, fixed.size()) == fixed;
    if (!fits || (first && at != 0)) return {};
    if (!first) arguments.push_back(text.substr(0, at));
    if (last) return arguments;
    text.remove_prefix(at + fixed.size());
    rest.remove_prefix(end + kPlaceholder.size());
  }
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
