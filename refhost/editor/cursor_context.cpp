#include "refhost/editor/cursor_context.h"

#include <algorithm>

#include "grammar.h"
#include "hostkit/folding.h"

namespace refhost {

namespace {

using CursorToken = grammar::Parser::token;
using CursorPlace = CursorContext::Place;

class PlaceFinder {
 public:
  PlaceFinder(std::string_view text, const std::vector<SourceToken>& tokens, std::uint32_t offset)
      : text_(text), tokens_(tokens), offset_(offset) {}

  CursorContext run() {
    context_.word = {offset_, offset_};
    const bool hidden = takeWord();
    if (hidden && context_.place == CursorPlace::Nothing) return std::move(context_);
    context_.prefix = text_.substr(context_.word.begin, offset_ - context_.word.begin);
    findBehind();
    if (hidden) return std::move(context_);
    context_.code = openCodeAt(text_, tokens_, context_.word.begin);
    const std::vector<SourceToken>& before = context_.code.tokens;
    const std::uint32_t end = before.empty() ? 0 : before.back().span.end;
    const std::string_view gap = text_.substr(end, context_.word.begin - end);
    context_.onNewLine = before.empty() || gap.find_first_of("\r\n") != std::string_view::npos;
    if (!context_.typeName.empty()) {
      context_.place = CursorPlace::Value;
    } else {
      context_.place = find();
      takeNextWord();
    }
    return std::move(context_);
  }

 private:
  const OpenCode& code() const { return context_.code; }
  int last(std::size_t back = 1) const {
    const bool within = code().statement + back <= code().tokens.size();
    return within ? code().kindBefore(back) : 0;
  }
  bool isWord(std::size_t token, std::string_view word) const {
    return token < code().tokens.size() && hostkit::equalIgnoringCase(code().textOf(token), word);
  }

  // A name that begins at the cursor where an operand or a type stands gives way to another.
  void takeNextWord() {
    if (context_.word.end > context_.word.begin) return;
    switch (context_.place) {
      case CursorPlace::Operand:
      case CursorPlace::Member:
      case CursorPlace::Type:
      case CursorPlace::OwnLabel:
      case CursorPlace::Task:
      case CursorPlace::Program:
        break;
      default:
        return;
    }
    for (const SourceToken& token : tokens_) {
      const bool word =
          token.kind == SourceToken::Kind::Name || token.kind == SourceToken::Kind::Truth;
      if (word && token.span.begin == offset_) context_.word = token.span;
    }
    findBehind();
  }

  void findBehind() {
    context_.assigned = context_.outputs = false;
    context_.behind = {};
    const auto next =
        std::find_if(tokens_.begin(), tokens_.end(), [this](const SourceToken& token) {
          return token.span.begin >= context_.word.end && token.kind != SourceToken::Kind::Comment;
        });
    if (next == tokens_.end()) return;
    context_.assigned = next->token == CursorToken::ASSIGN || next->token == CursorToken::ARROW;
    context_.outputs = next->token == CursorToken::ARROW;
    const std::string_view gap =
        text_.substr(context_.word.end, next->span.begin - context_.word.end);
    if (gap.find_first_of("\r\n") != std::string_view::npos) return;
    context_.behind = text_.substr(next->span.begin, 2);
  }

