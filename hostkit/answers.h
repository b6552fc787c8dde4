// The questions that only a compiler can answer. A host derives from this class, overrides
// what it knows better than the answers given here, and hands it to hostkit::Services,
// which answers the whole contract of host/ with it.
#pragma once

#include <string>
#include <vector>

#include "host/ast_node_helper.h"
#include "host/call_tree.h"
#include "host/device_memory.h"
#include "host/symbol.h"

namespace hostkit {

// "Check" and "generate" are the plugin's two operations on an invocation, in which it asks.
// `unit` is the name of the program unit in which a name is looked up. Nodes are never null.
// Symbols stay the host's; one that was returned lives until the registry is deleted. Texts
// returned by value are the plugin's.
class Answers {
 public:
  virtual ~Answers() = default;

  // Analysis.

  // The type of an expression: of a parameter, of the target of an assignment (both asked by
  // check), or of an invocation itself (asked by the generate of ABS). An expression without
  // a type has BasicDataType::None and any name. May append messages of the host's own,
  // which make some checks fail.
  virtual DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                              std::vector<vel::VELMessage>& messages) = 0;

  // The symbol of that name in any letter case, null when there is none. `kind` says what is
  // looked for:
  //   DataType  with an empty `unit`: the elementary types must be found, as SymbolDataType
  //   Variable  of `unit` or of all units: a SymbolVar; among them, under the digest of
  //             AstNodeHelper::opExpTextToMd5HexText, the state of each call of MEP and MEF
  //   Pou       with an empty `unit`: program units, operators included, as SymbolPOU
  //   All       any of these; `unit` is empty where only a data type can be meant
  virtual vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) = 0;

  // Takes the program unit of an operator, which the registry offers while it is built and
  // when an add-on registers an operator. False leaves it to the registry, which then does
  // without the operator.
  virtual bool addUnit(vel::SymbolPOU* unit) = 0;

  // May a value of `source` stand where `target` is wanted? 0 or more yes, -1 with a
  // conversion to warn of, -2 no, below that a constant beyond the range of `target`.
  // `sourceText` is null where it does not matter, and a text of the source or the name of
  // its type where it does. Asked by check. Here: the conversions of the standard that lose
  // nothing, and the literals that fit.
  virtual int rate(vel::BasicDataType target, vel::BasicDataType source, const char* sourceText,
                   const std::string& unit);

  // What `text`, a parameter of `invocation`, names may be written. False comes with a
  // message at `invocation`. Asked by the check of IRDBIT. Here: everything may.
  virtual bool isWritable(vel::ASTNode& invocation, const std::string& text,
                          const std::string& unit, std::vector<vel::VELMessage>& messages);

  // The data type that a type specification (`ARRAY[1..3] OF INT`) stands for, null for none.
  // Asked by the generate of SIZEOF. Here: the data type that bears its text as name.
  virtual vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit);

  // Device memory.

  // Parses a device address of either notation. False for any other text, which leaves `out`
  // as it was. Asked by check and generate. Here: no text is an address.
  virtual bool parseAddress(const std::string& text, vel::HeapAddress& out);
  // The place of an address in the memory image of the generated program: the number of a
  // bit, or the number of the first byte. Of the empty address too, whatever that gives.
  virtual vel::HeapRawAddr place(const vel::HeapAddress& address);
  // The type of the unit at an address; BitAddress for a bit. Here: by its size.
  virtual vel::BasicDataType addressType(const vel::HeapAddress& address);
  // A device name in its parts, empty ones for every other text. Here: letters, digits, and
  // what follows them.
  virtual vel::JapanComponent components(const std::string& text);

  // C texts, asked by generate through hostkit::TextGenerator.

  // An expression as C; the plugin puts it in parentheses where it must. Here: its source.
  virtual std::string expressionText(vel::ASTNode& expression);
  // A variable of `unit` as something whose address C can take. Here: its name, behind an
  // underscore where that begins with a digit, as the digests of edge states may.
  virtual std::string variableText(vel::SymbolVar& variable, const std::string& unit);
  // A data type in C. Here: AstNodeHelper::basicDataToCTypeText of an elementary type, which is
  // the runtime's name of it, `u8` to `f64`, and the name of every other.
  virtual std::string typeText(vel::SymbolDataType& type);

  // The English `format` as messages show it, placeholders kept. What it refers to lives
  // until the next message is made. Here: `format` itself.
  virtual const std::string& translate(const std::string& format);

  // Records in the call graph that `caller` calls `callee`, an operator or a function of the
  // runtime. `caller` is empty where the plugin names the function only: it is called by the
  // unit that code is being generated for. Told by generate. Here: not recorded.
  virtual void addCall(const std::string& caller, const std::string& callee,
                       vel::TextLocation where);
};

}  // namespace hostkit
