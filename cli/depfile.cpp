#include "cli/depfile.h"

#include <fmt/format.h>

#include "cli/failure.h"

namespace velc {

namespace {

// As C compilers write it: backslashes before a space are doubled, others are not.
std::string forMake(const std::string& name) {
  std::string text;
  std::size_t backslashes = 0;
  for (const char c : name) {
    if (c == '\n' || c == '\r') {
      throw Failure(fmt::format("'{}' cannot stand in a depfile", name));
    }
    if (c == ' ' || c == '\t') {
      text.append(backslashes + 1, '\\');
    } else if (c == '#' || c == ':') {
      text += '\\';
    } else if (c == '$') {
      text += '$';
    }
    backslashes = c == '\\' ? backslashes + 1 : 0;
    text += c;
  }
  return text;
}

}  // namespace

std::string depfileText(const std::string& output, const std::vector<std::string>& inputs) {
  std::string text = forMake(output) + ':';
  std::string missing;
  for (const std::string& input : inputs) {
    text += " \\\n  " + forMake(input);
    missing += '\n' + forMake(input) + ":\n";
  }
  return text + '\n' + missing;
}

}  // namespace velc
