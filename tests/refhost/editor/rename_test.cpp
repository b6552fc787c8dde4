#include "refhost/editor/rename.h"

#include <random>
#include <regex>

#include "tests/refhost/editor/queried.h"

namespace refhost {
namespace {

constexpr std::string_view kMark = "Zq";

std::vector<SourceText> edited(std::vector<SourceText> sources, const Renaming& renaming) {
  for (auto edit = renaming.edits.rbegin(); edit != renaming.edits.rend(); ++edit) {
    sources[edit->range.begin.file()].text.replace(edit->range.begin.offset(), edit->range.length,
                                                   edit->text);
  }
  return sources;
}

// Regardless of letter case and without the mark; hidden variables are named by a digest.
std::string plain(std::string text) {
  for (std::size_t at = text.find(kMark); at != std::string::npos; at = text.find(kMark, at)) {
    text.erase(at, kMark.size());
  }
  std::transform(text.begin(), text.end(), text.begin(), toLower);
  static const std::regex digest("[0-9a-f]{32}");
  return std::regex_replace(text, digest, "#");
}

struct Meaning {
  std::vector<SymbolId> names;  // in the sources, in order
  std::string diagnostics;
  std::string c;

  bool operator==(const Meaning& other) const {
    return names == other.names && diagnostics == other.diagnostics && c == other.c;
  }
};

Meaning meaningOf(Queried& queried, const std::vector<SourceText>& sources, bool texts) {
  Meaning meaning;
  const bool good = queried.analyse(sources);
  for (const Occurrence& occurrence : queried.view().occurrences().all()) {
    const SymbolInfo& symbol = queried.view().symbols()[occurrence.symbol];
    meaning.names.push_back(symbol.isDeclared() ? occurrence.symbol : kNoSymbol);
  }
  for (const Diagnostic& message : queried.session().messages()) {
    meaning.diagnostics += fmt::format("{:X} {}\n", message.code, texts ? plain(message.text) : "");
  }
  if (good && texts) meaning.c = plain(queried.session().translate());
  return meaning;
}

// Every name of every program, to a fresh one and back.
TEST(Rename, KeepsTheMeaning) {
  Queried queried;
  std::size_t renamedSymbols = 0;
  for (const std::vector<SourceText>& sources : programs()) {
    const Meaning before = meaningOf(queried, sources, true);
    queried.analyse(sources);
    const std::vector<SymbolInfo> symbols = [&] {
      std::vector<SymbolInfo> all;
      for (SymbolId id = 0; id < queried.view().symbols().count(); ++id) {
        all.push_back(queried.view().symbols()[id]);
      }
      return all;
    }();
    for (std::size_t i = symbols.size() % kOneCaseIn; i < symbols.size(); i += kOneCaseIn) {
      const SymbolInfo& symbol = symbols[i];
      if (symbol.standard || symbol.nameRange.length == 0) continue;
      queried.analyse(sources);
      if (!renameableAt(queried.view(), symbol.nameRange.begin).refusal.empty()) continue;
      const std::string fresh = symbol.name + std::string(kMark);
      const Renaming there = renamed(queried.view(), symbol.nameRange.begin, fresh);
      ASSERT_EQ(there.refusal, "") << symbol.name;
      ASSERT_FALSE(there.edits.empty()) << symbol.name;
      const std::vector<SourceText> changed = edited(sources, there);
      const Meaning after = meaningOf(queried, changed, true);
      ASSERT_EQ(after.diagnostics, before.diagnostics) << symbol.name;
      ASSERT_EQ(after.names, before.names) << symbol.name;
      ASSERT_EQ(after.c, before.c) << symbol.name;
      // The declaration has moved by the edits before it.
      queried.analyse(changed);
      const SymbolId id = [&] {
        for (SymbolId other = 0; other < queried.view().symbols().count(); ++other) {
          if (queried.view().symbols()[other].name == fresh) return other;
        }
        return kNoSymbol;
      }();
      ASSERT_NE(id, kNoSymbol) << symbol.name;
      const Renaming back =
          renamed(queried.view(), queried.view().symbols()[id].nameRange.begin, symbol.name);
      if (back.refusal.empty()) {
        ASSERT_EQ(meaningOf(queried, edited(changed, back), true), before) << symbol.name;
        ++renamedSymbols;
      } else {
        // The program may use a name of the language.
        ASSERT_NE(back.refusal.find(" is a"), std::string::npos) << back.refusal;
      }
    }
  }
  EXPECT_GT(renamedSymbols, 200U / kOneCaseIn);
}

// A name that the program has already is refused, or nothing means something else.
TEST(Rename, IsRefusedWhereItWouldCapture) {
  Queried queried;
  std::mt19937_64 random(7);
  std::size_t refused = 0;
  std::size_t accepted = 0;
  for (const std::vector<SourceText>& sources : programs()) {
    const Meaning before = meaningOf(queried, sources, false);
    queried.analyse(sources);
    std::vector<SymbolId> declared;
    for (SymbolId id = 0; id < queried.view().symbols().count(); ++id) {
      if (queried.view().symbols()[id].nameRange.length != 0) declared.push_back(id);
    }
    for (std::size_t round = 0; round < 150; round += kOneCaseIn) {
      queried.analyse(sources);
      const Symbols& symbols = queried.view().symbols();
      const SymbolInfo symbol = symbols[declared[random() % declared.size()]];
      const std::string name = symbols[declared[random() % declared.size()]].name;
      if (symbol.standard) continue;
      const Renaming renaming = renamed(queried.view(), symbol.nameRange.begin, name);
      ++(renaming.refusal.empty() ? accepted : refused);
      if (!renaming.refusal.empty()) continue;
      const Meaning after = meaningOf(queried, edited(sources, renaming), false);
      ASSERT_EQ(after.names, before.names) << symbol.name << " to " << name;
      ASSERT_EQ(after.diagnostics, before.diagnostics) << symbol.name << " to " << name;
    }
  }
  EXPECT_GT(refused, 100U / kOneCaseIn);
  EXPECT_GT(accepted, 100U / kOneCaseIn);
}

TEST(Rename, SaysWhyItIsRefused) {
  struct Row {
    const char* at;  // the first place of this text, behind the mark
    const char* name;
    const char* refusal;
  };
  const Row rows[] = {
      {"k := LIMIT", "while", "while is a keyword"},
      {"k := LIMIT", "2k", "'2k' is not a name"},
      {"k := LIMIT", "", "'' is not a name"},
      {"k := LIMIT", "k k", "'k k' is not a name"},
      {"k := LIMIT", "max", ""},
      {"k := LIMIT", "Ton", ""},
      {"k := LIMIT", "limit", "limit would hide the LIMIT of the program (all.st:16)"},
      {"lamp AT", "len", "LEN is a standard function"},
      {"p : Pump", "sr", "SR is a standard block"},
      {"k := LIMIT", "Dint", "DINT is an elementary type"},
      {"Pump VAR", "ton", "TON is a standard block"},
      {"k := LIMIT", "TOTAL", "Main has a total already"},
      {"x, y", "Y", "Pt has a y already"},
      {"Pump VAR", "color", "the program has a Color already"},
      {"k := LIMIT", "Lamp", "Lamp would hide the lamp of the program (all.st:17)"},
      {"lamp AT", "total", "the program has a total already"},
      {"lamp AT", "Own", "Own would be hidden by the own of Main (all.st:17)"},
      {"Red, Green :=", "B", "B would be hidden by the b of Main (all.st:16)"},
      {"run : BOOL", "EN", "EN is an argument that every call has"},
      {"LIMIT", "k", "LIMIT is declared by the language"},
      {":= LIMIT", "k", "there is no name here that the program declares"},
      {"s : INT", "Pump1", "Pump1 would hide the pump1 of SETUP (all.st:24)"},
      {"Plant VAR", "On", "On is a keyword at some of the places"}};
  Queried queried;
  const std::string text = kAllKinds;
  queried.analyse({{"all.st", text}});
  for (const Row& row : rows) {
    const auto offset = static_cast<std::uint32_t>(text.find(row.at));
    EXPECT_EQ(renamed(queried.view(), vel::TextLocation(0, offset), row.name).refusal, row.refusal)
        << row.at;
  }
  queried.analyse({{"all.st", text + "FUNCTION_BLOCK Tail VAR x : INT END_VAR total := ;"}});
  EXPECT_EQ(
      renamed(queried.view(),
              {vel::TextLocation(0, static_cast<std::uint32_t>(text.find("total : INT; lamp")))},
              "sum2")
          .refusal,
      "all.st has syntax errors");
}

}  // namespace
}  // namespace refhost
