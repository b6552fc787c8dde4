// Writes one C function. Each function has its own writer, so that no state remains from another.
#pragma once

#include <string>

#include "refhost/emit/initial_writer.h"
#include "refhost/emit/statement_writer.h"

namespace refhost {

class FunctionWriter {
 public:
  // `unit` is the one that the function belongs to; null for the initialisation of a structure and
  // the functions of a configuration.
  FunctionWriter(FileContext& file, const UnitSymbol* unit);

  // Each appends a complete function. Only one of them may be called, and only once.
  void appendFunction(std::string& out);        // of a FUNCTION
  void appendInitialisation(std::string& out);  // of a FUNCTION_BLOCK or PROGRAM
  void appendBody(std::string& out);            // of a FUNCTION_BLOCK or PROGRAM
  void appendGlobalsInitialisation(std::string& out);
  void appendInitialisation(const StructType& structure, std::string& out);
  void appendInit(const ProgramInstance& instance, std::string& out);
  void appendScan(const ProgramInstance& instance, std::string& out);
  // The function `name`, which returns the value of SINGLE.
  void appendCondition(const Task& task, const std::string& name, std::string& out);

  vel::Generator& generator() { return expressions_; }

 private:
  // Writes what precedes the statements of a FUNCTION: copies of strings and initial values.
  void prepare(const UnitSymbol& function);
  // Replaces the value of the input by its edge while the body runs.
  void detectEdge(const VarSymbol& input);
  // Declares the local variables as zero.
  void appendLocals(const UnitSymbol& unit, std::string& out);
  // The head of the C function for the scan or the initialisation of a PROGRAM.
  std::string programHead(const UnitSymbol& program, const std::string& name) const;
  // The function behind its head, with its closing brace.
  std::string take(bool hasSelf, const std::string& end = "}\n");
  // Lets the statements stand for their lines of the source, unless they are the prelude's.
  void follow();
  // Declares or completes the companions of the bit parameters that the body uses.
  std::string companionsText();

  FileContext& file_;
  FunctionBody body_;
  ExpressionWriter expressions_;
  StatementWriter statements_;
  InitialWriter initials_;
};

}  // namespace refhost
