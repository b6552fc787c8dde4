// The programs in which a name may be used: files that are no program together may still have a
// declaration in common.
#pragma once

#include <functional>

#include "lsp/workspace.h"
#include "refhost/editor/program_view.h"

namespace lsp {

// What a name at a place refers to, in words that hold beyond the analysis.
struct Declared {
  std::string path;  // of the file that declares it
  std::uint32_t offset = 0;
  std::string name;
  refhost::SymbolKind kind = refhost::SymbolKind::Variable;

  // True if other programs can name it.
  bool isShared() const;
};

// Nothing if there is no name, or if no file declares it.
std::optional<Declared> declaredAt(const Analysed& analysed, vel::TextLocation place);

// Passes the programs of all files that may name it, but for that of `document`, and the place of
// the declaration in them. The place is nothing if the program does not have it, in which case the
// file that may name it is that of the `Analysed`. Analyses these programs, so that what
// `document` was analysed to does not hold any more.
using UseProgram =
    std::function<void(const Analysed& analysed, std::optional<vel::TextLocation> declaration)>;
void forEachOtherProgram(Workspace& workspace, const std::string& document,
                         const Declared& declared, const UseProgram& use);

}  // namespace lsp
