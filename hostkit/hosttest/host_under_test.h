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

// Where a variable is declared. That of a parameter is the SymbolVar::varKind that it must have.
enum class Section : std::int32_t {
  Local,
  Constant,  // a variable that a program may not write; any initial value will do
  InOut = vel::SymbolVar::kInOut,
  BitParameter = vel::SymbolVar::kBitParameter,  // whose bits GETBITOFPARAM reaches
  Input = vel::SymbolVar::kInput,
};

struct Variable {
  std::string name;
  std::string type;  // the IEC name of an elementary type
  Section section = Section::Local;
};

// A program unit, of which the statement that is parsed is the whole body.
struct Unit {
  std::string name;
  vel::POUType type = vel::POUType::Program;
  std::vector<Variable> variables;
};

// A host that has loaded the plugin. Everything that it returns stays its own and lives as long as
// it does, except where said otherwise.
class HostUnderTest {
 public:
  virtual ~HostUnderTest() = default;

  // As CreateOpManager has been given them. Their operatorManager() is the plugin's registry, with
  // all that the host adds to it once it has it.
  virtual vel::InternalInterface& services() = 0;

  // As `generate` of an operator is given it, for calls of the program parsed last. Lives until
  // the next call of parse or setLocalIo.
  virtual vel::Generator& generator() = 0;

  // Makes the units known and parses `statement` as the body of the first of them; the others have
  // no body. Returns the invocation of the operator whose call is written first in it, ready for
  // that operator's `check`: calls among its parameters have been checked, accepted and typed. The
  // program may be wrong: a count or a type, or a name that nothing declares. Null only where the
  // host has no tree for such a statement. The nodes, and the units' symbols, live until the next
  // call of parse.
  //
  // Statements are `CALL` or `variable := CALL`. Parameters are names of variables and elementary
  // types, literals (`TRUE`, `100`, `INT#5`), bits of variables (`w.3`), device addresses, calls,
  // and for SIZEOF the type specification `STRING[20]`.
  virtual vel::ASTNode* parse(const std::vector<Unit>& units, const std::string& statement) = 0;

  // `invocation`, of the tree parsed last, has been accepted by `check` with the type
  // `resultType`. The host does what it does between check and generate: it records types on the
  // nodes and declares the state of edge detections. A host that has done it in parse does nothing.
  virtual void accepted(vel::ASTNode& /*invocation*/, const std::string& /*resultType*/) {}

  // Makes the project use a notation of device addresses (InternalInterface::addressNotation).
  // False where the host has no such choice; tests of the other notation are skipped then.
  virtual bool setNotation(int /*notation*/) { return false; }

  // Makes `ranges` the local I/O ranges of the project (option "localio.addr"). False where the
  // host has no such setting.
  virtual bool setLocalIo(const std::string& /*ranges*/) { return false; }
};

// Makes a fresh host for each test; null fails the test.
using HostFactory = std::function<std::unique_ptr<HostUnderTest>()>;

// Registers the tests with GoogleTest as those of `suite`, before RUN_ALL_TESTS. Each is named
// after the duty that it tests. The tests of whole calls, which need all duties, come last and are
// skipped when one of the others has failed.
void registerTests(const std::string& suite, HostFactory factory);

}  // namespace hosttest
