// The questions that only a compiler can answer. A host derives from this class, overrides the
// operations for which it knows better answers than the defaults, and passes it to
// hostkit::Services, which implements the whole contract of host/ with it.
#pragma once

#include <string>
#include <vector>

#include "host/ast_node_helper.h"
#include "host/call_tree.h"
#include "host/device_memory.h"
#include "host/symbol.h"

namespace hostkit {

// Comments say whether the plugin asks from `check` or from `generate`. `unit` is the name of
// the program unit in which a name is looked up. Nodes are never null. The host owns all
// symbols; one that it has returned must live until the registry is deleted.
class Answers {
 public:
  virtual ~Answers() = default;

  // Analysis.

  // The type of an expression: of a parameter or of the target of an assignment (asked by
  // check), or of an invocation (asked by generate of ABS). An expression without a type has
  // BasicDataType::None and any name. The host may append messages of its own, which make some
  // checks fail.
  virtual DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                              std::vector<vel::VELMessage>& messages) = 0;

  // Looks a symbol up by name, regardless of letter case; null when there is none. `kind`
  // restricts the lookup:
  //   DataType  with an empty `unit`: the elementary types must be found, as SymbolDataType
  //   Variable  of `unit` or of all units: a SymbolVar; among them, under the digest of
  //             AstNodeHelper::opExpTextToMd5HexText, the state of each call of MEP and MEF
  //   Pou       with an empty `unit`: program units, operators included, as SymbolPOU
  //   All       any of these; with an empty `unit` the plugin looks for a data type
  virtual vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) = 0;

  // Takes ownership of the program unit of an operator, which the registry passes while it is
  // built and when an add-on registers an operator. When the host returns false, the registry
  // keeps the unit and does not register the operator.
  virtual bool addUnit(vel::SymbolPOU* unit) = 0;

  // Rates the assignment of a value of type `source` to a variable of type `target`: 0 or more
  // allowed, -1 allowed with a conversion to warn of, -2 not allowed, below -2 a constant out
  // of the range of `target`. `sourceText` is the source text of the value, the name of its
  // type, or null where it does not matter. Asked by check. Default: allows the standard's
  // conversions without loss, and literals that fit.
  virtual int rate(vel::BasicDataType target, vel::BasicDataType source, const char* sourceText,
                   const std::string& unit);

  // True when the program may write to the variable or address `text`, a parameter of
  // `invocation`; otherwise appends a message. Asked by check of IRDBIT. Default: true.
  virtual bool isWritable(vel::ASTNode& invocation, const std::string& text,
                          const std::string& unit, std::vector<vel::VELMessage>& messages);

  // The data type that a type specification (`ARRAY[1..3] OF INT`) denotes, null for none.
  // Asked by generate of SIZEOF. Default: looks up a data type with its source text as name.
  virtual vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit);

  // Device memory.

  // Parses a device address of either notation. Returns false for any other text and leaves
  // `out` unchanged. Asked by check and generate. Default: false.
  virtual bool parseAddress(const std::string& text, vel::HeapAddress& out);
  // The offset of an address in the memory image of the generated program: a bit number for a
  // bit, else the number of the first byte. For the empty address any value will do.
  virtual vel::HeapRawAddr place(const vel::HeapAddress& address);
  // The type of the unit at an address; BitAddress for a bit. Default: derived from the size.
  virtual vel::BasicDataType addressType(const vel::HeapAddress& address);
  // Splits a device name; all parts are empty for any other text. Default: splits into letters,
  // digits and the rest.
  virtual vel::JapanComponent components(const std::string& text);

  // C texts, asked by generate through hostkit::TextGenerator.

  // An expression in C; the plugin adds parentheses where needed. Default: its source text.
  virtual std::string expressionText(vel::ASTNode& expression);
  // A variable of `unit` as an lvalue of C. Default: its name, with an underscore before a name
  // that begins with a digit, as the digests that name edge states may.
  virtual std::string variableText(vel::SymbolVar& variable, const std::string& unit);
  // A data type in C. Default: AstNodeHelper::basicDataToCTypeText for an elementary type, which
  // is a type name of the runtime (`u8` to `f64`), otherwise the name of the type.
  virtual std::string typeText(vel::SymbolDataType& type);

  // The translation of the English `format`, with the same placeholders. The string has to live
  // until the next message is formatted. Default: `format` itself.
  virtual const std::string& translate(const std::string& format);

  // Records in the call graph that `caller` calls `callee`, an operator or a function of the
  // runtime. An empty `caller` means the unit for which code is being generated. Called by
  // generate. Default: does nothing.
  virtual void addCall(const std::string& caller, const std::string& callee,
                       vel::TextLocation where);
};

}  // namespace hostkit
