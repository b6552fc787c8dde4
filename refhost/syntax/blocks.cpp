#include "refhost/syntax/blocks.h"

#include <algorithm>
#include <iterator>

#include "grammar.h"
#include "hostkit/folding.h"

namespace refhost {

namespace {

using Kind = grammar::Parser::token;

constexpr BlockRule kBlocks[] = {
    {Kind::PROGRAM, Kind::END_PROGRAM, 0, "END_PROGRAM", ""},
    {Kind::FUNCTION, Kind::END_FUNCTION, 0, "END_FUNCTION", ""},
    {Kind::FUNCTION_BLOCK, Kind::END_FUNCTION_BLOCK, 0, "END_FUNCTION_BLOCK", ""},
    {Kind::TYPE, Kind::END_TYPE, 0, "END_TYPE", ""},
    {Kind::CONFIGURATION, Kind::END_CONFIGURATION, 0, "END_CONFIGURATION", ""},
    {Kind::RESOURCE, Kind::END_RESOURCE, 0, "END_RESOURCE", ""},
    {Kind::VAR, Kind::END_VAR, 0, "END_VAR", ""},
    {Kind::STRUCT, Kind::END_STRUCT, 0, "END_STRUCT", ""},
    {Kind::IF, Kind::END_IF, Kind::THEN, "END_IF", "THEN"},
    {Kind::CASE, Kind::END_CASE, Kind::OF, "END_CASE", "OF"},
    {Kind::FOR, Kind::END_FOR, Kind::DO, "END_FOR", "DO"},
    {Kind::WHILE, Kind::END_WHILE, Kind::DO, "END_WHILE", "DO"},
    {Kind::REPEAT, Kind::END_REPEAT, 0, "END_REPEAT", ""},
};

}  // namespace

const BlockRule& ruleOf(int opener) {
  return *std::find_if(std::begin(kBlocks), std::end(kBlocks),
                       [opener](const BlockRule& rule) { return rule.opener == opener; });
}

int openerOf(int closer) {
  return std::find_if(std::begin(kBlocks), std::end(kBlocks),
                      [closer](const BlockRule& rule) { return rule.closer == closer; })
      ->opener;
}

int openerOf(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(kBlocks), std::end(kBlocks), [name](const BlockRule& rule) {
        return equalIgnoringCase(std::string_view(rule.closerName).substr(4), name);
      });
  return found != std::end(kBlocks) ? found->opener : 0;
}

bool opensUnit(int kind) {
  return kind == Kind::PROGRAM || kind == Kind::FUNCTION || kind == Kind::FUNCTION_BLOCK ||
         kind == Kind::TYPE || kind == Kind::CONFIGURATION;
}

bool closesUnit(int kind) {
  return kind == Kind::END_PROGRAM || kind == Kind::END_FUNCTION ||
         kind == Kind::END_FUNCTION_BLOCK || kind == Kind::END_TYPE ||
         kind == Kind::END_CONFIGURATION;
}

bool opensVariables(int kind) { return kind >= Kind::VAR && kind <= Kind::VAR_EXTERNAL; }

bool endsDeclaration(int kind) {
  return kind == Kind::IDENTIFIER || kind == Kind::INTEGER || kind == Kind::NUMBER ||
         kind == Kind::LITERAL || kind == Kind::STRING || kind == Kind::WSTRING || kind == ')' ||
         kind == ']';
}

bool isStructural(int kind) {
  if (kind == ';') return true;
  if (kind < Kind::PROGRAM || kind >= Kind::IDENTIFIER) return false;
  return kind == Kind::ELSIF || kind == Kind::ELSE || kind == Kind::UNTIL || opensVariables(kind) ||
         std::any_of(std::begin(kBlocks), std::end(kBlocks), [kind](const BlockRule& rule) {
           return kind == rule.opener || kind == rule.closer || kind == rule.headerEnd;
         });
}

}  // namespace refhost
