// What an editor asks about an analysed program, as plain data. All queries work for programs with
// errors: they answer from what the analysis has resolved.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/analysed_program.h"
#include "refhost/editor/occurrences.h"
#include "refhost/editor/symbols.h"

namespace refhost {

// Reached by Session::view(), and valid until the session restarts. Files are indexes into
// Session::sources(). Each range lies within its file, and unless said otherwise in one that the
// user can open.
class ProgramView {
 public:
  explicit ProgramView(AnalysedProgram program);
  ~ProgramView();
  ProgramView(const ProgramView&) = delete;
  ProgramView& operator=(const ProgramView&) = delete;

  const AnalysedProgram& program() const { return program_; }
  const Symbols& symbols() const { return symbols_; }
  const Occurrences& occurrences() const { return occurrences_; }

  // The symbol whose name contains the place or ends there; kNoSymbol for none.
  SymbolId symbolAt(vel::TextLocation place) const;
  // The unit around the place; kNoSymbol for none.
  SymbolId unitAt(vel::TextLocation place) const;

 private:
  AnalysedProgram program_;
  Symbols symbols_;
  Occurrences occurrences_;
};

}  // namespace refhost
