#include "refhost/editor/open_code.h"

#include <algorithm>

#include "hostkit/folding.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using CodeToken = grammar::Parser::token;

template <std::size_t N>
int wordAmong(std::string_view text, const Keyword (&table)[N]) {
  for (const Keyword& word : table) {
    if (hostkit::equalIgnoringCase(word.name, text)) return word.kind;
  }
  return CodeToken::IDENTIFIER;
}

class CodeWalk {
 public:
  CodeWalk(std::string_view text, const std::vector<SourceToken>& tokens, std::uint32_t offset) {
    code_.text = text;
    for (const SourceToken& token : tokens) {
      if (token.token == 0) continue;
      if (token.span.end <= offset) {
        code_.tokens.push_back(token);
      } else if (outlines(token.token)) {
        behind_ = token.token;
        break;
      }
    }
  }

  OpenCode run() {
    for (std::size_t i = 0; i < code_.tokens.size();) i = take(i);
    return std::move(code_);
  }

 private:
  // True of a token that begins, ends or divides a block.
  static bool outlines(int token) {
    return isStructural(token) && token != ';' && roleOf(token) != TokenRole::HeaderEnd;
  }
  int kind(std::size_t i) const { return i < code_.tokens.size() ? code_.tokens[i].token : 0; }
  bool inConfiguration() const { return code_.isWithin(CodeToken::CONFIGURATION); }

  // The kind of a word in its place.
  int kindHere(std::size_t i) const {
    const int plain = kind(i);
    if (plain != CodeToken::IDENTIFIER || (i > 0 && kind(i - 1) == '.')) return plain;
    const std::string_view word = code_.textOf(i);
    if (code_.isInTest()) {
      const int end = wordAmong(word, words::kTestEnds);
      if (end != CodeToken::IDENTIFIER) return end;
    }
    if (i == code_.statement) {
      const int part = wordAmong(word, words::kTests);
      const bool outside = code_.blocks.empty();
      const bool begins =
          part == CodeToken::TEST ? kind(i + 1) == CodeToken::LITERAL : opensVariables(kind(i + 1));
      if (part != CodeToken::IDENTIFIER && (outside || begins)) return part;
    }
    const bool items = inConfiguration() && !code_.isIn(Construct::Kind::Variables);
    return items ? wordAmong(word, words::kConfiguration) : plain;
  }

  // Returns the token to be taken next.
  std::size_t take(std::size_t i) {
    const int token = code_.tokens[i].token = kindHere(i);
    switch (roleOf(token)) {
      case TokenRole::Opener:
        return open(i);
      case TokenRole::Closer:
        close(*constructOf(token));
        break;
      case TokenRole::HeaderEnd:
        if (!code_.isIn(Construct::Kind::Statement) || !code_.blocks.back().inHeader) return i + 1;
        code_.blocks.back().inHeader = false;
        break;
      case TokenRole::Elsif:
      case TokenRole::Until:
        if (code_.isIn(Construct::Kind::Statement)) {
          code_.blocks.back().inHeader = true;
          code_.blocks.back().hasUntil = token == CodeToken::UNTIL;
        }
        begin(i);
        return i + 1;
      case TokenRole::Else:
        if (code_.isIn(Construct::Kind::Statement)) code_.blocks.back().hasElse = true;
        break;
      case TokenRole::Semicolon:
        if (code_.isIn(Construct::Kind::Statement)) code_.blocks.back().inHeader = false;
        break;
      default:
        if (lacksEndVar(i)) {
          code_.blocks.pop_back();
          begin(i);
        }
        takeWithin(i, token);
        return i + 1;
    }
    begin(i + 1);
    return i + 1;
  }

  void begin(std::size_t i) {
    code_.statement = i;
    code_.brackets.clear();
  }

  void takeWithin(std::size_t i, int token) {
    std::vector<CodeBracket>& brackets = code_.brackets;
    if (token == '(' || token == '[') {
      brackets.push_back({i, i + 1});
    } else if (token == ')' || token == ']') {
      if (!brackets.empty()) brackets.pop_back();
    } else if (token == ',' && !brackets.empty()) {
      brackets.back().argument = i + 1;
      ++brackets.back().commas;
    } else if (token == ':' && brackets.empty() && endsLabels()) {
      begin(i + 1);
    } else if (token == CodeToken::IDENTIFIER && lacksSemicolon(i)) {
      if (code_.isIn(Construct::Kind::Statement)) code_.blocks.back().inHeader = false;
      begin(i);
    }
  }

