#include "refhost/syntax/misspelt_keywords.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <string>

#include "hostkit/folding.h"
#include "refhost/spelling.h"
#include "refhost/syntax/expected_tokens.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using TokenKind = grammar::Parser::token;

struct Header {
  Keyword keyword;
  int end;
};
constexpr Header kHeaders[] = {{{"IF", TokenKind::IF}, TokenKind::THEN},
                               {{"CASE", TokenKind::CASE}, TokenKind::OF},
                               {{"FOR", TokenKind::FOR}, TokenKind::DO},
                               {{"WHILE", TokenKind::WHILE}, TokenKind::DO}};

// Parts of statements with the openers without which they cannot stand.
struct Stray {
  Keyword keyword;
  int opener;
};
constexpr Stray kStrays[] = {{{"END_IF", TokenKind::END_IF}, TokenKind::IF},
                             {{"END_CASE", TokenKind::END_CASE}, TokenKind::CASE},
                             {{"END_FOR", TokenKind::END_FOR}, TokenKind::FOR},
                             {{"END_WHILE", TokenKind::END_WHILE}, TokenKind::WHILE},
                             {{"END_REPEAT", TokenKind::END_REPEAT}, TokenKind::REPEAT},
                             {{"ELSE", TokenKind::ELSE}, TokenKind::IF},
                             {{"ELSIF", TokenKind::ELSIF}, TokenKind::IF},
                             {{"UNTIL", TokenKind::UNTIL}, TokenKind::REPEAT}};

bool isWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// True of the keywords of kUnits. The name of the unit follows.
bool isUnit(int kind) {
  return std::any_of(std::begin(words::kUnits), std::end(words::kUnits),
                     [kind](const Keyword& unit) { return unit.kind == kind; });
}

bool beginsOperand(int kind) {
  return kind == TokenKind::IDENTIFIER || kind == TokenKind::INTEGER || kind == TokenKind::NUMBER ||
         kind == TokenKind::LITERAL || kind == TokenKind::DIRECT_ADDRESS || kind == TokenKind::NOT;
}

// True if a statement or declaration can have ended before the token.
bool endsPart(int kind) {
  return kind == ';' || kind == TokenKind::YYEOF || kind == TokenKind::IDENTIFIER ||
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
  if (c == '[') return previous == ':' || previous == TokenKind::OF || previous == TokenKind::TO;
  const char next = i + 1 < behind.size() ? behind[i + 1] : ' ';
  return (c == '(' && next == '*') || (c == '/' && (next == '/' || next == '*')) || c == '{';
}

