#include "cli/colours.h"

#include <unistd.h>

#include <cstdlib>

namespace velc {

namespace {

std::string_view variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

bool suggests(int descriptor) {
  return isatty(descriptor) != 0 && variable("NO_COLOR").empty() && variable("TERM") != "dumb";
}

const char* sequenceOf(Colours::Role role) {
  switch (role) {
    case Colours::Role::None:
      break;
    case Colours::Role::Error:
      return "\x1b[1;31m";
    case Colours::Role::Warning:
      return "\x1b[1;35m";
    case Colours::Role::Note:
      return "\x1b[1;36m";
    case Colours::Role::Strong:
      return "\x1b[1m";
    case Colours::Role::Mark:
      return "\x1b[1;32m";
  }
  return "";
}

}  // namespace

Colours::Colours(ColourChoice choice, int descriptor)
    : on_(choice == ColourChoice::Always ||
          (choice == ColourChoice::Auto && suggests(descriptor))) {}

std::string Colours::operator()(Role role, std::string_view text) const {
  if (!on_ || role == Role::None) return std::string(text);
  return std::string(sequenceOf(role)).append(text).append("\x1b[0m");
}

}  // namespace velc
