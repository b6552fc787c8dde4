#include "refhost/editor/completion.h"

#include <algorithm>

#include "refhost/editor/completion_parts.h"
#include "refhost/editor/source_tokens.h"
#include "refhost/syntax/word_tables.h"
#include "refhost/warnings.h"

namespace refhost {

namespace {

using CursorPlace = CursorContext::Place;
using WordToken = grammar::Parser::token;

class Completer {
 public:
  Completer(const NamesAt& names, const std::vector<const FileDeclaration*>& others, bool snippets)
      : names_(names), context_(names.context()), others_(others), proposals_(names, snippets) {}

  Completion run(std::uint32_t file) {
    const CompletionParts parts(names_, others_, proposals_);
    switch (context_.place) {
      case CursorPlace::Nothing:
        break;
      case CursorPlace::Pragma:
        addPragma();
        break;
      case CursorPlace::TopLevel:
        addTopLevel();
        break;
      case CursorPlace::Type:
        parts.addTypes();
        break;
      case CursorPlace::Declaration:
        addDeclaration(parts);
        break;
      case CursorPlace::BehindName:
        proposals_.addWord("AT");
        break;
      case CursorPlace::BehindType:
        addBehindType();
        break;
      case CursorPlace::TypeWord:
        proposals_.addWord(context_.code.kindBefore() == ']' ? "OF" : "TO");
        break;
      case CursorPlace::Item:
        addItems();
        break;
      case CursorPlace::Task:
        parts.addOfKind(SymbolKind::Task);
        break;
      case CursorPlace::Program:
        parts.addPrograms();
        break;
      case CursorPlace::ItemWord:
        proposals_.addWord(context_.code.inUnitHeader ? "ON" : "WITH", Rank::First);
        if (context_.code.inUnitHeader) addItems();
        break;
      case CursorPlace::Label:
        parts.addLabels();
        proposals_.forgetType();
        addStatement(parts);
        break;
      case CursorPlace::OwnLabel:
        parts.addLabels();
        parts.addOperands();
        break;
      case CursorPlace::Statement:
        addStatement(parts);
        break;
      case CursorPlace::Operand:
        parts.addOperands();
        break;
      case CursorPlace::Operator:
        addBehindOperand();
        break;
      case CursorPlace::Either:
        addBehindOperand();
        parts.addOperands();
        break;
      case CursorPlace::Member:
        parts.addMembers();
        break;
      case CursorPlace::LateMember:
        parts.addMembers();
        addStatement(parts);
        break;
      case CursorPlace::Value:
        parts.addValuesOf(context_.typeName);
        break;
    }
    return proposals_.take(file);
  }

 private:
  const OpenCode& code() const { return context_.code; }

  void addPragma() {
    const std::string_view text = names_.view().program().sources.text(file());
    const std::size_t begin = text.rfind('{', context_.word.begin);
    const std::string_view said = text.substr(begin + 1, context_.word.begin - begin - 1);
    const std::size_t word = said.find_first_not_of(" \t\r\n");
    if (word == std::string_view::npos) {
      for (const char* const name : {"nowarn", "bitparam", "region", "endregion"}) {
        proposals_.addWord(name);
      }
    } else if (vel::equalIgnoringCase(said.substr(word, 6), "nowarn")) {
      proposals_.addWord("all");
      for (const WarningGroup& group : warningGroups()) proposals_.addWord(group.name);
    }
  }

  std::uint32_t file() const { return names_.file(); }

  void addTopLevel() {
    forEachConstruct([this](const Construct& construct) {
      if (construct.kind == Construct::Kind::Unit) proposals_.addBlock(construct);
    });
    proposals_.addWord("VAR_GLOBAL");
    proposals_.addWord("VAR_CONFIG");
  }

  void addSections() {
    for (const Keyword& section : words::kSections) {
      const bool test = code().isInTest() && (section.kind == WordToken::VAR_INPUT ||
                                              section.kind == WordToken::VAR_OUTPUT ||
                                              section.kind == WordToken::VAR_IN_OUT);
      if (section.kind != WordToken::VAR_CONFIG && !test) addSection(section.name);
    }
  }

  // As a snippet, too.
  void addSection(std::string_view name) {
    proposals_.addWord(name);
    if (!proposals_.withSnippets() || !proposals_.suits(name)) return;
    Proposal proposal;
    proposal.kind = Proposal::Kind::Snippet;
    proposal.label = std::string(name) + " ... END_VAR";
    proposal.text = std::string(name) + "\n\t$0\nEND_VAR";
    proposal.snippet = true;
    proposal.topic = std::string(name);
    proposals_.add(std::move(proposal), Rank::Word);
  }