void MisspeltKeywords::correct(Token& token, int previous) {
  if (isUnit(previous) || !canBeKeyword(token, previous)) return;
  const std::string_view word = queue_.textOf(token);
  Candidates candidates(word);
  if (!blocks_.any()) {
    if (previous == 0 || isStructural(previous)) offerUnits(candidates);
  } else if (blocks_.inDeclarations()) {
    offerInDeclarations(candidates, previous);
  } else if (blocks_.isUnit(constructOf(TokenKind::CONFIGURATION))) {
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
  const bool begins = isStructural(previous) && previous != TokenKind::OF;
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
  if (queue_.ahead().kind == TokenKind::LITERAL) candidates.offer({"TEST", TokenKind::TEST});
  if (opensVariables(queue_.ahead().kind)) {
    candidates.offer({"SETUP", TokenKind::SETUP});
    candidates.offer({"TEARDOWN", TokenKind::TEARDOWN});
  }
  if (queue_.ahead().kind != TokenKind::IDENTIFIER) return;
  const int behind = queue_.ahead(2).kind;
  if (behind == '.' || behind == '[')
    return candidates.offer({"VAR_CONFIG", TokenKind::VAR_CONFIG});
  if (behind == ':') candidates.offer({"TYPE", TokenKind::TYPE});
  if (behind == ':' || behind == ',' || behind == TokenKind::AT) {
    candidates.offer({"VAR_GLOBAL", TokenKind::VAR_GLOBAL});
    candidates.offer({"VAR_CONFIG", TokenKind::VAR_CONFIG});
  }
  candidates.offerAll(words::kUnits);
}

void MisspeltKeywords::offerClosers(Candidates& candidates) {
  const int next = queue_.ahead().kind;
  const int behind = queue_.ahead(2).kind;
  const bool value =
      next == TokenKind::INTEGER || next == TokenKind::NUMBER || next == TokenKind::LITERAL;
  const bool label = value && blocks_.isOpen(constructOf(TokenKind::CASE)) &&
                     (behind == ':' || behind == ',' || behind == TokenKind::RANGE);
  if (!endsPart(next) && !label) return;
  for (const OpenBlock& block : blocks_) {
    candidates.offer({block.construct->closerName, block.construct->closer});
  }
}

void MisspeltKeywords::offerInDeclarations(Candidates& candidates, int previous) {
  const int next = queue_.ahead().kind;
  const bool inVariables = blocks_.isIn(Construct::Kind::Variables);
  const bool qualifier = previous >= TokenKind::CONSTANT && previous <= TokenKind::PERSISTENT;
  if (inVariables && (opensVariables(previous) || qualifier) && next == TokenKind::IDENTIFIER) {
    candidates.offerAll(words::kQualifiers);
  } else if (previous == ':' || previous == TokenKind::OF || previous == TokenKind::TO) {
    return offerTypes(candidates, previous);
  } else if (previous == TokenKind::POINTER) {
    if (next == TokenKind::IDENTIFIER) candidates.offer({"TO", TokenKind::TO});
    return;
  } else if (!isStructural(previous) && !endsDeclaration(previous)) {
    return;
  }
  if (inVariables && previous == TokenKind::IDENTIFIER) {
    if (next == TokenKind::DIRECT_ADDRESS) candidates.offer({"AT", TokenKind::AT});
    if (next == ';' || next == TokenKind::ASSIGN) candidates.offerAll(words::kEdges);
  }
  if (previous == ']' && next == TokenKind::IDENTIFIER) candidates.offer({"OF", TokenKind::OF});
  offerClosers(candidates);
}

void MisspeltKeywords::offerTypes(Candidates& candidates, int previous) {
  const int next = queue_.ahead().kind;
  if (next == '[') candidates.offerAll(words::kBracketTypes);
  if (next == TokenKind::TO) candidates.offer({"POINTER", TokenKind::POINTER});
  if (next != TokenKind::IDENTIFIER) return;
  const int behind = queue_.ahead(2).kind;
  if (behind == ':' || behind == ',') {
    if (previous != TokenKind::TO) candidates.offer({"STRUCT", TokenKind::STRUCT});
  } else {
    candidates.offer({"REF_TO", TokenKind::REF_TO});
  }
}

void MisspeltKeywords::offerInConfiguration(Candidates& candidates, int previous) {
  const int next = queue_.ahead().kind;
  if (isStructural(previous) || endsDeclaration(previous)) offerClosers(candidates);
  if (next != TokenKind::IDENTIFIER) return;
  const int behind = queue_.ahead(2).kind;
  if (previous == TokenKind::IDENTIFIER) {
    candidates.offer({"WITH", TokenKind::WITH});
    candidates.offer({"ON", TokenKind::ON});
  }
  if (behind == '(') candidates.offer({"TASK", TokenKind::TASK});
  if (behind == '.' || behind == '[') candidates.offer({"VAR_CONFIG", TokenKind::VAR_CONFIG});
  offerSections(candidates);
  if (!isStructural(previous) && previous != TokenKind::IDENTIFIER) return;
  candidates.offer({"RESOURCE", TokenKind::RESOURCE});
  if (behind == ':' || behind == TokenKind::IDENTIFIER)
    candidates.offer({"PROGRAM", TokenKind::PROGRAM});
}

// Only between the header of a unit and its statements, or behind another block.
void MisspeltKeywords::offerSections(Candidates& candidates) {
  const int behind = queue_.ahead(2).kind;
  const bool declares = queue_.ahead().kind == TokenKind::IDENTIFIER &&
                        (behind == ':' || behind == ',' || behind == TokenKind::AT);
  if (candidates.isOneOf({"VAR_INST", "VAR_STAT"})) return;
  if (declares && blocks_.top().construct->kind != Construct::Kind::Statement) {
    candidates.offerAll(words::kSections);
  }
}

void MisspeltKeywords::offerInStatements(Candidates& candidates, int previous) {
  if (previous == ';' || previous == TokenKind::IDENTIFIER ||
      roleOf(previous) == TokenRole::Closer) {
    offerSections(candidates);
  }
  // The result type of a function, whose statements have no labels.
  if (previous == ':' && blocks_.count() == 1) return offerTypes(candidates, previous);
  if (expectsOperand(previous) && previous != ':') {
    if (beginsOperand(queue_.ahead().kind)) candidates.offer({"NOT", TokenKind::NOT});
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
      blocks_.isTop(constructOf(TokenKind::IF)) || blocks_.isTop(constructOf(TokenKind::CASE));
  if (next == ';') {
    const bool inLoop = std::any_of(blocks_.begin(), blocks_.end(), [](const OpenBlock& block) {
      return block.construct->isLoop();
    });
    if (inLoop) candidates.offerAll(words::kLoopJumps);
    candidates.offer({"RETURN", TokenKind::RETURN});
    if (branches) candidates.offer({"ELSE", TokenKind::ELSE});
  }
  if (beginsOperand(next)) {
    for (const Header& header : kHeaders) {
      if (hasHeaderEnd(header.end)) candidates.offer(header.keyword);
    }
    if (blocks_.isTop(constructOf(TokenKind::IF)) && hasHeaderEnd(TokenKind::THEN)) {
      candidates.offer({"ELSIF", TokenKind::ELSIF});
    }
    if (blocks_.isTop(constructOf(TokenKind::REPEAT)) && !blocks_.top().hasUntil) {
      candidates.offer({"UNTIL", TokenKind::UNTIL});
    }
  }
  if (next != TokenKind::IDENTIFIER && roleOf(next) != TokenRole::Opener) return;
  candidates.offer({"REPEAT", TokenKind::REPEAT});
  if (branches && !hasHeaderEnd(TokenKind::THEN)) {
    candidates.offer({"ELSE", TokenKind::ELSE});
  }
}

void MisspeltKeywords::offerBehindOperand(Candidates& candidates) {
  const int next = queue_.ahead().kind;
  const bool operand = beginsOperand(next);
  if (operand) candidates.offerAll(words::kOperators);
  if (!blocks_.top().inHeader) return;
  const Construct& construct = *blocks_.top().construct;
  if (construct.opener == TokenKind::FOR && !blocks_.top().hasTo) {
    if (operand) candidates.offerDue({"TO", TokenKind::TO});
    return;
  }
  if (operand || endsPart(next))
    candidates.offerDue({construct.headerEndName, construct.headerEnd});
  if (operand && construct.opener == TokenKind::FOR) candidates.offer({"BY", TokenKind::BY});
}

bool MisspeltKeywords::hasHeaderEnd(int kind) {
  constexpr std::size_t kLongest = 100;
  std::size_t distance = 1;
  while (distance < kLongest && !isStructural(queue_.ahead(distance).kind) &&
         queue_.ahead(distance).kind != TokenKind::YYEOF) {
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
      for (const Keyword& unit : words::kUnits) {
        if (equalIgnoringCase(queue_.textOf(opener), unit.name)) return true;
      }
    }
    i = end;
  }
  return false;
}

}  // namespace refhost
