#include "hostkit/messages.h"

#include <array>
#include <cstdio>
#include <utility>

namespace hostkit {
namespace {

constexpr int kError = 1;

}  // namespace

bool isError(const vel::VELMessage& message) { return message.severity == kError; }

vel::VELMessage errorAt(vel::TextLocation where, std::string text) {
  vel::VELMessage message;
  message.location = where;
  message.severity = kError;
  message.text = std::move(text);
  return message;
}

std::string messageText(const vel::VELMessage& message) {
  std::string text = (isError(message) ? "error: " : "warning: ") + message.text;
  if (message.code == 0) return text;
  std::array<char, 16> code{};
  std::snprintf(code.data(), code.size(), " [0x%X]", message.code);
  return text + code.data();
}

}  // namespace hostkit
