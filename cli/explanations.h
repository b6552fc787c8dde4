// The pages of docs/ that are built into velc.
#pragma once

#include <string_view>
#include <vector>

namespace velc {

struct Explanation {
  std::string_view title;
  std::string_view text;  // Markdown, ends in a newline
};

// The explanation of a message or an operator. `topic` is a code ("0xC0032") or the name of an
// operator, in any letter case. Null when it is neither.
const Explanation* explanationOf(std::string_view topic);

struct Topic {
  std::string_view name;
  const Explanation* explanation;
};

// All messages, in the order of their codes.
std::vector<Topic> explainedMessages();

}  // namespace velc
