// One C function. Each has a writer of its own, so that nothing is left from another.
#pragma once

#include <string>

#include "refhost/emit/initial_writer.h"
#include "refhost/emit/statement_writer.h"

namespace refhost {

class FunctionWriter {
 public:
  // `unit` is the one that the function belongs to; null for a structure's.
  FunctionWriter(FileContext& file, const UnitSymbol* unit);

  // Each appends one whole function. Only one may be called, and that once.
  void appendFunction(std::string& out);        // of a FUNCTION
  void appendInitialisation(std::string& out);  // of a FUNCTION_BLOCK or PROGRAM
  void appendBody(std::string& out);            // of the same
  void appendGlobalsInitialisation(std::string& out);
  void appendInitialisation(const StructType& structure, std::string& out);

  vel::Generator& generator() { return expressions_; }

 private:
  // Parameters, results and variables of a FUNCTION before its statements.
  void prepare(const UnitSymbol& function);
  // Shows the body the edge of an input in place of its value.
  void detectEdge(const VarSymbol& input);
  // Local variables, all of which start from zero.
  void appendLocals(const UnitSymbol& unit, std::string& out);
  // The head of the function that is the scan or the initialisation of a PROGRAM.
  std::string programHead(const UnitSymbol& program, const std::string& name) const;
  // Everything between the braces. Ends the writing.
  std::string take(bool hasSelf);
  // The companions of the bit parameters that the body names.
  std::string companionsText();

  FileContext& file_;
  FunctionBody body_;
  ExpressionWriter expressions_;
  StatementWriter statements_;
  InitialWriter initials_;
};

}  // namespace refhost
