// One translation: loads the plugin, reads source files, checks them and writes C.
// The command line and the tests use the reference host through this class.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/basic_data_type.h"
#include "host/message.h"
#include "refhost/services/call_graph.h"
#include "refhost/syntax/source.h"
#include "refhost/value_shape.h"

namespace vel {
class OpManagerAPI;
}

namespace refhost {

enum class Notation : int { Iec = 0, Letters = 1 };

// Bytes of the areas of device memory, multiples of 8.
struct MemorySizes {
  std::uint32_t markers = 16384;
  std::uint32_t inputs = 1024;
  std::uint32_t outputs = 1024;
};

struct Options {
  std::string pluginPath;               // of libvelops.so
  std::vector<std::string> addOnPaths;  // of libraries that add operators to it
  std::string localIo;                  // the option "localio.addr", empty when unset
  Notation notation = Notation::Iec;
  MemorySizes memory;
};

// A variable of a PROGRAM, or a global one, as the one who runs it sees it.
struct ProgramVariable {
  std::string program;   // empty for a global variable
  std::string name;      // as declared
  std::string typeName;  // "INT", "BYTE", "STRING", or a function block's name
  vel::BasicDataType type = vel::BasicDataType::None;
  int byteSize = 0;                        // of its value in the generated program
  std::string reference;                   // C expression of its value
  std::optional<std::uint32_t> memoryBit;  // of a bit of device memory: its number
  bool settable = false;  // is not a constant, and a part of it can be set if not all
  std::shared_ptr<const ValueShape> shape;  // null when it has no value to show
};

class Session {
 public:
  explicit Session(Options options);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Loads the plugin and the add-ons with the system's loader and builds the registry. On failure
  // returns false and sets `error`; nothing else may be called then.
  bool start(std::string& error);
  // Forgets sources, messages and translation, as if just started: for the next
  // translation with the same plugin.
  void restart();
  vel::OpManagerAPI& operators();
  // The names of an operator's inputs in the order of its parameters.
  std::vector<std::string> operatorInputs(const std::string& name) const;
  // What an add-on tells of its operator, in Markdown that ends in a line end; empty when it
  // tells nothing.
  std::string operatorPage(const std::string& name) const;

  // Sources are loaded here before analyse().
  SourceManager& sources();
  // Parses and checks every source loaded. Returns false when there are errors.
  bool analyse();
  // In the order in which they were found.
  const std::vector<vel::VELMessage>& messages() const;

  // The C text. Call only after analyse() has returned true; the text is empty and
  // messages() has grown by an error when an operator generates nothing.
  std::string translate();

  // Who calls what, once translate() has run: calls of the program's units and what
  // the operators record.
  const std::vector<CallEdge>& calls() const;

  // Names of the PROGRAM units in source order. The C text offers each as
  // `void NAME_init(void)` and `void NAME_scan(void)`; see programInit/programScan.
  std::vector<std::string> programs() const;
  std::string programInit(const std::string& program) const;  // C name
  std::string programScan(const std::string& program) const;  // C name
  // Every variable of every PROGRAM in order of declaration. Like the C names above,
  // their references are known once translate() has run.
  std::vector<ProgramVariable> programVariables() const;
  // The same of the global variables.
  std::vector<ProgramVariable> globalVariables() const;
  // A place in device memory as a variable, larger units as bit strings. False when
  // `address` is no address in either notation.
  bool addressVariable(const std::string& address, ProgramVariable& variable) const;
  // The C statement that gives `variable` the value of the literal `text`. False,
  // with `error` set, when the text is no literal that fits the variable.
  bool assignmentText(const ProgramVariable& variable, const std::string& text,
                      std::string& statement, std::string& error) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace refhost
