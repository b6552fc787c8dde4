// The pages of docs/ that are built into velc.
#pragma once

#include <string_view>
#include <vector>

namespace velc {

struct Explanation {
  std::string_view title;
  std::string_view text;  // Markdown, ends in a newline
};

// The explanation of a message, an operator or a group of warnings. `topic` is a code ("0xC0032")
// or a name, in any letter case. Null for all else.
const Explanation* explanationOf(std::string_view topic);

struct Topic {
  std::string_view name;
  const Explanation* explanation;
};

// All messages, in the order of their codes, then all groups of warnings.
std::vector<Topic> explainedMessages();

}  // namespace velc
