// What can stand at the cursor, found from the tokens in front of it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "refhost/editor/open_code.h"

namespace refhost {

struct CursorContext {
  enum class Place : std::uint8_t {
    Nothing,      // a new name, or the inside of a comment, a text, a number or an address
    Pragma,       // its words
    TopLevel,     // the beginning of a unit
    Type,         // the name of a type or what begins one
    Declaration,  // the beginning of a declaration
    BehindName,   // behind the name of what is declared
    BehindType,   // behind a complete type
    TypeWord,     // OF or TO, within a type
    Item,         // an entry of a configuration
    Task,         // the name of a task
    Program,      // the name of a PROGRAM
    ItemWord,     // ON or WITH, behind the name in an entry of a configuration
    Statement,
    Label,     // of a CASE, or a statement
    OwnLabel,  // of a CASE, behind a ','
    Operand,
    Operator,    // behind an operand
    Either,      // the same, or an operand, in front of which something is missing
    Member,      // behind '.'
    LateMember,  // the same in the line below, where a statement may begin
    Value,       // behind the '#' of an enumeration
  };

  // The first token of an access that ends with the token `last`, in the same statement; `last` + 1
  // for none.
  std::size_t accessBegin(std::size_t last) const;
  // The innermost '(' behind the name of what is called; null for none.
  const CodeBracket* call() const;
  // True if the place begins an argument of the innermost bracket.
  bool beginsArgument() const {
    return !code.brackets.empty() && code.brackets.back().argument == code.tokens.size();
  }
  bool isBefore(std::string_view mark) const { return behind.substr(0, mark.size()) == mark; }
  // The block of variables around the place; 0 for none.
  int section() const {
    const bool within = code.isIn(Construct::Kind::Variables);
    return within ? code.tokens[code.blocks.back().token].token : 0;
  }

  OpenCode code;  // in front of the word
  Place place = Place::Nothing;
  Span word;                  // around the cursor; empty for none
  std::string_view prefix;    // its part in front of the cursor
  std::string_view typeName;  // of a Value: what stands in front of the '#'
  bool onNewLine = false;     // nothing stands in front of the word in its line
  bool constant = false;      // only a constant can stand there
  bool initial = false;       // an operand in an initial value
  // The names in the labels of the CASE around the place, if it may be a label.
  std::vector<std::string_view> labels;
  bool assigned = false;    // a ':=' or '=>' follows the word, be it in another line
  bool outputs = false;     // a '=>'
  std::string_view behind;  // up to two characters behind the word and blanks
};

// `tokens` are those of the text.
CursorContext cursorContext(std::string_view text, const std::vector<SourceToken>& tokens,
                            std::uint32_t offset);

}  // namespace refhost