  // True if the cursor stands in a token in which no name is.
  bool takeWord() {
    const auto behind =
        std::find_if(tokens_.begin(), tokens_.end(),
                     [this](const SourceToken& token) { return token.span.begin >= offset_; });
    if (behind == tokens_.begin()) return false;
    const SourceToken& token = *(behind - 1);
    const std::string_view source =
        text_.substr(token.span.begin, token.span.end - token.span.begin);
    if (token.span.end < offset_) return false;
    const bool within = token.span.end > offset_;
    switch (token.kind) {
      case SourceToken::Kind::Comment: {
        const std::string_view end = source.substr(std::min<std::size_t>(source.size(), 2));
        const bool closed = end.size() >= 2 && (end.substr(end.size() - 2) == "*)" ||
                                                end.substr(end.size() - 2) == "*/");
        return within || source.substr(0, 2) == "//" || !closed;
      }
      case SourceToken::Kind::Pragma: {
        if (!within && source.back() == '}') return false;
        std::uint32_t begin = offset_;
        while (begin > token.span.begin + 1 && text_[begin - 1] != ' ') --begin;
        context_.word = {begin, offset_};
        context_.place = CursorPlace::Pragma;
        return true;
      }
      case SourceToken::Kind::Name:
      case SourceToken::Kind::Keyword:
      case SourceToken::Kind::Truth:
        if (hostkit::isLetter(source[0]) || source[0] == '_') context_.word = token.span;
        return false;
      case SourceToken::Kind::TypedName: {
        const auto mark = static_cast<std::uint32_t>(token.span.begin + source.find('#'));
        if (offset_ > mark) {
          context_.word = {mark + 1, token.span.end};
          context_.typeName = source.substr(0, mark - token.span.begin);
        } else {
          context_.word = {token.span.begin, mark};
        }
        return false;
      }
      case SourceToken::Kind::String:
        return within || source.size() < 2 || source.back() != source[source.find_first_of("'\"")];
      case SourceToken::Kind::Number:
      case SourceToken::Kind::Address:
        return true;
      case SourceToken::Kind::Error:
        return takeTypeName(token, source);
      case SourceToken::Kind::Mark:
        break;
    }
    return false;
  }

  // `Color#` is no token yet.
  bool takeTypeName(const SourceToken& token, std::string_view source) {
    const bool mark =
        source == "#" && &token != tokens_.data() && (&token - 1)->span.end == token.span.begin;
    if (!mark) return source != "#";
    const Span name = (&token - 1)->span;
    context_.typeName = text_.substr(name.begin, name.end - name.begin);
    return false;
  }

  CursorPlace find() {
    const bool member = code().kindBefore() == '.';
    if (member && (!context_.onNewLine || code().blocks.empty())) return CursorPlace::Member;
    if (const CursorPlace place = labelPlace(); place != CursorPlace::Nothing) return place;
    if (member) return CursorPlace::LateMember;
    if (code().blocks.empty()) {
      return code().statement == code().tokens.size() ? CursorPlace::TopLevel
                                                      : CursorPlace::Nothing;
    }
    if (code().inUnitHeader) return inHeader();
    const CodeBlock& top = code().blocks.back();
    if (top.construct->holdsDeclarations()) return inDeclarations();
    const bool items = top.construct->kind == Construct::Kind::Resource ||
                       top.construct->opener == CursorToken::CONFIGURATION;
    return items ? inConfiguration() : inStatements();
  }

  // In front of a ':' there is a label if any CASE is open.
  CursorPlace labelPlace() {
    if (!context_.isBefore(":") || context_.isBefore(":=") || !context_.onNewLine) {
      return CursorPlace::Nothing;
    }
    std::vector<CodeBlock>& blocks = context_.code.blocks;
    std::size_t count = blocks.size();
    for (; count > 0 && blocks[count - 1].construct->opener != CursorToken::CASE; --count) {
      if (blocks[count - 1].construct->kind != Construct::Kind::Statement) {
        return CursorPlace::Nothing;
      }
    }
    if (count == 0 || blocks[count - 1].inHeader) return CursorPlace::Nothing;
    blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(count), blocks.end());
    findLabels();
    context_.constant = true;
    return CursorPlace::OwnLabel;
  }

  CursorPlace inHeader() {
    const std::size_t unit = code().blocks.back().token;
    const std::size_t count = code().tokens.size() - unit;
    if (code().isIn(Construct::Kind::Resource)) {
      return count == 2 ? CursorPlace::ItemWord : CursorPlace::Nothing;
    }
    const bool function = code().tokens[unit].token == CursorToken::FUNCTION;
    if (!function || count < 3) return CursorPlace::Nothing;
    return behindColon(unit + 2);
  }

