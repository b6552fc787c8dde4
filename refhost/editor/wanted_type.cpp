#include "refhost/editor/wanted_type.h"

#include "hostkit/elementary_types.h"
#include "hostkit/operator_traits.h"
#include "refhost/editor/callee.h"
#include "refhost/services/derived_types.h"
#include "refhost/services/standard_functions.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using TypeToken = grammar::Parser::token;

bool compares(int token) {
  return token == '=' || token == '<' || token == '>' || token == TypeToken::NOT_EQUAL ||
         token == TypeToken::LESS_EQUAL || token == TypeToken::GREATER_EQUAL;
}

class TypeSearch {
 public:
  explicit TypeSearch(const NamesAt& names)
      : names_(names), context_(names.context()), code_(names.context().code) {}

  Wanted run() {
    if (code_.tokens.empty()) return {};
    if (context_.initial) return inInitial();
    if (compares(code_.kindBefore())) return {compared(), {}};
    if (const PlaceType behind = comparedBehind(); behind.known()) return {behind, {}};
    return {wanted(code_.brackets.size()), {}};
  }

 private:
  PlaceType elementary(BasicDataType type) const {
    return {names_.view().program().services.symbols.elementary(type), {}};
  }

  PlaceType typeBefore(std::size_t end) const {
    if (end == 0) return {};
    return names_.typeOfAccess(context_.accessBegin(end - 1), end - 1);
  }

  // The other operand of a comparison.
  PlaceType compared() const {
    std::size_t end = code_.tokens.size() - 1;
    if (end > code_.statement && equalIgnoringCase(code_.textOf(end - 1), "REF")) --end;
    return end > code_.statement ? typeBefore(end) : PlaceType{};
  }

  // The operand behind a comparison that follows the word.
  PlaceType comparedBehind() const {
    std::vector<SourceToken> access;
    bool found = false;
    int depth = 0;
    for (const SourceToken& token : names_.tokens()) {
      const int kind = token.token;
      if (token.span.begin < context_.word.end || kind == 0) continue;
      if (!found) {
        if (!compares(kind)) return {};
        found = true;
        continue;
      }
      const bool part = access.empty() || access.back().token == '.'
                            ? token.kind == SourceToken::Kind::Name
                            : kind == '.' || kind == '[' || kind == '^';
      if (isStructural(kind) || (depth == 0 && !part)) break;
      if (kind == '[') ++depth;
      if (kind == ']') --depth;
      access.push_back(token);
    }
    return names_.typeOfTokens(access);
  }

  // Of a value within `depth` brackets.
  PlaceType wanted(std::size_t depth) const {
    for (; depth > 0; --depth) {
      const CodeBracket& bracket = code_.brackets[depth - 1];
      if (code_.tokens[bracket.token].token == '[') return elementary(BasicDataType::LInt);
      if (bracket.token == 0) return {};
      const std::size_t last = bracket.token - 1;
      const auto callee = calleeAt(names_, context_.accessBegin(last), last);
      if (callee) return argument(*callee, depth);
    }
    return ofStatement();
  }

  PlaceType argument(const CalleeAt& callee, std::size_t depth) const {
    const CodeBracket& bracket = code_.brackets[depth - 1];
    const bool named = bracket.argument + 1 < code_.tokens.size() &&
                       (code_.tokens[bracket.argument + 1].token == TypeToken::ASSIGN ||
                        code_.tokens[bracket.argument + 1].token == TypeToken::ARROW);
    const std::size_t index = named ? callee.named(code_.textOf(bracket.argument))
                                    : callee.positional(bracket.commas, false);
    if (index >= callee.parameters.size()) return {};
    const auto first = [&] {
      std::size_t end = bracket.token + 1;
      while (end < code_.tokens.size() && code_.tokens[end].token != ',') ++end;
      return bracket.commas > 0 ? typeBefore(end) : PlaceType{};
    };
    // The operands of these are of one type, which may be that of the result.
    const auto passed = [&] {
      const PlaceType type = wanted(depth - 1);
      const bool truth = type.type != nullptr && type.around.empty() &&
                         type.type->dataType() == BasicDataType::Bool;
      return truth ? PlaceType{} : type;
    };
    if (callee.kind == CalleeAt::Kind::Assertion && bracket.commas > 0) return first();
    if (callee.kind == CalleeAt::Kind::Operator) {
      const hostkit::OperatorTraits& traits = hostkit::operatorTraits(callee.name);
      if (index < traits.firstChoice) {
        return elementary(callee.extensible ? BasicDataType::LInt : BasicDataType::Bool);
      }
      if (traits.chooses() || traits.result == hostkit::OperatorTraits::Result::Passed) {
        return passed();
      }
    }
    if (callee.kind == CalleeAt::Kind::StandardFunction) {
      const StandardFunction::Kind kind = standardFunction(callee.name)->kind;
      if (kind == StandardFunction::Kind::Comparison) return first();
      if (kind == StandardFunction::Kind::Operation) return passed();
    }
    return {callee.parameters[index].dataType, {}};
  }

