#include <random>

#include "refhost/editor/completion.h"
#include "refhost/editor/fixes.h"
#include "refhost/editor/folding.h"
#include "refhost/editor/hover.h"
#include "refhost/editor/navigation.h"
#include "refhost/editor/outline.h"
#include "refhost/editor/rename.h"
#include "refhost/editor/semantic_tokens.h"
#include "refhost/editor/signature_help.h"
#include "refhost/editor/source_tokens.h"
#include "tests/refhost/editor/queried.h"

namespace refhost {
namespace {

// Asks everything, and checks that what is answered lies within the files.
class Questions {
 public:
  explicit Questions(const ProgramView& view) : view_(view) {}

  void askAt(std::uint32_t file, std::uint32_t offset) {
    const vel::TextLocation place(file, offset);
    if (const auto range = definitionAt(view_, place)) check(*range);
    if (const auto range = typeDefinitionAt(view_, place)) check(*range);
    for (const SourceRange& range : referencesAt(view_, place, true)) check(range);
    for (const Highlight& highlight : highlightsAt(view_, place)) check(highlight.range);
    if (const auto hover = hoverAt(view_, place)) check(hover->range);
    const SymbolId unit = view_.unitAt(place);
    if (unit != kNoSymbol) check(view_.symbols()[unit].extent);
    if (offset % 4 != 0) return;
    const Completion completion = completionAt(view_, place, offset % 8 == 0);
    check(completion.replaced);
    const std::uint32_t begin = completion.replaced.begin.offset();
    ASSERT_LE(begin, offset);
    ASSERT_LE(offset, begin + completion.replaced.length);
    for (const Proposal& proposal : completion.proposals) ASSERT_FALSE(proposal.label.empty());
    if (const auto help = signatureAt(view_, place)) {
      for (const auto& [label, comment] : help->parameters) {
        ASSERT_LE(label.end, help->label.size());
      }
      ASSERT_LT(help->active.value_or(0), std::max<std::size_t>(help->parameters.size(), 1));
    }
    for (const TextEdit& edit : renamed(view_, place, "fresh_name").edits) check(edit.range);
  }

  void askOf(std::uint32_t file) {
    checkItems(outlineOf(view_, file));
    const std::string_view text = view_.program().sources.text(file);
    const auto lines =
        1 + std::count(text.begin(), text.end(), '\n') + std::count(text.begin(), text.end(), '\r');
    for (const FoldingRange& range : foldingRangesOf(view_, file)) {
      ASSERT_LT(range.firstLine, range.lastLine);
      ASSERT_LE(range.lastLine, lines);
    }
    std::uint32_t end = 0;
    for (const SemanticToken& token : semanticTokensOf(view_, file)) {
      check(token.range);
      ASSERT_GE(token.range.begin.offset(), end);
      end = token.range.begin.offset() + token.range.length;
      ASSERT_EQ(text.substr(token.range.begin.offset(), token.range.length).find('\n'),
                std::string_view::npos);
    }
    end = 0;
    for (const SourceToken& token : sourceTokens(text)) {
      ASSERT_GE(token.span.begin, end);
      ASSERT_GT(token.span.end, token.span.begin);
      for (; end < token.span.begin; ++end) {
        ASSERT_NE(std::string_view(" \t\r\n\v\f").find(text[end]), std::string_view::npos);
      }
      end = token.span.end;
      ASSERT_LE(end, text.size());
    }
    for (const FoundSymbol& symbol : findSymbols(view_, "a")) check(symbol.range);
  }

  void askAbout(const Diagnostic& message) {
    for (const Fix& fix : fixesFor(view_.program(), message)) {
      ASSERT_FALSE(fix.title.empty() || fix.edits.empty());
      for (const TextEdit& edit : fix.edits) check(edit.range);
      for (std::size_t i = 1; i < fix.edits.size(); ++i) {
        const SourceRange& before = fix.edits[i - 1].range;
        ASSERT_GE(fix.edits[i].range.begin.offset(), before.begin.offset() + before.length);
      }
    }
  }