  // Behind the ':' at the token `colon`, which begins a type.
  CursorPlace behindColon(std::size_t colon) {
    const int before = code().kindBefore();
    const std::size_t last = code().tokens.size() - 1;
    if (last == colon || before == CursorToken::OF || before == CursorToken::TO ||
        before == CursorToken::REF_TO) {
      return CursorPlace::Type;
    }
    if (before == CursorToken::POINTER || before == ']') return CursorPlace::TypeWord;
    if (isWord(last, "REFERENCE")) return CursorPlace::TypeWord;
    return CursorPlace::BehindType;
  }

  CursorPlace inDeclarations() {
    const std::size_t begin = code().statement;
    const std::size_t count = code().tokens.size() - begin;
    const bool qualified =
        std::all_of(code().tokens.begin() + static_cast<std::ptrdiff_t>(begin), code().tokens.end(),
                    [](const SourceToken& token) { return isQualifier(token); });
    // The END_VAR is missing in front of a statement.
    if (count == 0 && context_.section() != CursorToken::VAR_CONFIG && isBeforeStatement()) {
      return CursorPlace::Statement;
    }
    if (count == 0 || qualified) return CursorPlace::Declaration;
    std::size_t colon = 0;
    std::size_t value = 0;
    int depth = 0;
    for (std::size_t i = begin; i < code().tokens.size(); ++i) {
      const int token = code().tokens[i].token;
      if (token == '(' || token == '[') ++depth;
      if (token == ')' || token == ']') --depth;
      const bool assigns = token == CursorToken::ASSIGN || (token == '=' && isWord(i - 1, "REF"));
      if (token == ':' && colon == 0) colon = i;
      if (assigns && depth <= 0 && value == 0) value = i;
    }
    if (value != 0) return inValue();
    if (colon == 0) return behindNames();
    if (!code().brackets.empty()) return inTypeBrackets();
    return behindColon(colon);
  }

  static bool isQualifier(const SourceToken& token) {
    return token.token >= CursorToken::CONSTANT && token.token <= CursorToken::NON_RETAIN;
  }

  CursorPlace behindNames() {
    if (code().kindBefore() == ',') return CursorPlace::Nothing;
    if (code().kindBefore() == CursorToken::AT) return CursorPlace::Nothing;
    return context_.onNewLine ? CursorPlace::Declaration : CursorPlace::BehindName;
  }

  CursorPlace inValue() {
    context_.initial = true;
    const bool starts = !endsOperand(code().tokens.back());
    if (starts) return CursorPlace::Operand;
    const bool ended = context_.onNewLine && code().brackets.empty();
    return ended ? CursorPlace::Declaration : behindOperand();
  }

  // Bounds, lengths, or the values of an enumeration.
  CursorPlace inTypeBrackets() {
    const CodeBracket& bracket = code().brackets.front();
    const int before = bracket.token > 0 ? code().tokens[bracket.token - 1].token : 0;
    const bool assigned = code().kindBefore() == CursorToken::ASSIGN;
    const bool list = code().tokens[bracket.token].token == '(' &&
                      (before == ':' || before == CursorToken::OF || before == CursorToken::TO);
    context_.constant = true;
    if (endsOperand(code().tokens.back()))
      return list ? CursorPlace::Nothing : CursorPlace::Operator;
    return list && !assigned ? CursorPlace::Nothing : CursorPlace::Operand;
  }

