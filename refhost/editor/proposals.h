// Collects the proposals of a completion.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/callee.h"
#include "refhost/editor/completion.h"
#include "refhost/editor/wanted_type.h"
#include "refhost/syntax/keyword.h"

namespace refhost {

// Ranks of proposals among those that fit equally well. Those that begin with the word in front of
// the cursor go before those that have its letters within.
enum class Rank : int { First, Local, Value, Global, Unit, Type, Other, Standard, Word };

class Proposals {
 public:
  Proposals(const NamesAt& names, bool snippets)
      : names_(names), expected_(wantedAt(names)), snippets_(snippets) {}

  const Wanted& expected() const { return expected_; }
  // What is added from now on may be of any type.
  void forgetType() { expected_ = {}; }
  bool withSnippets() const { return snippets_; }
  // True if the word in front of the cursor may become the name.
  bool suits(std::string_view name) const;
  Proposal& add(Proposal proposal, Rank rank, Fit fit = Fit::Possible);

  void addWord(std::string_view word, Rank rank = Rank::Word, Fit fit = Fit::Possible);
  template <std::size_t N>
  void addWords(const Keyword (&words)[N]) {
    for (const Keyword& word : words) addWord(word.name);
  }
  // A block with the END_ that closes it, as a snippet where there are any.
  void addBlock(const Construct& construct);
  // `label` is how it is written if that is not its name.
  void addSymbol(SymbolId id, Rank rank, std::string_view label = {});
  void addVariable(const NamedPart& part, Rank rank, bool member = false);
  // With its parameters if none follow.
  void addCall(const CalleeAt& callee, Proposal proposal, Rank rank, Fit fit,
               bool statement = false);

  Completion take(std::uint32_t file);
  // As in the Completion.
  bool incomplete = false;
  bool positional = false;
  bool parameters = false;

 private:
  const NamesAt& names_;
  Wanted expected_;
  bool snippets_;
  std::vector<Proposal> proposals_;
};

Proposal::Kind proposalKind(const SymbolInfo& symbol);

}  // namespace refhost