  // Closes what is not finished in front of the labels of a CASE.
  bool endsLabels() {
    std::vector<CodeBlock>& blocks = code_.blocks;
    std::size_t count = blocks.size();
    while (count > 0 && blocks[count - 1].construct->opener != CodeToken::CASE) {
      if (blocks[count - 1].construct->kind != Construct::Kind::Statement) return false;
      --count;
    }
    if (count == 0 || blocks[count - 1].inHeader) return false;
    blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(count), blocks.end());
    return true;
  }

  bool beginsLine(std::size_t i) const {
    const std::uint32_t end = code_.tokens[i - 1].span.end;
    const std::uint32_t begin = code_.tokens[i].span.begin;
    return code_.text.substr(end, begin - end).find_first_of("\r\n") != std::string_view::npos;
  }

  // A statement begins where a declaration could, or below one whose type is not written yet. In
  // VAR_CONFIG there are paths.
  bool lacksEndVar(std::size_t i) const {
    const bool begins =
        i == code_.statement || (kind(i - 1) == ':' && code_.brackets.empty() && beginsLine(i));
    return begins && kind(i) == CodeToken::IDENTIFIER && code_.isIn(Construct::Kind::Variables) &&
           kind(code_.blocks.back().token) != CodeToken::VAR_CONFIG &&
           continuesStatement(kind(i + 1)) && !reachesEndVar(i);
  }

  // True if END_VAR is the next token of the block structure, so that a statement is a mistake.
  bool reachesEndVar(std::size_t i) const {
    for (++i; i < code_.tokens.size(); ++i) {
      if (outlines(kind(i))) return kind(i) == CodeToken::END_VAR;
    }
    return behind_ == CodeToken::END_VAR;
  }

  // A name behind an operand begins a new statement, or a new declaration if that goes on like one.
  bool lacksSemicolon(std::size_t i) const {
    if (i == code_.statement) return false;
    const bool declarations =
        !code_.blocks.empty() && code_.blocks.back().construct->holdsDeclarations();
    // Nothing but a declaration has a ':' behind a name.
    if (declarations && kind(i + 1) == ':' && beginsLine(i)) return true;
    // The member is not written yet.
    if (kind(i - 1) == '.' && beginsLine(i)) return true;
    if (!code_.brackets.empty()) return false;
    const SourceToken& before = code_.tokens[i - 1];
    const std::string_view word = code_.textOf(i);
    if (hostkit::equalIgnoringCase(word, "REF") && kind(i + 1) == '=') return false;
    if (!declarations) {
      return endsOperand(before) && !code_.isIn(Construct::Kind::Resource) &&
             !code_.isIn(CodeToken::CONFIGURATION);
    }
    const bool declares = kind(i + 1) == ':' || kind(i + 1) == ',' || kind(i + 1) == CodeToken::AT;
    return declares && endsDeclaration(before.token);
  }

  std::size_t open(std::size_t i) {
    const int token = kind(i);
    const Construct& construct = *constructOf(token);
    std::vector<CodeBlock>& blocks = code_.blocks;
    if (token == CodeToken::PROGRAM && inConfiguration() && beginsInstance(i)) {
      begin(i);
      return i + 1;
    }
    const bool statement = construct.kind == Construct::Kind::Statement;
    if (statement && code_.isIn(Construct::Kind::Variables) && reachesEndVar(i)) return i + 1;
    // Within a statement variables are declared by mistake.
    const bool section = construct.kind == Construct::Kind::Variables;
    if (section && code_.isIn(Construct::Kind::Statement) && !reachesEndVar(i)) return i + 1;
    const auto isOuter = [&](const CodeBlock& block) {
      const Construct::Kind kind = block.construct->kind;
      switch (construct.kind) {
        case Construct::Kind::Unit:
          return false;
        case Construct::Kind::Resource:
          return kind == Construct::Kind::Unit;
        case Construct::Kind::Variables:
          return kind == Construct::Kind::Unit || kind == Construct::Kind::Resource;
        case Construct::Kind::Members:
          return true;
        case Construct::Kind::Statement:
          return kind != Construct::Kind::Variables && kind != Construct::Kind::Members;
      }
      return true;
    };
    while (!blocks.empty() && !isOuter(blocks.back())) blocks.pop_back();
    blocks.push_back({&construct, i, construct.headerEnd != 0});
    if (statement && construct.headerEnd != 0) {
      begin(i);
      return i + 1;
    }
    const std::size_t next = behindHeader(i);
    if (construct.kind == Construct::Kind::Unit) code_.header = next;
    begin(next);
    return next;
  }

  // In a configuration PROGRAM begins a program instance, unless declarations follow.
  bool beginsInstance(std::size_t i) const {
    if (kind(i + 1) != CodeToken::IDENTIFIER) return true;
    return !opensVariables(kind(i + 2)) && roleOf(kind(i + 2)) != TokenRole::Opener;
  }

  void close(const Construct& construct) {
    std::vector<CodeBlock>& blocks = code_.blocks;
    const auto found = std::find_if(blocks.rbegin(), blocks.rend(), [&](const CodeBlock& block) {
      return block.construct == &construct;
    });
    if (found != blocks.rend()) {
      blocks.erase(found.base() - 1, blocks.end());
    } else if (construct.kind == Construct::Kind::Unit) {
      blocks.clear();
    }
  }

  // The first token behind the name, and of a FUNCTION behind its type.
  std::size_t behindHeader(std::size_t opener) {
    const Construct& construct = *constructOf(kind(opener));
    const bool named =
        construct.kind == Construct::Kind::Resource ||
        (construct.kind == Construct::Kind::Unit && construct.opener != CodeToken::TYPE &&
         construct.opener != CodeToken::SETUP && construct.opener != CodeToken::TEARDOWN);
    std::size_t i = opener + 1;
    if (!named) return i;
    if (ends(i)) return i;
    if (kind(i) == CodeToken::IDENTIFIER || kind(i) == CodeToken::LITERAL) ++i;
    if (construct.kind == Construct::Kind::Resource && ends(i)) return i;
    const bool processor = construct.kind == Construct::Kind::Resource && i < code_.tokens.size() &&
                           hostkit::equalIgnoringCase(code_.textOf(i), "ON");
    if (processor) return ends(i + 1) ? i + 1 : i + 2;
    if (construct.opener != CodeToken::FUNCTION || kind(i) != ':') return i;
    return behindType(i + 1);
  }

  std::size_t behindType(std::size_t i) {
    for (; !ends(i); ++i) {
      if (kind(i) == CodeToken::ARRAY) {
        i = behindBrackets(i + 1);
        if (ends(i)) return i;
        continue;  // OF
      }
      const bool prefix = kind(i) == CodeToken::POINTER || kind(i) == CodeToken::REF_TO ||
                          kind(i) == CodeToken::TO ||
                          hostkit::equalIgnoringCase(code_.textOf(i), "REFERENCE");
      if (!prefix) break;
    }
    if (i >= code_.tokens.size()) return i;
    const bool text = kind(i) == CodeToken::STRING || kind(i) == CodeToken::WSTRING;
    if (!text && kind(i) != CodeToken::IDENTIFIER) return i;
    return text ? behindBrackets(i + 1) : i + 1;
  }

  std::size_t behindBrackets(std::size_t i) {
    if (kind(i) != '[' && kind(i) != '(') return i;
    while (i < code_.tokens.size() && kind(i) != ']' && kind(i) != ')') ++i;
    return ends(i) ? i : i + 1;
  }

  // True, and noted, if the place is in front of the token that the header lacks.
  bool ends(std::size_t i) {
    const bool end = i >= code_.tokens.size();
    code_.inUnitHeader = code_.inUnitHeader || end;
    return end;
  }

  OpenCode code_;
  int behind_ = 0;  // the first token behind the place that outlines blocks; 0 for none
};

}  // namespace

OpenCode openCodeAt(std::string_view text, const std::vector<SourceToken>& tokens,
                    std::uint32_t offset) {
  return CodeWalk(text, tokens, offset).run();
}

bool endsOperand(const SourceToken& token) {
  switch (token.kind) {
    case SourceToken::Kind::Name:
    case SourceToken::Kind::Number:
    case SourceToken::Kind::String:
    case SourceToken::Kind::Truth:
    case SourceToken::Kind::TypedName:
    case SourceToken::Kind::Address:
      return token.token == CodeToken::IDENTIFIER || token.kind != SourceToken::Kind::Name;
    default:
      return token.token == ')' || token.token == ']' || token.token == '^';
  }
}

}  // namespace refhost