  CursorPlace inConfiguration() {
    const std::size_t begin = code().statement;
    if (begin == code().tokens.size()) return CursorPlace::Item;
    const int before = code().kindBefore();
    if (!code().brackets.empty()) {
      if (before == CursorToken::WITH) return CursorPlace::Task;
      return endsOperand(code().tokens.back()) ? behindOperand() : CursorPlace::Operand;
    }
    if (code().tokens[begin].token != CursorToken::PROGRAM) {
      return context_.onNewLine ? CursorPlace::Item : CursorPlace::Nothing;
    }
    if (before == CursorToken::WITH) return CursorPlace::Task;
    if (before == ':') return CursorPlace::Program;
    const bool named = before == CursorToken::IDENTIFIER && last(2) != CursorToken::WITH;
    return named && last(2) != ':' ? CursorPlace::ItemWord : CursorPlace::Nothing;
  }

  CursorPlace inStatements() {
    const std::size_t begin = code().statement;
    const bool labels = code().isIn(CursorToken::CASE) && !code().blocks.back().inHeader;
    if (labels) findLabels();
    if (begin == code().tokens.size()) {
      // Directly behind OF there is no statement yet.
      context_.constant = labels && code().tokens[begin - 1].token == CursorToken::OF;
      if (context_.constant) return CursorPlace::OwnLabel;
      return labels ? CursorPlace::Label : CursorPlace::Statement;
    }
    const SourceToken& before = code().tokens.back();
    const bool bare = code().brackets.empty();
    if (endsOperand(before)) {
      const bool begins = bare && (context_.onNewLine || context_.isBefore(":="));
      if (!begins) return behindOperand();
      return labels ? CursorPlace::Label : CursorPlace::Statement;
    }
    const bool continues = before.token == ',' || before.token == CursorToken::RANGE;
    context_.constant = labels && bare && continues;
    if (context_.constant) {
      for (std::size_t i = begin; i < code().tokens.size(); ++i) {
        context_.labels.push_back(code().textOf(i));
      }
      return CursorPlace::OwnLabel;
    }
    const bool word = roleOf(before.token) == TokenRole::StatementWord;
    if (word) return context_.onNewLine ? CursorPlace::Statement : CursorPlace::Nothing;
    return CursorPlace::Operand;
  }

  bool isBeforeStatement() const {
    return context_.isBefore(":=") || context_.isBefore("(") || context_.isBefore(".") ||
           context_.isBefore("[") || context_.isBefore("^");
  }

  // What follows the word may tell that it is no operator.
  CursorPlace behindOperand() const {
    const bool written = context_.word.end > context_.word.begin;
    const bool operand =
        written && !context_.behind.empty() &&
        std::string_view(";,).[]^(=<>+-*/:").find(context_.behind[0]) != std::string_view::npos;
    return operand ? CursorPlace::Either : CursorPlace::Operator;
  }

  // Those of the whole CASE, behind the place, too.
  void findLabels() {
    const CodeBlock& block = code().blocks.back();
    const std::uint32_t begin = code().tokens[block.token].span.end;
    std::vector<std::string_view> names;
    int depth = 0;  // of statements within
    for (const SourceToken& token : tokens_) {
      const bool here =
          token.span.begin <= context_.word.begin && context_.word.begin <= token.span.end;
      if (token.span.begin < begin || token.token == 0 || here) continue;
      const TokenRole role = roleOf(token.token);
      if (role == TokenRole::Opener) ++depth;
      if (role == TokenRole::Closer && --depth < 0) return;
      if (depth > 0) continue;
      if (token.token == ':') {
        context_.labels.insert(context_.labels.end(), names.begin(), names.end());
      }
      if (isStructural(token.token) || token.token == ':') names.clear();
      const bool name =
          token.kind == SourceToken::Kind::Name || token.kind == SourceToken::Kind::TypedName;
      if (name) names.push_back(text_.substr(token.span.begin, token.span.end - token.span.begin));
    }
  }

  std::string_view text_;
  const std::vector<SourceToken>& tokens_;
  std::uint32_t offset_;
  CursorContext context_;
};

}  // namespace

CursorContext cursorContext(std::string_view text, const std::vector<SourceToken>& tokens,
                            std::uint32_t offset) {
  return PlaceFinder(text, tokens, offset).run();
}

}  // namespace refhost
