// The interface between the tests of a host's duties and the host that is tested.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/ast.h"
#include "host/declaration.h"
#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/symbol.h"

namespace hosttest {

// The section in which a variable is declared. The numbers for parameters are the values of
// SymbolVar::varKind that they must have.
enum class Section : std::int32_t {
  Local,
  Constant,  // a variable that a program may not write; its initial value does not matter
  InOut = vel::SymbolVar::kInOut,
  BitParameter = vel::SymbolVar::kBitParameter,  // whose bits GETBITOFPARAM reaches
  Input = vel::SymbolVar::kInput,
};

struct Variable {
  std::string name;
  std::string type;  // the IEC name of an elementary type
  Section section = Section::Local;
};

// A program unit.
struct Unit {
  std::string name;
  vel::POUType type = vel::POUType::Program;
  std::vector<Variable> variables;
};

// A host that has loaded the plugin. It owns everything that it returns, which lives as long as the
// host unless stated otherwise.
class HostUnderTest {
 public:
  virtual ~HostUnderTest() = default;

  // The services that were passed to CreateOpManager. Their operatorManager() is the plugin's
  // registry, with all operators that the host adds to it.
  virtual vel::InternalInterface& services() = 0;

  // The generator to be passed to `generate`, for calls of the program that was parsed last. Lives
  // until the next call of parse or setLocalIo.
  virtual vel::Generator& generator() = 0;

  // Declares the units and parses `statement` as the body of the first; the others have no body.
  // Returns the invocation of the first operator in the statement, ready for its `check`: nested
  // calls have been checked and accepted, and have their types. The program may have a wrong number
  // or type of parameters, or an undeclared name. Returns null only if the host cannot represent
  // such a statement. The nodes and the symbols of the units live until the next call of parse.
  //
  // Statements are `CALL` or `variable := CALL`. Parameters are names of variables and elementary
  // types, literals (`TRUE`, `100`, `INT#5`), bits of variables (`w.3`), device addresses, calls,
  // and for SIZEOF the type specification `STRING[20]`.
  virtual vel::ASTNode* parse(const std::vector<Unit>& units, const std::string& statement) = 0;

  // Called when `check` has accepted `invocation`, a node of the tree parsed last, with the type
  // `resultType`. The host takes its steps between check and generate here, unless parse has taken
  // them: it records types on the nodes and declares the state of edge operators.
  virtual void accepted(vel::ASTNode& /*invocation*/, const std::string& /*resultType*/) {}

  // Sets the notation of device addresses (InternalInterface::addressNotation). Returns false when
  // the host has no choice; the tests of the other notation are then skipped.
  virtual bool setNotation(int /*notation*/) { return false; }

  // Sets the local I/O ranges of the project (option "localio.addr"). Returns false when the host
  // has no such setting.
  virtual bool setLocalIo(const std::string& /*ranges*/) { return false; }
};

// Creates a new host for each test. A test fails if it returns null.
using HostFactory = std::function<std::unique_ptr<HostUnderTest>()>;

// Registers the tests with GoogleTest under the name `suite`. To be called before RUN_ALL_TESTS.
// Each test is named after the duty that it checks. The tests of whole calls, which depend on all
// duties, come last and are skipped when another test has failed.
void registerTests(const std::string& suite, HostFactory factory);

}  // namespace hosttest