  void addDeclaration(const CompletionParts& parts) {
    const CodeBlock& block = code().blocks.back();
    const int section = context_.section();
    const bool begins = section != 0 && code().statement == block.token + 1;
    if (begins && !context_.onNewLine) {
      for (const Keyword& word : words::kQualifiers) {
        const bool retains = word.kind != WordToken::CONSTANT;
        const bool kept = section == WordToken::VAR || section == WordToken::VAR_OUTPUT ||
                          section == WordToken::VAR_INPUT || section == WordToken::VAR_GLOBAL;
        if (retains ? kept : kept || section == WordToken::VAR_EXTERNAL) {
          proposals_.addWord(word.name);
        }
      }
    }
    if (section == WordToken::VAR_EXTERNAL) parts.addGlobals();
    if (section == WordToken::VAR_CONFIG) parts.addConfigured();
    proposals_.addWord(block.construct->closerName);
  }

  void addBehindType() {
    if (context_.onNewLine && !code().inUnitHeader) {
      proposals_.addWord(code().blocks.back().construct->closerName);
    }
    if (context_.section() == WordToken::VAR_INPUT) proposals_.addWords(words::kEdges);
    if (code().inUnitHeader) addSections();
  }

  void addItems() {
    const bool resource = code().isIn(Construct::Kind::Resource);
    for (const char* const word : {"TASK", "PROGRAM"}) proposals_.addWord(word);
    if (!resource) proposals_.addBlock(*constructNamed("RESOURCE"));
    for (const char* const name : {"VAR_GLOBAL", "VAR_CONFIG"}) addSection(name);
    proposals_.addWord(code().blocks.back().construct->closerName);
  }

  bool isInLoop() const {
    return std::any_of(code().blocks.begin(), code().blocks.end(),
                       [](const CodeBlock& block) { return block.construct->isLoop(); });
  }

  void addStatement(const CompletionParts& parts) {
    const CodeBlock& block = code().blocks.back();
    const std::size_t begin = code().statement;
    const int before = begin > 0 ? code().tokens[begin - 1].token : 0;
    const bool unit = block.construct->kind == Construct::Kind::Unit;
    const bool first = unit && (before == WordToken::END_VAR || begin == code().header);
    if (first) addSections();
    parts.addStatements();
    forEachConstruct([this](const Construct& construct) {
      if (construct.kind == Construct::Kind::Statement) proposals_.addBlock(construct);
    });
    if (isInLoop()) proposals_.addWords(words::kLoopJumps);
    proposals_.addWord("RETURN");
    const int opener = block.construct->opener;
    const bool branches = opener == WordToken::IF || opener == WordToken::CASE;
    if (branches && !block.hasElse) proposals_.addWord("ELSE");
    if (opener == WordToken::IF && !block.hasElse) proposals_.addWord("ELSIF");
    if (opener == WordToken::REPEAT) proposals_.addWord("UNTIL");
    for (const CodeBlock& open : code().blocks) {
      if (open.construct->kind != Construct::Kind::Resource) {
        proposals_.addWord(open.construct->closerName);
      }
    }
  }

  void addBehindOperand() {
    const bool inHeader = code().isIn(Construct::Kind::Statement) && code().blocks.back().inHeader;
    if (inHeader && code().brackets.empty()) {
      const CodeBlock& block = code().blocks.back();
      const auto has = [&](int token) {
        return std::any_of(code().tokens.begin() + static_cast<std::ptrdiff_t>(block.token),
                           code().tokens.end(),
                           [token](const SourceToken& at) { return at.token == token; });
      };
      const bool loop = block.construct->opener == WordToken::FOR;
      const bool ready = !loop || has(WordToken::TO);
      if (loop && has(WordToken::ASSIGN) && !ready) proposals_.addWord("TO", Rank::First);
      if (loop && ready && !has(WordToken::BY)) proposals_.addWord("BY", Rank::First);
      if (ready && !block.hasUntil && !block.construct->headerEndName.empty()) {
        proposals_.addWord(block.construct->headerEndName, Rank::First);
      }
      if (block.hasUntil) proposals_.addWord(block.construct->closerName, Rank::First);
    }
    proposals_.addWords(words::kOperators);
  }

  const NamesAt& names_;
  const CursorContext& context_;
  const std::vector<const FileDeclaration*>& others_;
  Proposals proposals_;
};

}  // namespace

Completion completionAt(const ProgramView& view, vel::TextLocation place, bool snippets,
                        const std::vector<const FileDeclaration*>& others) {
  const std::uint32_t file = place.file();
  const std::string_view text = view.program().sources.text(file);
  const std::vector<SourceToken> tokens = sourceTokens(text);
  const CursorContext context = cursorContext(text, tokens, place.offset());
  const NamesAt names(view, file, tokens, context);
  return Completer(names, others, snippets).run(file);
}

}  // namespace refhost
