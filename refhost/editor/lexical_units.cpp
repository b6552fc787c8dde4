#include "refhost/editor/lexical_units.h"

#include <algorithm>
#include <iterator>

#include "hostkit/folding.h"
#include "refhost/syntax/constructs.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using UnitToken = grammar::Parser::token;

class LexicalWalk {
 public:
  LexicalWalk(std::string_view text, const std::vector<SourceToken>& tokens) : text_(text) {
    std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(tokens_),
                 [](const SourceToken& token) { return token.token != 0; });
  }

  std::vector<LexicalUnit> run() {
    for (std::size_t i = 0; i < tokens_.size();) {
      const int opener = openerAt(i);
      if (opener != 0) {
        i = takeHeader(i, opener);
      } else if (opensVariables(kind(i)) && !units_.empty()) {
        i = takeBlock(i);
      } else {
        ++i;
      }
    }
    return std::move(units_);
  }

 private:
  int kind(std::size_t i) const { return i < tokens_.size() ? tokens_[i].token : 0; }
  std::string_view textOf(std::size_t first, std::size_t last) const {
    return text_.substr(tokens_[first].span.begin,
                        tokens_[last].span.end - tokens_[first].span.begin);
  }

  // The keyword of the unit that begins there; 0 for none.
  int openerAt(std::size_t i) const {
    if (opensUnit(kind(i))) return kind(i);
    if (kind(i) != UnitToken::IDENTIFIER || (i > 0 && kind(i - 1) == '.')) return 0;
    for (const Keyword& word : words::kTests) {
      if (!hostkit::equalIgnoringCase(textOf(i, i), word.name)) continue;
      const bool test = word.kind == UnitToken::TEST;
      const bool first = i == 0 || closesUnit(kind(i - 1)) || kind(i - 1) == ';';
      if (test ? kind(i + 1) == UnitToken::LITERAL : first || opensVariables(kind(i + 1))) {
        return word.kind;
      }
    }
    return 0;
  }

  std::size_t takeHeader(std::size_t i, int opener) {
    units_.push_back({opener, {}, tokens_[i].span.begin, {}, {}});
    LexicalUnit& unit = units_.back();
    ++i;
    if (kind(i) != UnitToken::IDENTIFIER && kind(i) != UnitToken::LITERAL) return i;
    unit.name = textOf(i, i);
    if (opener != UnitToken::FUNCTION || kind(i + 1) != ':') return i + 1;
    const std::size_t first = i + 2;
    const std::size_t end = endOfType(first, true);
    if (end > first) unit.result = textOf(first, end - 1);
    return end;
  }

  std::size_t takeBlock(std::size_t i) {
    const int section = kind(i++);
    bool constant = false;
    for (; kind(i) >= UnitToken::CONSTANT && kind(i) <= UnitToken::PERSISTENT; ++i) {
      constant = constant || kind(i) == UnitToken::CONSTANT;
    }
    std::vector<LexicalVariable>& variables = units_.back().variables;
    int depth = 0;  // of brackets and structures
    while (i < tokens_.size()) {
      const int token = kind(i);
      if (token == '(' || token == '[' || token == UnitToken::STRUCT) ++depth;
      if (token == ')' || token == ']' || token == UnitToken::END_STRUCT) --depth;
      const bool ends = isStructural(token) && token != ';' && token != UnitToken::OF &&
                        token != UnitToken::STRUCT && token != UnitToken::END_STRUCT;
      if (ends || openerAt(i) != 0) return i;
      const bool begins = token == UnitToken::IDENTIFIER && depth <= 0 && beginsDeclaration(i);
      if (!begins) {
        ++i;
        continue;
      }
      depth = 0;
      const std::size_t first = variables.size();
      for (; kind(i) == UnitToken::IDENTIFIER; i += kind(i + 1) == ',' ? 2 : 1) {
        variables.push_back({textOf(i, i), {}, section, constant});
      }
      while (i < tokens_.size() && kind(i) != ':' && !isStructural(kind(i))) ++i;
      if (kind(i) != ':') continue;
      const std::size_t type = ++i;
      const std::size_t end = endOfType(type);
      if (end == type) continue;
      for (std::size_t v = first; v < variables.size(); ++v) {
        variables[v].type = textOf(type, end - 1);
      }
      i = end;
    }
    return i;
  }

  // Behind a ';', the keyword of the block, or a declaration without a ';'.
  bool beginsDeclaration(std::size_t i) const {
    const int before = kind(i - 1);
    const int next = kind(i + 1);
    const bool goesOn = next == ':' || next == ',' || next == UnitToken::AT;
    return goesOn && (before == ';' || opensVariables(before) || endsDeclaration(before) ||
                      (before >= UnitToken::CONSTANT && before <= UnitToken::PERSISTENT));
  }

  std::size_t endOfType(std::size_t i, bool alone = false) const {
    int depth = 0;
    const std::size_t first = i;
    for (; i < tokens_.size(); ++i) {
      const int token = kind(i);
      if (token == '(' || token == '[' || token == UnitToken::STRUCT) ++depth;
      if (token == ')' || token == ']' || token == UnitToken::END_STRUCT) --depth;
      if (depth > 0) continue;
      const bool structural =
          isStructural(token) && token != UnitToken::OF && token != UnitToken::END_STRUCT;
      if (structural || token == UnitToken::ASSIGN || openerAt(i) != 0) return i;
      if (i > first && token == UnitToken::IDENTIFIER && beginsDeclaration(i)) return i;
      const bool goesOn = token == '[' || token == ']' || token == UnitToken::OF;
      if (alone && i > first && endsDeclaration(kind(i - 1)) && !goesOn) return i;
    }
    return i;
  }

  std::string_view text_;
  std::vector<SourceToken> tokens_;
  std::vector<LexicalUnit> units_;
};

}  // namespace

std::vector<LexicalUnit> lexicalUnits(std::string_view text,
                                      const std::vector<SourceToken>& tokens) {
  return LexicalWalk(text, tokens).run();
}

}  // namespace refhost
