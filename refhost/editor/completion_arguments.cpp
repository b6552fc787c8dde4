// Named arguments that are missing, and the fields of an initial value.
#include <algorithm>

#include "refhost/editor/completion_parts.h"
#include "refhost/services/types.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using ArgumentToken = grammar::Parser::token;

class ArgumentList {
 public:
  ArgumentList(const NamesAt& names, const CodeBracket& bracket, Proposals& proposals)
      : given_(givenArguments(names, bracket)), context_(names.context()), proposals_(proposals) {}

  bool hasAdded() const { return added_; }
  bool namesAny() const { return !given_.empty(); }
  // True if there is one in front of the cursor, behind which all have names.
  bool followsName() const {
    return namesAny() && given_.front().data() < context_.code.text.data() + context_.word.begin;
  }
  bool isGiven(std::string_view name) const {
    return std::any_of(given_.begin(), given_.end(),
                       [name](std::string_view other) { return equalIgnoringCase(name, other); });
  }
  void add(std::string_view name, const std::string& type, bool output, Rank rank,
           SymbolId id = kNoSymbol) {
    if (isGiven(name) || !proposals_.suits(name)) return;
    // A sign that follows stays, so that the name must be one that takes it.
    if (context_.assigned && context_.outputs != output) return;
    Proposal proposal;
    proposal.kind = Proposal::Kind::Argument;
    proposal.label = std::string(name) + (output ? " =>" : " :=");
    proposal.text = context_.assigned ? std::string(name) : proposal.label + ' ';
    proposal.detail = type;
    proposal.id = id;
    proposals_.add(std::move(proposal), rank, Fit::Exact);
    added_ = true;
  }

 private:
  std::vector<std::string_view> given_;
  const CursorContext& context_;
  Proposals& proposals_;
  bool added_ = false;
};

}  // namespace

bool CompletionParts::addArguments() const {
  if (context_.code.brackets.empty()) return false;
  const OpenCode& code = context_.code;
  const CodeBracket& bracket = code.brackets.back();
  const std::size_t end = code.tokens.size();
  const bool negated =
      bracket.argument + 1 == end && code.tokens[bracket.argument].token == ArgumentToken::NOT;
  // In front of a value a ',' or a value may be missing.
  const bool assigned = context_.assigned;
  if (bracket.argument != end && !negated && !assigned) return false;
  ArgumentList list(names_, bracket, proposals_);
  if (proposals_.expected().fieldsOf.known()) {
    for (const NamedPart& part : names_.membersOf(proposals_.expected().fieldsOf)) {
      const vel::SymbolDataType* const type = names_.typeOf(part).type;
      list.add(part.name, type != nullptr ? displayName(type) : "", false, Rank::First, part.id);
    }
    proposals_.parameters = list.hasAdded();
    return false;
  }
  if (bracket.token == 0 || context_.call() != &bracket) return false;
  const std::size_t last = bracket.token - 1;
  const auto callee = calleeAt(names_, context_.accessBegin(last), last);
  if (!callee || !callee->takesNames) return false;
  // Functions are mostly called without the names.
  const bool instance =
      callee->kind == CalleeAt::Kind::Instance || callee->kind == CalleeAt::Kind::Task;
  const bool named = list.namesAny() || assigned;
  const Rank rank = instance || named ? Rank::First : Rank::Standard;
  const bool inputs = !negated && (named || bracket.commas == 0);
  using Passing = CalleeParameter::Passing;
  for (const Passing passing : {Passing::In, Passing::InOut, Passing::Out}) {
    const bool output = passing == Passing::Out;
    for (const CalleeParameter& parameter : callee->parameters) {
      if (parameter.passing != passing || !(output || inputs)) continue;
      list.add(parameter.name, parameter.type, output, rank, parameter.id);
    }
  }
  if (callee->extensible && named) {
    std::size_t next = 0;
    while (list.isGiven(callee->parameterName(next))) ++next;
    if (next >= callee->parameters.size()) list.add(callee->parameterName(next), "", false, rank);
  }
  proposals_.parameters = list.hasAdded();
  proposals_.positional = bracket.commas > 0 && !list.namesAny();
  if (callee->takesEnable) {
    if (inputs) list.add("EN", "BOOL", false, Rank::Word);
    list.add("ENO", "BOOL", true, Rank::Word);
  }
  return list.followsName() || assigned;
}

}  // namespace refhost
