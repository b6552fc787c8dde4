// The host's own messages: code, severity and format, each declared once.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "host/message.h"

namespace refhost {

enum class Severity : int { Error = 1, Warning = 2 };

struct MessageFormat {
  unsigned int code;
  Severity severity;
  const char* format;  // placeholders "%s"
};

namespace message {
// clang-format off
constexpr MessageFormat kNotAccepted       {0xF0001, Severity::Error, "The call of '%s' is not accepted;"};
constexpr MessageFormat kSyntax            {0xF0002, Severity::Error, "Syntax error: %s;"};
constexpr MessageFormat kBadLiteral        {0xF0003, Severity::Error, "'%s' is not a valid literal;"};
constexpr MessageFormat kLiteralRange      {0xF0004, Severity::Error, "The literal '%s' is out of range;"};
constexpr MessageFormat kUnterminated      {0xF0005, Severity::Error, "Unterminated %s;"};
constexpr MessageFormat kNestingTooDeep    {0xF0006, Severity::Error, "Nested deeper than %s levels;"};
constexpr MessageFormat kNotSupported      {0xF0007, Severity::Error, "%s not supported;"};
// clang-format on
}  // namespace message

// Appends a message whose placeholders are filled with `args` in order.
void report(std::vector<vel::VELMessage>& messages, vel::TextLocation location,
            const MessageFormat& format, std::initializer_list<std::string_view> args);

}  // namespace refhost
