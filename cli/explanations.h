// The pages of docs/ that velc carries with it.
#pragma once

#include <string_view>
#include <vector>

namespace velc {

struct Explanation {
  std::string_view title;
  std::string_view text;  // Markdown, ends in a line end
};

// What a message means, or what an operator does. `topic` is a code as messages show
// it ("0xC0032") or an operator's name, in any letter case. Null when it is neither.
const Explanation* explanationOf(std::string_view topic);

struct Topic {
  std::string_view name;
  const Explanation* explanation;
};

// The codes of all messages, in their order.
std::vector<Topic> explainedMessages();

}  // namespace velc
