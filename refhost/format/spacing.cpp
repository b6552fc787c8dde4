#include "refhost/format/spacing.h"

#include <algorithm>
#include <cstddef>

#include "grammar.h"
#include "hostkit/elementary_types.h"
#include "hostkit/folding.h"
#include "refhost/syntax/constructs.h"

namespace refhost::format {

namespace {

using Kind = grammar::Parser::token;
using hostkit::equalIgnoringCase;

constexpr std::string_view kTimes[] = {"T", "LT"};
constexpr std::string_view kDates[] = {"D", "LD", "DT", "LDT", "TOD", "LTOD"};

template <std::size_t N>
bool isAmong(std::string_view word, const std::string_view (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words),
                     [word](std::string_view known) { return equalIgnoringCase(known, word); });
}

bool isElementary(std::string_view name) { return hostkit::elementaryType(name) != nullptr; }

bool isDuration(std::string_view prefix) {
  const hostkit::ElementaryType* const type = hostkit::elementaryType(prefix);
  return isAmong(prefix, kTimes) || (type != nullptr && hostkit::isDuration(type->type));
}

void raise(std::string& text, std::size_t begin, std::size_t end) {
  for (std::size_t i = begin; i < end; ++i) text[i] = hostkit::toUpper(text[i]);
}

bool isTruth(std::string_view word) {
  return equalIgnoringCase(word, "TRUE") || equalIgnoringCase(word, "FALSE");
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The prefix in capitals unless it is a type of the program, digits in capitals, units of
// durations in small letters.
void spellLiteral(std::string& text) {
  const std::string_view whole = text;
  const std::size_t quote = whole.find_first_of("'\"");
  const std::size_t mark = whole.find('#');
  if (mark == std::string::npos || quote < mark) {
    if (isTruth(whole)) raise(text, 0, text.size());
    return;
  }
  const std::string_view prefix = whole.substr(0, mark);
  const std::string_view rest = whole.substr(mark + 1);
  const bool based = isDigit(prefix[0]) || rest.find('#') != std::string::npos;
  const bool truth = isTruth(rest) && equalIgnoringCase(prefix, "BOOL");
  if (truth || (quote == std::string::npos && based)) {
    raise(text, mark, text.size());
  }
  if (isDuration(prefix)) {
    std::transform(text.begin() + static_cast<std::ptrdiff_t>(mark), text.end(),
                   text.begin() + static_cast<std::ptrdiff_t>(mark), hostkit::toLower);
  }
  if (isElementary(prefix) || isAmong(prefix, kTimes) || isAmong(prefix, kDates)) {
    raise(text, 0, mark);
  }
}

class Spacing {
 public:
  Spacing(Pieces& pieces, std::string_view text) : pieces_(pieces), text_(text) {}

  void run() {
    Piece* last = nullptr;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      Piece& piece = pieces_[i];
      if (!piece.isToken()) {
        const bool opened = last != nullptr && (last->kind == '(' || last->kind == '[');
        piece.blank = !opened || &pieces_[i - 1] != last;
        continue;
      }
      next_ = i + 1;
      while (next_ < pieces_.size() && !pieces_[next_].isToken()) ++next_;
      if (piece.before == Break::Line) operand_ = false;
      if (last != nullptr) piece.blank = needsBlank(*last, piece);
      const bool comment = i > 0 && !pieces_[i - 1].isToken();
      if (comment && !isCloser(piece.kind)) piece.blank = true;
      take(piece, last);
      beforeLast_ = last;
      last = &piece;
    }
  }

 private:
  static bool isCloser(int kind) {
    return kind == ',' || kind == ';' || kind == ')' || kind == ']';
  }

  std::string_view textOf(const Piece& piece) const {
    return text_.substr(piece.span.begin, piece.span.end - piece.span.begin);
  }

  // True of a keyword that is a name here: that of a member or of an argument.
  bool isName(const Piece& piece, const Piece* last) const {
    const bool possible = (piece.kind >= Kind::CONSTANT && piece.kind <= Kind::AT) ||
                          piece.kind == Kind::ARRAY || piece.kind == Kind::POINTER ||
                          piece.kind == Kind::STRING || piece.kind == Kind::WSTRING;
    if (!possible || last == nullptr) return false;
    if (last->kind == '.') return true;
    const int next = next_ < pieces_.size() ? pieces_[next_].kind : 0;
    return (next == Kind::ASSIGN || next == Kind::ARROW) &&
           (last->kind == '(' || last->kind == ',' || last->kind == Kind::NOT);
  }

  void take(Piece& piece, const Piece* last) {
    if (piece.kind == Kind::YYEOF) return;
    if (piece.kind == Kind::IDENTIFIER) {
      piece.upper = isTypePlace(piece, last) && isElementary(textOf(piece));
    } else if (isName(piece, last)) {
      operand_ = true;
      name_ = true;
      return;
    } else {
      piece.upper = hostkit::isLetter(text_[piece.span.begin]) && piece.kind != Kind::LITERAL &&
                    piece.kind != Kind::INTEGER && piece.kind != Kind::NUMBER;
    }
    name_ = false;
    piece.binary = operand_ && bindingOf(piece) != 0;
    unary_ = !piece.binary && (piece.kind == '-' || piece.kind == '+');
    called_ = !piece.binary && (piece.kind == Kind::AND || piece.kind == Kind::OR ||
                                piece.kind == Kind::XOR || piece.kind == Kind::MOD);
    operand_ = endsOperand(piece.kind);
  }

  // True of the place of a type's name in a declaration.
  bool isTypePlace(const Piece& piece, const Piece* last) const {
    if (last == nullptr || piece.before == Break::Line) return false;
    if (last->kind == ':') return !last->label;
    if (last->kind == Kind::OF || last->kind == Kind::REF_TO) return true;
    const int before = beforeLast_ != nullptr ? beforeLast_->kind : 0;
    if (last->kind == Kind::TO) return before == Kind::POINTER || before == Kind::REFERENCE;
    return last->kind == ')';  // behind the values of an enumeration
  }

  static bool endsOperand(int kind) {
    return kind == Kind::IDENTIFIER || kind == Kind::LITERAL || kind == Kind::INTEGER ||
           kind == Kind::NUMBER || kind == Kind::DIRECT_ADDRESS || kind == ')' || kind == ']' ||
           kind == '^';
  }

  bool needsBlank(const Piece& last, const Piece& piece) const {
    switch (piece.kind) {
      case ';':
        return last.label;
      case ',':
      case ')':
      case ']':
      case '^':
      case Kind::RANGE:
      case Kind::YYEOF:
        return false;
      case ':':
        return !piece.label;
      case '.':
        // Without the blank it would be part of the number.
        return last.kind == Kind::INTEGER || last.kind == Kind::NUMBER ||
               last.kind == Kind::DIRECT_ADDRESS;
      case '(':
        if (follows(last)) return false;
        break;
      case '[':
        if (follows(last) || last.kind == Kind::ARRAY) return false;
        break;
      default:
        break;
    }
    if (unary_ || last.kind == '(' || last.kind == '[' || last.kind == '.') return false;
    // An address may end in a dot, but only with another character right behind it.
    if (last.kind == Kind::DIRECT_ADDRESS && text_[last.span.end - 1] == '.') return false;
    return last.kind != Kind::RANGE;
  }

  // True if a bracket belongs to the token before it.
  bool follows(const Piece& last) const {
    return operand_ || called_ || name_ || last.kind == Kind::STRING || last.kind == Kind::WSTRING;
  }

  Pieces& pieces_;
  std::string_view text_;
  std::size_t next_ = 0;  // the token behind the current one
  const Piece* beforeLast_ = nullptr;
  // What the last token is.
  bool operand_ = false;  // the end of an operand
  bool unary_ = false;    // a sign
  bool called_ = false;   // an operator that is called like a function
  bool name_ = false;     // a keyword that is a name
};

}  // namespace

void space(Pieces& pieces, std::string_view text) { Spacing(pieces, text).run(); }

int bindingOf(const Piece& token) {
  switch (token.kind) {
    case Kind::OR:
    case Kind::OR_ELSE:
      return 1;
    case Kind::XOR:
      return 2;
    case Kind::AND:
    case Kind::AND_THEN:
      return 3;
    case '=':
    case Kind::NOT_EQUAL:
    case '<':
    case '>':
    case Kind::LESS_EQUAL:
    case Kind::GREATER_EQUAL:
      return 4;
    case '+':
    case '-':
      return 5;
    case '*':
    case '/':
    case Kind::MOD:
      return 6;
    case Kind::POWER:
      return 7;
    default:
      return 0;
  }
}

std::string spelled(const Piece& token, std::string_view text) {
  std::string result(text);
  const bool literal = token.kind == Kind::LITERAL || token.kind == Kind::NUMBER;
  if (token.upper) raise(result, 0, result.size());
  if (token.kind == Kind::DIRECT_ADDRESS) raise(result, 0, result.size());
  if (literal) spellLiteral(result);
  return result;
}

}  // namespace refhost::format
