#include "refhost/syntax/misspelt_keywords.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <string>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/spelling.h"
#include "refhost/syntax/expected_tokens.h"
#include "refhost/syntax/keyword.h"
#include "refhost/syntax/syntax_errors.h"

namespace refhost {

namespace {

using Kind = grammar::Parser::token;

constexpr Keyword kUnits[] = {{"PROGRAM", Kind::PROGRAM},
                              {"FUNCTION", Kind::FUNCTION},
                              {"FUNCTION_BLOCK", Kind::FUNCTION_BLOCK},
                              {"CONFIGURATION", Kind::CONFIGURATION}};
constexpr Keyword kSections[] = {
    {"VAR", Kind::VAR},
    {"VAR_INPUT", Kind::VAR_INPUT},
    {"VAR_OUTPUT", Kind::VAR_OUTPUT},
    {"VAR_IN_OUT", Kind::VAR_IN_OUT},
    {"VAR_TEMP", Kind::VAR_TEMP},
    {"VAR_GLOBAL", Kind::VAR_GLOBAL},
    {"VAR_EXTERNAL", Kind::VAR_EXTERNAL},
    {"VAR_CONFIG", Kind::VAR_CONFIG},
};
constexpr Keyword kQualifiers[] = {{"CONSTANT", Kind::CONSTANT},
                                   {"RETAIN", Kind::RETAIN},
                                   {"NON_RETAIN", Kind::NON_RETAIN},
                                   {"PERSISTENT", Kind::PERSISTENT}};
constexpr Keyword kEdges[] = {{"R_EDGE", Kind::R_EDGE}, {"F_EDGE", Kind::F_EDGE}};
constexpr Keyword kBracketTypes[] = {
    {"ARRAY", Kind::ARRAY}, {"STRING", Kind::STRING}, {"WSTRING", Kind::WSTRING}};
constexpr Keyword kOperators[] = {{"AND", Kind::AND},           {"OR", Kind::OR},
                                  {"XOR", Kind::XOR},           {"MOD", Kind::MOD},
                                  {"AND_THEN", Kind::AND_THEN}, {"OR_ELSE", Kind::OR_ELSE}};
constexpr Keyword kLoopJumps[] = {{"EXIT", Kind::EXIT}, {"CONTINUE", Kind::CONTINUE}};

struct Header {
  Keyword keyword;
  int end;
};
constexpr Header kHeaders[] = {{{"IF", Kind::IF}, Kind::THEN},
                               {{"CASE", Kind::CASE}, Kind::OF},
                               {{"FOR", Kind::FOR}, Kind::DO},
                               {{"WHILE", Kind::WHILE}, Kind::DO}};

// Parts of statements with the openers without which they cannot stand.
struct Stray {
  Keyword keyword;
  int opener;
};
constexpr Stray kStrays[] = {{{"END_IF", Kind::END_IF}, Kind::IF},
                             {{"END_CASE", Kind::END_CASE}, Kind::CASE},
                             {{"END_FOR", Kind::END_FOR}, Kind::FOR},
                             {{"END_WHILE", Kind::END_WHILE}, Kind::WHILE},
                             {{"END_REPEAT", Kind::END_REPEAT}, Kind::REPEAT},
                             {{"ELSE", Kind::ELSE}, Kind::IF},
                             {{"ELSIF", Kind::ELSIF}, Kind::IF},
                             {{"UNTIL", Kind::UNTIL}, Kind::REPEAT}};

bool isWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool beginsOperand(int kind) {
  return kind == Kind::IDENTIFIER || kind == Kind::INTEGER || kind == Kind::NUMBER ||
         kind == Kind::LITERAL || kind == Kind::DIRECT_ADDRESS || kind == Kind::NOT;
}

// True if a statement or declaration can have ended before the token.
bool endsPart(int kind) {
  return kind == ';' || kind == Kind::YYEOF || kind == Kind::IDENTIFIER ||
         (isStructural(kind) && roleOf(kind) != TokenRole::HeaderEnd);
}

bool equalWithoutUnderscores(std::string_view a, std::string_view b) {
  const auto joined = [](std::string_view word) {
    std::string letters;
    for (const char c : word) {
      if (c != '_') letters += c;
    }
    return letters;
  };
  return equalIgnoringCase(joined(a), joined(b));
}

}  // namespace

// The keyword that is nearest to a word. A keyword that differs in underscores only is nearer than
// all others, and of two that are equally near the one that is due.
class MisspeltKeywords::Candidates {
 public:
  explicit Candidates(std::string_view word) : word_(word), spelling_(word), spellingOfDue_(word) {}

