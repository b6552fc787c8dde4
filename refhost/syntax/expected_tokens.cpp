#include "refhost/syntax/expected_tokens.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "refhost/syntax/constructs.h"

namespace refhost {

namespace {

constexpr std::string_view kExpressionStarts[] = {
    "identifier", "direct address", "integer", "number", "literal", "'('", "'-'", "'+'", "NOT"};
constexpr std::string_view kOperators[] = {"OR",   "OR_ELSE", "XOR", "AND",  "AND_THEN", "'='",
                                           "'<>'", "'<'",     "'>'", "'<='", "'>='",     "'+'",
                                           "'-'",  "'*'",     "'/'", "MOD",  "'**'"};
constexpr std::string_view kOperatorNames[] = {"AND", "OR", "XOR", "MOD"};
// The tokens other than operators that can follow a variable.
constexpr std::string_view kAccesses[] = {"'.'", "'['", "'^'", "'('"};
constexpr std::string_view kTypeStarts[] = {"identifier", "STRING", "WSTRING", "ARRAY",
                                            "POINTER",    "REF_TO", "STRUCT",  "'('"};
// Keywords that are also names where only a name can stand; see name_keyword in the grammar.
constexpr std::string_view kNameKeywords[] = {"CONSTANT",   "RETAIN", "NON_RETAIN",
                                              "PERSISTENT", "AT",     "ARRAY",
                                              "POINTER",    "STRING", "WSTRING"};
constexpr std::string_view kSections[] = {"VAR",      "VAR_INPUT",  "VAR_OUTPUT",  "VAR_IN_OUT",
                                          "VAR_TEMP", "VAR_GLOBAL", "VAR_EXTERNAL"};

// Tokens that are possible, but hardly ever intended.
constexpr std::string_view kRare[] = {"R_EDGE", "F_EDGE", "REFERENCE", "'REF='"};
constexpr std::string_view kEnd[] = {"end of file"};

constexpr std::size_t kMaxWords = 6;

template <std::size_t N>
bool contains(const std::string_view (&names)[N], std::string_view name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

template <std::size_t N>
void removeAll(std::vector<std::string_view>& words, const std::string_view (&names)[N]) {
  words.erase(std::remove_if(words.begin(), words.end(),
                             [&names](std::string_view word) { return contains(names, word); }),
              words.end());
}

}  // namespace

void ExpectedTokens::add(std::string_view name) {
  if (!contains(kRare, name)) names_.push_back(name);
}

bool ExpectedTokens::has(std::string_view name) const {
  return std::find(names_.begin(), names_.end(), name) != names_.end();
}

std::vector<std::string_view> ExpectedTokens::keywords() const {
  std::vector<std::string_view> words;
  for (const std::string_view name : names_) {
    if (name.front() >= 'A' && name.front() <= 'Z') words.push_back(name);
  }
  return words;
}

std::string ExpectedTokens::text() const {
  std::vector<std::string_view> words = names_;
  std::string_view whole;
  const bool statement = has("IF");
  const bool expression = has("integer") && has("'('");
  if (has("identifier") && has("CONSTANT")) removeAll(words, kNameKeywords);
  if (statement || expression) {
    removeAll(words, kExpressionStarts);
    removeAll(words, kOperatorNames);
    removeAll(words, kAccesses);
    if (statement) {
      const auto begins = [](std::string_view word) {
        return word == "';'" || beginsStatement(word);
      };
      words.erase(std::remove_if(words.begin(), words.end(), begins), words.end());
    }
    whole = statement ? "statement" : "expression";
  } else if (has("STRUCT")) {
    removeAll(words, kTypeStarts);
    whole = "type";
  } else if (has("'*'")) {
    removeAll(words, kOperators);
    removeAll(words, kAccesses);
    if (words.empty()) whole = "operator";
  } else if (words.size() > 1) {
    removeAll(words, kAccesses);
    if (words.empty()) words = names_;
  }
  if (has("VAR_TEMP") && words.size() > std::size(kSections)) removeAll(words, kSections);
  if (words.size() > 1) removeAll(words, kEnd);
  if (!whole.empty()) words.insert(words.begin(), whole);
  if (words.size() > kMaxWords) words.resize(kMaxWords);

  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i != 0) text.append(i + 1 == words.size() ? " or " : ", ");
    text.append(words[i]);
  }
  return text;
}

}  // namespace refhost
