// The symbols of a program as an editor sees them: plain data, found in the tree, so that those of
// declarations with errors are there, too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// The index of a symbol, valid for one analysis.
using SymbolId = std::uint32_t;
constexpr SymbolId kNoSymbol = ~SymbolId{0};

enum class SymbolKind : std::uint8_t {
  Program,
  Function,  // and its result, which is one symbol with it
  FunctionBlock,
  Setup,
  Test,
  Teardown,
  Structure,
  Enumeration,
  Type,  // any other TYPE declaration
  Member,
  Value,  // of an enumeration
  Variable,
  Input,
  Output,
  InOut,
  Temporary,
  Global,
  Configuration,
  Resource,
  Task,
  Instance,  // of a PROGRAM in a configuration
  // Without a declaration.
  Operator,
  StandardFunction,
  ElementaryType,
};

bool isUnit(SymbolKind kind);      // what has variables and statements
bool isType(SymbolKind kind);      // TYPE declarations and elementary types
bool isVariable(SymbolKind kind);  // of a unit, or global; not a member
bool isParameter(SymbolKind kind);

struct SymbolInfo {
  // False for operators, standard functions and elementary types.
  bool isDeclared() const { return node != nullptr; }

  SymbolKind kind = SymbolKind::Variable;
  std::string name;                // as declared; that of a test is its title with the quotes
  SourceRange nameRange;           // the name in the declaration
  SourceRange extent;              // the whole declaration: from PROGRAM to END_PROGRAM
  SymbolId container = kNoSymbol;  // the unit, type, variable or resource that declares it
  bool constant = false;
  bool standard = false;  // the language or the prelude declares it; there is no file to open
  // Unit, TypeDecl, VarDecl, EnumValue, ConfigurationItem, or the name itself; null for none.
  const ASTNode* node = nullptr;
  // Of a variable, a member or a value, null if the analysis has refused it.
  const vel::Symbol* symbol = nullptr;
};

class Symbols {
 public:
  explicit Symbols(const AnalysedProgram& program);

  const SymbolInfo& operator[](SymbolId id) const { return symbols_[id]; }
  std::size_t count() const { return symbols_.size(); }

  // The following return kNoSymbol for none. Names are looked up regardless of letter case.

  // The symbol whose declaration has the node as its name. The name of a VAR_EXTERNAL belongs to
  // the global variable.
  SymbolId declaredAt(const ASTNode& name) const;
  // Of a variable, a member or a value of the analysis.
  SymbolId of(const vel::Symbol* symbol) const;
  SymbolId ofType(std::string_view name) const;  // a type or unit of the program or the prelude
  SymbolId ofUnit(const Unit& unit) const;
  // The variable that the name refers to in a unit, kNoSymbol for places outside of units: its own,
  // that of its SETUP, or a global one.
  SymbolId variable(std::string_view name, SymbolId unit) const;
  // The same among the unit's own ones.
  SymbolId variableOf(SymbolId unit, std::string_view name) const;
  SymbolId global(std::string_view name) const { return variableOf(kNoSymbol, name); }
  // The value of an enumeration without its type, if only one has it.
  SymbolId value(std::string_view name, SymbolId unit) const;
  // A member or a value of a type, or of a variable whose type has no name.
  SymbolId partOf(SymbolId owner, std::string_view name) const;
  // The SETUP whose variables a TEST or TEARDOWN sees.
  SymbolId setupOf(SymbolId unit) const;
  // A name that is the language's own: of an operator, a function or an elementary type.
  SymbolId standard(std::string_view name) const;
  // All of the own declarations whose container this is, in order of declaration.
  std::vector<SymbolId> partsOf(SymbolId container) const;

  // Null if it is not known.
  const vel::SymbolDataType* dataType(SymbolId id) const;

 private:
  struct Scope {
    FoldedMap<SymbolId> variables;  // keys are texts of the tree
    FoldedMap<SymbolId> values;     // of anonymous enumerations; kNoSymbol for an ambiguous one
    SymbolId setup = kNoSymbol;
  };

  SymbolId add(SymbolKind kind, const ASTNode& name, const ASTNode& node, SymbolId container);
  void addUnit(const Unit& unit, SymbolKind kind, bool standard);
  void addBlock(const VarBlock& block, SymbolId unit);
  void addVariable(const VarBlock& block, const VarDecl& declaration, const Text& name,
                   SymbolId unit);
  void addParts(const ASTNode& spec, SymbolId owner, SymbolId unit);
  void addType(const ASTNode& declaration);
  void addConfigurations(const Tree& tree);
  void addStandard(const AnalysedProgram& program);
  void linkSetups();
  void linkAnalysis(const Services& services);
  void link(const ASTNode* name, const vel::Symbol& symbol);

  std::vector<SymbolInfo> symbols_;
  std::unordered_map<const ASTNode*, SymbolId> byName_;
  std::unordered_map<const Unit*, SymbolId> byUnit_;
  std::unordered_map<SymbolId, Scope> scopes_;               // kNoSymbol for the global one
  std::unordered_map<SymbolId, FoldedMap<SymbolId>> parts_;  // members and values by their owner
  FoldedMap<SymbolId> types_;
  FoldedMap<SymbolId> standard_;
  std::unordered_map<SymbolId, std::vector<SymbolId>> order_;
};

}  // namespace refhost