  void offer(const Keyword& keyword) {
    if (exact_.kind != 0) return;
    if (equalWithoutUnderscores(keyword.name, word_)) exact_ = keyword;
    spelling_.offer(keyword.name);
    if (equalIgnoringCase(spelling_.best(), keyword.name)) best_ = keyword;
  }
  // The same for a keyword that must come next or behind the operators.
  void offerDue(const Keyword& keyword) {
    offer(keyword);
    spellingOfDue_.offer(keyword.name);
    if (!spellingOfDue_.best().empty()) due_ = keyword;
  }
  template <std::size_t N>
  void offerAll(const Keyword (&keywords)[N]) {
    for (const Keyword& keyword : keywords) offer(keyword);
  }
  bool isOneOf(std::initializer_list<std::string_view> words) const {
    return std::any_of(words.begin(), words.end(),
                       [this](std::string_view word) { return equalIgnoringCase(word, word_); });
  }
  // Its kind is 0 if none is near enough.
  Keyword best() const {
    if (exact_.kind != 0) return exact_;
    return spelling_.best().empty() ? due_ : best_;
  }

 private:
  std::string_view word_;
  Spelling spelling_;
  Spelling spellingOfDue_;
  Keyword exact_{{}, 0};
  Keyword best_{{}, 0};
  Keyword due_{{}, 0};
};

// A quick look at the character behind the word excludes nearly all names.
bool MisspeltKeywords::canBeKeyword(const Token& token, int previous) const {
  const std::string_view behind = queue_.textFrom(token.span.end);
  std::size_t i = 0;
  while (i < behind.size() && isBlank(behind[i])) ++i;
  if (i == behind.size()) return true;
  const char c = behind[i];
  if (isWordCharacter(c) || c == '%' || c == '\'' || c == '"') return true;
  if (c == ';') return isStructural(previous) || endsDeclaration(previous);
  if (c == '[') return previous == ':' || previous == Kind::OF || previous == Kind::TO;
  const char next = i + 1 < behind.size() ? behind[i + 1] : ' ';
  return (c == '(' && next == '*') || (c == '/' && (next == '/' || next == '*')) || c == '{';
}

void MisspeltKeywords::correct(Token& token, int previous) {
  if (!canBeKeyword(token, previous)) return;
  const std::string_view word = queue_.textOf(token);
  Candidates candidates(word);
  if (!blocks_.any()) {
    if (previous == 0 || isStructural(previous)) offerUnits(candidates);
  } else if (blocks_.inDeclarations()) {
    offerInDeclarations(candidates, previous);
  } else if (blocks_.isUnit(constructOf(Kind::CONFIGURATION))) {
    offerInConfiguration(candidates, previous);
  } else {
    offerInStatements(candidates, previous);
  }
  const Keyword best = candidates.best();
  if (best.kind == 0) return correctStray(token, previous);
  if (isDeclared(word)) return;
  Remarks* const said = errors_.unexpected(token.span, best.name);
  if (said != nullptr) errors_.propose(*said, token.span, best.name);
  token.kind = best.kind;
}

// A part of a statement of which no block is open. The parser refuses the keyword without a word,
// since that has been reported.
void MisspeltKeywords::correctStray(Token& token, int previous) {
  const bool begins = isStructural(previous) && previous != Kind::OF;
  if (!begins || !blocks_.inProgramUnit() || blocks_.inDeclarations()) return;
  const std::string_view word = queue_.textOf(token);
  const int next = queue_.ahead().kind;
  Candidates candidates(word);
  for (const Stray& stray : kStrays) {
    const bool closes = roleOf(stray.keyword.kind) == TokenRole::Closer;
    const bool fits = closes ? next == ';' : next == ';' || beginsOperand(next);
    if (fits) candidates.offer(stray.keyword);
  }
  const Keyword best = candidates.best();
  const auto* const stray =
      std::find_if(std::begin(kStrays), std::end(kStrays),
                   [&best](const Stray& row) { return row.keyword.kind == best.kind; });
  if (best.kind == 0 || blocks_.isOpen(constructOf(stray->opener)) || isDeclared(word)) return;
  Remarks* const said = errors_.unexpected(token.span, "statement");
  if (said != nullptr) {
    const std::string opener(constructOf(stray->opener)->openerName());
    said->note(errors_.rangeOf(token.span),
               "if '" + std::string(best.name) + "' is meant: no " + opener + " is open here");
  }
  token.kind = best.kind;
}

void MisspeltKeywords::suggest(Span found, const ExpectedTokens& expected, Remarks& said) const {
  const std::string_view word = queue_.textOf(found);
  Spelling spelling(word);
  for (const std::string_view keyword : expected.keywords()) spelling.offer(keyword);
  if (!spelling.best().empty() && !isDeclared(word)) errors_.propose(said, found, spelling.best());
}

void MisspeltKeywords::offerUnits(Candidates& candidates) {
  if (queue_.ahead().kind == Kind::LITERAL) candidates.offer({"TEST", Kind::TEST});
  if (opensVariables(queue_.ahead().kind)) {
    candidates.offer({"SETUP", Kind::SETUP});
    candidates.offer({"TEARDOWN", Kind::TEARDOWN});
  }
  if (queue_.ahead().kind != Kind::IDENTIFIER) return;
  const int behind = queue_.ahead(2).kind;
  if (behind == '.' || behind == '[') return candidates.offer({"VAR_CONFIG", Kind::VAR_CONFIG});
  if (behind == ':') candidates.offer({"TYPE", Kind::TYPE});
  if (behind == ':' || behind == ',' || behind == Kind::AT) {
    candidates.offer({"VAR_GLOBAL", Kind::VAR_GLOBAL});
    candidates.offer({"VAR_CONFIG", Kind::VAR_CONFIG});
  }
  candidates.offerAll(kUnits);
}

void MisspeltKeywords::offerClosers(Candidates& candidates) {
  const int next = queue_.ahead().kind;
  const int behind = queue_.ahead(2).kind;
  const bool value = next == Kind::INTEGER || next == Kind::NUMBER || next == Kind::LITERAL;
  const bool label = value && blocks_.isOpen(constructOf(Kind::CASE)) &&
                     (behind == ':' || behind == ',' || behind == Kind::RANGE);
  if (!endsPart(next) && !label) return;
  for (const OpenBlock& block : blocks_) {
    candidates.offer({block.construct->closerName, block.construct->closer});
  }
}

void MisspeltKeywords::offerInDeclarations(Candidates& candidates, int previous) {
  const int next = queue_.ahead().kind;
  const bool inVariables = blocks_.isIn(Construct::Kind::Variables);
  const bool qualifier = previous >= Kind::CONSTANT && previous <= Kind::PERSISTENT;
  if (inVariables && (opensVariables(previous) || qualifier) && next == Kind::IDENTIFIER) {
    candidates.offerAll(kQualifiers);
  } else if (previous == ':' || previous == Kind::OF || previous == Kind::TO) {
    return offerTypes(candidates, previous);
  } else if (previous == Kind::POINTER) {
    if (next == Kind::IDENTIFIER) candidates.offer({"TO", Kind::TO});
    return;
  } else if (!isStructural(previous) && !endsDeclaration(previous)) {
    return;
  }
  if (inVariables && previous == Kind::IDENTIFIER) {
    if (next == Kind::DIRECT_ADDRESS) candidates.offer({"AT", Kind::AT});
    if (next == ';' || next == Kind::ASSIGN) candidates.offerAll(kEdges);
  }
  if (previous == ']' && next == Kind::IDENTIFIER) candidates.offer({"OF", Kind::OF});
  offerClosers(candidates);
}

void MisspeltKeywords::offerTypes(Candidates& candidates, int previous) {
  const int next = queue_.ahead().kind;
  if (next == '[') candidates.offerAll(kBracketTypes);
  if (next == Kind::TO) candidates.offer({"POINTER", Kind::POINTER});
  if (next != Kind::IDENTIFIER) return;
  const int behind = queue_.ahead(2).kind;
  if (behind == ':' || behind == ',') {
    if (previous != Kind::TO) candidates.offer({"STRUCT", Kind::STRUCT});
  } else {
    candidates.offer({"REF_TO", Kind::REF_TO});
  }
}

void MisspeltKeywords::offerInConfiguration(Candidates& candidates, int previous) {
  const int next = queue_.ahead().kind;
  if (isStructural(previous) || endsDeclaration(previous)) offerClosers(candidates);
  if (next != Kind::IDENTIFIER) return;
  const int behind = queue_.ahead(2).kind;
  if (previous == Kind::IDENTIFIER) {
    candidates.offer({"WITH", Kind::WITH});
    candidates.offer({"ON", Kind::ON});
  }
  if (behind == '(') candidates.offer({"TASK", Kind::TASK});
  if (behind == '.' || behind == '[') candidates.offer({"VAR_CONFIG", Kind::VAR_CONFIG});
  offerSections(candidates);
  if (!isStructural(previous) && previous != Kind::IDENTIFIER) return;
  candidates.offer({"RESOURCE", Kind::RESOURCE});
  if (behind == ':' || behind == Kind::IDENTIFIER) candidates.offer({"PROGRAM", Kind::PROGRAM});
}

// Only between the header of a unit and its statements, or behind another block.
void MisspeltKeywords::offerSections(Candidates& candidates) {
  const int behind = queue_.ahead(2).kind;
  const bool declares = queue_.ahead().kind == Kind::IDENTIFIER &&
                        (behind == ':' || behind == ',' || behind == Kind::AT);
  if (candidates.isOneOf({"VAR_INST", "VAR_STAT"})) return;
  if (declares && blocks_.top().construct->kind != Construct::Kind::Statement) {
    candidates.offerAll(kSections);
  }
}

void MisspeltKeywords::offerInStatements(Candidates& candidates, int previous) {
  if (previous == ';' || previous == Kind::IDENTIFIER || roleOf(previous) == TokenRole::Closer) {
    offerSections(candidates);
  }
  // The result type of a function, whose statements have no labels.
  if (previous == ':' && blocks_.count() == 1) return offerTypes(candidates, previous);
  if (expectsOperand(previous) && previous != ':') {
    if (beginsOperand(queue_.ahead().kind)) candidates.offer({"NOT", Kind::NOT});
    return;
  }
  offerClosers(candidates);
  if (isStructural(previous) || previous == ':') {
    offerStatements(candidates);
  } else if (endsDeclaration(previous)) {
    offerBehindOperand(candidates);
  }
}

void MisspeltKeywords::offerStatements(Candidates& candidates) {
  const int next = queue_.ahead().kind;
  const bool branches =
      blocks_.isTop(constructOf(Kind::IF)) || blocks_.isTop(constructOf(Kind::CASE));
  if (next == ';') {
    const bool inLoop = std::any_of(blocks_.begin(), blocks_.end(), [](const OpenBlock& block) {
      return block.construct->isLoop();
    });
    if (inLoop) candidates.offerAll(kLoopJumps);
    candidates.offer({"RETURN", Kind::RETURN});
    if (branches) candidates.offer({"ELSE", Kind::ELSE});
  }
  if (beginsOperand(next)) {
    for (const Header& header : kHeaders) {
      if (hasHeaderEnd(header.end)) candidates.offer(header.keyword);
    }
    if (blocks_.isTop(constructOf(Kind::IF)) && hasHeaderEnd(Kind::THEN)) {
      candidates.offer({"ELSIF", Kind::ELSIF});
    }
    if (blocks_.isTop(constructOf(Kind::REPEAT)) && !blocks_.top().hasUntil) {
      candidates.offer({"UNTIL", Kind::UNTIL});
    }
  }
  if (next != Kind::IDENTIFIER && roleOf(next) != TokenRole::Opener) return;
  candidates.offer({"REPEAT", Kind::REPEAT});
  if (branches && !hasHeaderEnd(Kind::THEN)) {
    candidates.offer({"ELSE", Kind::ELSE});
  }
}

void MisspeltKeywords::offerBehindOperand(Candidates& candidates) {
  const int next = queue_.ahead().kind;
  const bool operand = beginsOperand(next);
  if (operand) candidates.offerAll(kOperators);
  if (!blocks_.top().inHeader) return;
  const Construct& construct = *blocks_.top().construct;
  if (construct.opener == Kind::FOR && !blocks_.top().hasTo) {
    if (operand) candidates.offerDue({"TO", Kind::TO});
    return;
  }
  if (operand || endsPart(next))
    candidates.offerDue({construct.headerEndName, construct.headerEnd});
  if (operand && construct.opener == Kind::FOR) candidates.offer({"BY", Kind::BY});
}

bool MisspeltKeywords::hasHeaderEnd(int kind) {
  constexpr std::size_t kLongest = 100;
  std::size_t distance = 1;
  while (distance < kLongest && !isStructural(queue_.ahead(distance).kind) &&
         queue_.ahead(distance).kind != Kind::YYEOF) {
    ++distance;
  }
  return queue_.ahead(distance).kind == kind;
}

// True if the file seems to declare a name or to define a unit of that name. Only asked about words
// in messages, so the whole file is searched.
bool MisspeltKeywords::isDeclared(std::string_view word) const {
  const std::string_view text = queue_.textFrom(0);
  for (std::size_t i = 0; i + word.size() <= text.size();) {
    if (!isWordCharacter(text[i])) {
      ++i;
      continue;
    }
    std::size_t end = i;
    while (end < text.size() && isWordCharacter(text[end])) ++end;
    if (end - i == word.size() && equalIgnoringCase(text.substr(i, word.size()), word)) {
      std::size_t behind = end;
      while (behind < text.size() && isBlank(text[behind])) ++behind;
      const std::string_view rest = text.substr(behind, 2);
      if (!rest.empty() && (rest[0] == ',' || (rest[0] == ':' && rest != ":="))) return true;
      const Span opener = queue_.wordBefore(static_cast<std::uint32_t>(i));
      for (const Keyword& unit : kUnits) {
        if (equalIgnoringCase(queue_.textOf(opener), unit.name)) return true;
      }
    }
    i = end;
  }
  return false;
}

}  // namespace refhost
