// What can be written at a place, also in code that is not finished.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "refhost/editor/file_declarations.h"
#include "refhost/editor/program_view.h"

namespace refhost {

struct Proposal {
  enum class Kind : std::uint8_t {
    Variable,
    Constant,
    Member,
    Argument,  // a named one
    Value,     // of an enumeration
    Function,
    Operator,
    Block,
    Program,
    Type,
    Structure,
    Enumeration,
    Task,
    Instance,
    Keyword,
    Snippet,  // a whole statement or block
  };

  Kind kind = Kind::Keyword;
  std::string label;
  std::string detail;  // the type or the parameters; empty for none
  std::string text;    // to be inserted; empty for the label
  // The text has places to be filled in, `${1:name}` and so on, and $0, where the cursor ends up;
  // in it `\`, `$` and `}` stand behind a `\`.
  bool snippet = false;
  int rank = 0;             // those with a lower one go first
  SymbolId id = kNoSymbol;  // of what it names
  std::string topic;        // of `velc explain`, where there may be a page; empty for none
  const FileDeclaration* other = nullptr;  // that it names, if it is one of other files
};

struct Completion {
  // The word around the place, or behind it where an operand or a type stands; empty for none.
  SourceRange replaced;
  std::vector<Proposal> proposals;  // no two of them have the same label and text
  bool incomplete = false;          // further letters bring others
  bool positional = false;          // behind arguments of a call that have no names
  bool parameters = false;          // among the named arguments there are others than EN and ENO
};

// With `snippets` some proposals are snippets. Names that do not contain the letters of the word in
// front of the place in order are left out. `others`, which must outlive the result, are what other
// files declare that a program gets when it names them; none is null.
Completion completionAt(const ProgramView& view, vel::TextLocation place, bool snippets,
                        const std::vector<const FileDeclaration*>& others = {});

}  // namespace refhost
