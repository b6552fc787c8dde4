// The names that are visible at the cursor, and the types of what begins with them. They come from
// the last analysis; what it has lost because of errors is found in the tokens.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/cursor_context.h"
#include "refhost/editor/lexical_units.h"
#include "refhost/editor/program_view.h"

namespace refhost {

// A variable, a member or a value. At least one of `id` and `lexical` is known.
struct NamedPart {
  std::string_view name;
  SymbolId id = kNoSymbol;
  const LexicalVariable* lexical = nullptr;
};

// The type of a place, as far as it is known.
struct PlaceType {
  bool known() const { return type != nullptr || block != nullptr; }

  const vel::SymbolDataType* type = nullptr;
  // Of a declaration that the analysis does not have: '[' for an array and '^' for a pointer around
  // the type, from the outermost to the innermost.
  std::string around;
  // A function block that the analysis does not have; null for another type.
  const LexicalUnit* block = nullptr;
};

class NamesAt {
 public:
  // `tokens` are those of the file's text. All must outlive the object.
  NamesAt(const ProgramView& view, std::uint32_t file, const std::vector<SourceToken>& tokens,
          const CursorContext& context);

  const ProgramView& view() const { return view_; }
  std::uint32_t file() const { return file_; }
  const std::vector<SourceToken>& tokens() const { return tokens_; }
  const CursorContext& context() const { return context_; }
  const Symbols& symbols() const { return view_.symbols(); }
  // The unit around the cursor; kNoSymbol outside of units, and for one that the analysis lacks.
  SymbolId unit() const { return unit_; }
  // Its own variables and the result of a function, those of the SETUP, and global ones. No name is
  // there twice.
  const std::vector<NamedPart>& variables() const { return variables_; }
  const NamedPart* variable(std::string_view name) const;
  // Values that may be named without their type.
  std::vector<SymbolId> values() const;
  // A unit of the file or the prelude by its tokens; null for none.
  const LexicalUnit* lexicalUnit(std::string_view name) const;

  PlaceType typeOf(const NamedPart& part) const;
  PlaceType typeNamed(std::string_view type) const;  // a type as written
  // The type of the access from token `first` to token `last` of the context.
  PlaceType typeOfAccess(std::size_t first, std::size_t last) const;
  // The same of these tokens of the file.
  PlaceType typeOfTokens(const std::vector<SourceToken>& access) const;
  // Members that may be named at the cursor.
  std::vector<NamedPart> membersOf(const PlaceType& place) const;
  // The symbol whose parts are the values of an enumeration; kNoSymbol for another type.
  SymbolId enumerationOf(const PlaceType& place) const;
  PlaceType memberNamed(const PlaceType& place, std::string_view name) const;
  static PlaceType elementOf(PlaceType place);
  static PlaceType targetOf(PlaceType place);

 private:
  void findUnit();
  void collect();
  void add(std::string_view name, SymbolId id, const LexicalVariable* lexical);

  const ProgramView& view_;
  std::uint32_t file_;
  const std::vector<SourceToken>& tokens_;
  const CursorContext& context_;
  SymbolId unit_ = kNoSymbol;
  std::vector<LexicalUnit> lexical_;
  std::vector<LexicalUnit> prelude_;
  const LexicalUnit* own_ = nullptr;
  std::vector<NamedPart> variables_;
  FoldedMap<std::size_t> byName_;
};

}  // namespace refhost