  PlaceType ofStatement() const {
    const std::size_t begin = code_.statement;
    if (begin >= code_.tokens.size()) return {};
    const int first = code_.tokens[begin].token;
    if (first == TypeToken::IF || first == TypeToken::ELSIF || first == TypeToken::WHILE ||
        first == TypeToken::UNTIL) {
      return elementary(BasicDataType::Bool);
    }
    if (code_.kindBefore() == TypeToken::FOR) return elementary(BasicDataType::LInt);
    int depth = 0;
    for (std::size_t i = begin; i < code_.tokens.size(); ++i) {
      const int token = code_.tokens[i].token;
      if (token == '(' || token == '[') ++depth;
      if (token == ')' || token == ']') --depth;
      if (token == TypeToken::ASSIGN && depth <= 0) return typeBefore(i);
    }
    return {};
  }

 public:
  // What a CASE chooses by.
  PlaceType selector() const {
    if (!code_.isIn(TypeToken::CASE)) return {};
    const std::size_t begin = code_.blocks.back().token + 1;
    std::size_t end = begin;
    while (end < code_.tokens.size() && code_.tokens[end].token != TypeToken::OF) ++end;
    if (end == begin || context_.accessBegin(end - 1) != begin) return {};
    return names_.typeOfAccess(begin, end - 1);
  }

 private:
  Wanted inInitial() const {
    std::size_t colon = code_.statement;
    while (colon < code_.tokens.size() && code_.tokens[colon].token != ':') ++colon;
    std::size_t value = colon;
    while (value < code_.tokens.size() && code_.tokens[value].token != TypeToken::ASSIGN) ++value;
    if (value >= code_.tokens.size() || value == colon + 1) return {};
    const std::uint32_t from = code_.tokens[colon].span.end;
    PlaceType type =
        names_.typeNamed(code_.text.substr(from, code_.tokens[value].span.begin - from));
    for (std::size_t depth = 0; depth < code_.brackets.size(); ++depth) {
      const CodeBracket& bracket = code_.brackets[depth];
      if (bracket.token < value) continue;
      const int before = code_.tokens[bracket.token - 1].token;
      if (code_.tokens[bracket.token].token == '[') {
        type = NamesAt::elementOf(type);
      } else if (before == TypeToken::IDENTIFIER) {
        return {wanted(code_.brackets.size()), {}};
      } else if (before != TypeToken::INTEGER) {
        const bool starts = bracket.argument == code_.tokens.size();
        if (starts) return {type, type};
        const bool field = bracket.argument + 1 < code_.tokens.size() &&
                           code_.tokens[bracket.argument + 1].token == TypeToken::ASSIGN;
        if (!field) continue;
        const VarSymbol* const member = memberOf(type.type, code_.textOf(bracket.argument));
        type = {member != nullptr ? member->dataType() : nullptr, {}};
      }
    }
    return {type, {}};
  }

  const NamesAt& names_;
  const CursorContext& context_;
  const OpenCode& code_;
};

}  // namespace

Wanted wantedAt(const NamesAt& names) {
  TypeSearch search(names);
  using Place = CursorContext::Place;
  const Place place = names.context().place;
  if (place == Place::Label || place == Place::OwnLabel) return {search.selector(), {}};
  return search.run();
}

Fit fits(const PlaceType& type, const PlaceType& expected) {
  if (type.type == nullptr || expected.type == nullptr) return Fit::Possible;
  // A part of it may fit.
  if (!type.around.empty() || isComposite(type.type)) {
    const bool same = type.around == expected.around && type.type == expected.type;
    return same ? Fit::Exact : Fit::Within;
  }
  if (!expected.around.empty()) return Fit::No;
  if (sameType(*type.type, *expected.type)) return Fit::Exact;
  if (isEnumeration(type.type) || isEnumeration(expected.type)) return Fit::No;
  return hostkit::widens(valueType(type.type), valueType(expected.type)) ? Fit::Possible : Fit::No;
}

}  // namespace refhost
