#include "refhost/editor/signature_help.h"

#include <algorithm>

#include "refhost/editor/callee.h"
#include "refhost/editor/hover.h"
#include "refhost/editor/source_tokens.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using HelpToken = grammar::Parser::token;

using Passing = CalleeParameter::Passing;

// The first parameter that none of the arguments has, of which some are named.
std::size_t missingIn(const CalleeAt& callee, const CodeBracket& bracket, const OpenCode& code,
                      const std::vector<std::string_view>& given) {
  std::vector<bool> taken(callee.parameters.size() + 1);
  for (const std::string_view name : given) taken[callee.named(name)] = true;
  std::size_t plain = bracket.commas;
  int depth = 0;
  for (std::size_t i = bracket.token + 1; i < code.tokens.size(); ++i) {
    const int token = code.tokens[i].token;
    if (token == '(' || token == '[') ++depth;
    if (token == ')' || token == ']') --depth;
    const bool names = token == HelpToken::ASSIGN || token == HelpToken::ARROW;
    if (names && depth == 0 && plain > 0) --plain;
  }
  for (std::size_t i = 0; i < plain; ++i) taken[callee.positional(i, false)] = true;
  for (const bool outputs : {false, true}) {
    for (std::size_t i = 0; i < callee.parameters.size(); ++i) {
      const bool output = callee.parameters[i].passing == Passing::Out;
      if (output == outputs && !taken[i]) return i;
    }
  }
  return callee.positional(callee.parameters.size(), false);
}

// The parameter that an argument names whose name begins at `offset`, wherever in it the cursor is;
// parameters.size() for none.
std::size_t namedAt(const CalleeAt& callee, const NamesAt& names, std::uint32_t offset) {
  const std::vector<SourceToken>& tokens = names.tokens();
  const auto isCode = [offset](const SourceToken& at) {
    return at.token != 0 && at.span.begin >= offset;
  };
  const auto name = std::find_if(tokens.begin(), tokens.end(), isCode);
  if (name == tokens.end()) return callee.parameters.size();
  const auto sign = std::find_if(name + 1, tokens.end(), isCode);
  const bool assigns =
      sign != tokens.end() && (sign->token == HelpToken::ASSIGN || sign->token == HelpToken::ARROW);
  if (!assigns) return callee.parameters.size();
  const std::string_view text = names.context().code.text;
  return callee.named(text.substr(name->span.begin, name->span.end - name->span.begin));
}

// The parameter of the argument that the cursor is in.
std::optional<std::size_t> activeIn(const CalleeAt& callee, const CodeBracket& bracket,
                                    const NamesAt& names) {
  const CursorContext& context = names.context();
  const OpenCode& code = context.code;
  const std::size_t end = code.tokens.size();
  std::size_t name = bracket.argument;
  if (name < end && code.tokens[name].token == HelpToken::NOT) ++name;
  const int behind = name + 1 < end ? code.tokens[name + 1].token : 0;
  std::size_t index =
      namedAt(callee, names, name < end ? code.tokens[name].span.begin : context.word.begin);
  if (index < callee.parameters.size()) return index;
  if (behind == HelpToken::ASSIGN || behind == HelpToken::ARROW) return std::nullopt;
  if (const auto given = givenArguments(names, bracket); !given.empty()) {
    index = missingIn(callee, bracket, code, given);
  } else {
    // Behind the cursor the arguments go on; together they may be so many that outputs count.
    const auto inputs = static_cast<std::size_t>(std::count_if(
        callee.parameters.begin(), callee.parameters.end(),
        [](const CalleeParameter& parameter) { return parameter.passing != Passing::Out; }));
    index = callee.positional(bracket.commas, bracket.commas >= inputs);
  }
  return index < callee.parameters.size() ? std::optional(index) : std::nullopt;
}

}  // namespace

std::optional<SignatureHelp> signatureAt(const ProgramView& view, vel::TextLocation place) {
  const std::string_view text = view.program().sources.text(place.file());
  const std::vector<SourceToken> tokens = sourceTokens(text);
  CursorContext context = cursorContext(text, tokens, place.offset());
  // A place within a text or a number is in an argument, too.
  if (context.code.text.empty()) context.code = openCodeAt(text, tokens, place.offset());
  const CodeBracket* const bracket = context.call();
  if (bracket == nullptr) return {};
  const NamesAt names(view, place.file(), tokens, context);
  const std::size_t last = bracket->token - 1;
  const auto callee = calleeAt(names, context.accessBegin(last), last);
  if (!callee) return {};
  SignatureHelp help;
  std::vector<Span> places;
  help.label = signatureText(*callee, true, &places);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const SymbolId id = callee->parameters[i].id;
    const bool open = id != kNoSymbol && !view.symbols()[id].standard;
    help.parameters.push_back({places[i], open ? commentText(view, id) : std::string()});
  }
  help.active = activeIn(*callee, *bracket, names);
  const bool own = callee->id != kNoSymbol && !view.symbols()[callee->id].standard;
  if (own) {
    help.comment = commentText(view, callee->id);
  } else {
    help.topic = callee->kind == CalleeAt::Kind::Task ? "TASK" : callee->name;
  }
  return help;
}

}  // namespace refhost