 private:
  void check(const SourceRange& range) {
    const std::uint32_t file = range.begin.file();
    ASSERT_TRUE(view_.program().isOpenable(file));
    ASSERT_LE(range.begin.offset() + range.length, view_.program().sources.text(file).size());
  }
  void checkItems(const std::vector<OutlineItem>& items) {
    for (const OutlineItem& item : items) {
      check(item.range);
      ASSERT_FALSE(item.name.empty());
      ASSERT_GE(item.nameRange.begin.offset(), item.range.begin.offset()) << item.name;
      ASSERT_LE(item.nameRange.begin.offset() + item.nameRange.length,
                item.range.begin.offset() + item.range.length)
          << item.name;
      checkItems(item.parts);
    }
  }

  const ProgramView& view_;
};

void ask(Queried& queried, const std::vector<SourceText>& sources, std::size_t step) {
  queried.analyse(sources);
  Questions questions(queried.view());
  for (const Diagnostic& message : queried.session().messages()) questions.askAbout(message);
  for (std::uint32_t file = 0; file < sources.size(); ++file) {
    questions.askOf(file);
    const std::size_t size = sources[file].text.size();
    for (std::size_t offset = size % step; offset <= size; offset += step) {
      questions.askAt(file, static_cast<std::uint32_t>(offset));
    }
  }
}

// Every name that the sources declare is found where it stands.
TEST(EditorQueries, AnswerAtEveryPlace) {
  Queried queried;
  for (const std::vector<SourceText>& sources : programs()) {
    ask(queried, sources, kOneCaseIn);
    if (testing::Test::HasFatalFailure()) return;
    for (SymbolId id = 0; id < queried.view().symbols().count(); ++id) {
      const SymbolInfo& symbol = queried.view().symbols()[id];
      const bool test = isUnit(symbol.kind) && symbol.kind >= SymbolKind::Setup &&
                        symbol.kind <= SymbolKind::Teardown;
      if (symbol.standard || test) continue;
      const auto found = definitionAt(queried.view(), symbol.nameRange.begin);
      ASSERT_TRUE(found) << symbol.name;
      ASSERT_EQ(found->begin.offset(), symbol.nameRange.begin.offset()) << symbol.name;
    }
    // Nothing is left without a meaning in programs without errors.
    if (queried.session().messages().empty()) {
      for (std::uint32_t file = 0; file < sources.size(); ++file) {
        const auto tokens = semanticTokensOf(queried.view(), file);
        for (const SourceToken& token : sourceTokens(sources[file].text)) {
          const std::string_view text = sources[file].text;
          const std::string_view word =
              text.substr(token.span.begin, token.span.end - token.span.begin);
          // The processor of a RESOURCE means nothing.
          if (token.kind != SourceToken::Kind::Name || word == "Any") continue;
          const bool known = std::any_of(tokens.begin(), tokens.end(), [&](const auto& at) {
            return at.range.begin.offset() == token.span.begin;
          });
          EXPECT_TRUE(known) << word;
        }
      }
    }
  }
}

TEST(EditorQueries, AnswerForEveryPrefix) {
  Queried queried;
  for (std::vector<SourceText> sources : programs()) {
    const std::string text = sources.back().text;
    for (std::size_t size = 0; size < text.size(); size += (3 + size % 29) * kOneCaseIn) {
      sources.back().text = text.substr(0, size);
      ask(queried, sources, 211);
      if (testing::Test::HasFatalFailure()) {
        ADD_FAILURE() << sources.back().name << " " << size;
        return;
      }
    }
  }
}

// Tokens are taken out, doubled, swapped or come from another place.
TEST(EditorQueries, AnswerForMutants) {
  Queried queried;
  std::mt19937_64 random(15);
  for (const std::vector<SourceText>& sources : programs()) {
    for (std::size_t round = 0; round < 40; round += kOneCaseIn) {
      std::vector<SourceText> mutant = sources;
      std::string& text = mutant[random() % mutant.size()].text;
      for (std::size_t changes = 1 + random() % 3; changes != 0; --changes) {
        const std::vector<SourceToken> tokens = sourceTokens(text);
        const Span at = tokens[random() % tokens.size()].span;
        const Span from = tokens[random() % tokens.size()].span;
        const std::string other = text.substr(from.begin, from.end - from.begin);
        text.replace(at.begin, random() % 2 == 0 ? 0 : at.end - at.begin,
                     random() % 3 == 0 ? "" : other + ' ');
      }
      ask(queried, mutant, 101);
      if (testing::Test::HasFatalFailure()) {
        ADD_FAILURE() << text;
        return;
      }
    }
  }
}

}  // namespace
}  // namespace refhost
