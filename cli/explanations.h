// The pages of docs/ that are built into velc.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velc {

struct Explanation {
  enum class Kind { Operator, Word, Message, WarningGroup };

  Kind kind;
  std::string_view title;
  std::string_view text;  // Markdown, ends in a newline
};

// The explanations of a message, an operator, a group of warnings, or a word of the language: a
// keyword, a type, a standard function or function block. `topic` is a code ("0xC0032") or a name,
// in any letter case. Only a word can have several. Empty for all else.
std::vector<const Explanation*> explanationsOf(std::string_view topic);

// The address of an explanation on the installed page of all of them; empty if there is none.
std::string explanationUri(std::string_view topic);

struct Topic {
  std::string_view name;
  const Explanation* explanation;
};

// All topics of a kind in the order of their names.
std::vector<Topic> topicsOf(Explanation::Kind kind);

}  // namespace velc
