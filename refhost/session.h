// The public class of the reference host, used by velc and the tests.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/basic_data_type.h"
#include "refhost/diagnostic.h"
#include "refhost/services/call_graph.h"
#include "refhost/syntax/source.h"
#include "refhost/test_program.h"
#include "refhost/translated_file.h"
#include "refhost/value_shape.h"
#include "refhost/warnings.h"

namespace vel {
class OpManagerAPI;
}

namespace refhost {

class ProgramView;

enum class Notation : int { Iec = 0, Letters = 1 };

// Sizes of the areas of device memory in bytes, multiples of 8.
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
  WarningChoice warnings;
};

// How the C is written.
struct TranslationOptions {
  // With `#line`, so that debuggers, coverage and C compilers name the lines of the source.
  bool lines = false;
  // What `#line` calls the C file itself; when empty, the file that is compiled (`__BASE_FILE__`),
  // which is wrong in a file that others include.
  std::string fileName;
  // The path by which the C includes a header of its declarations, for other C and C++; empty for
  // none.
  std::string header;
};

// A variable of a program or a global one, for a front end that runs the program.
struct ProgramVariable {
  // `program.name`, or the name alone of a global variable.
  std::string qualifiedName() const { return program.empty() ? name : program + '.' + name; }

  std::string program;   // PROGRAM, instance or RESOURCE.INSTANCE; empty for a global variable
  std::string name;      // as declared
  std::string typeName;  // "INT", "BYTE", "STRING", or a function block's name
  vel::BasicDataType type = vel::BasicDataType::None;
  int byteSize = 0;       // of its value in the generated program
  std::string reference;  // C expression of its value
  std::string memoryBit;  // C expression of a bit's number in device memory
  // The number of its first bit in device memory, if it lies there at a place that is known.
  std::optional<std::uint64_t> firstBit;
  bool settable = false;                    // it is not constant and has parts that can be set
  std::shared_ptr<const ValueShape> shape;  // null when it has no value
};

// One translation: loads the plugin, reads source files, checks them and writes C.
class Session {
 public:
  struct Program {
    std::string name;  // as in ProgramVariable
    std::string init;  // `void init(void)`, to be called once
    std::string scan;  // `void scan(void)`, to be called for each scan unless there are tasks
  };

  enum class Instances : bool { Hidden, Shown };

  explicit Session(Options options);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Loads the plugin and the add-ons and builds the operator registry. On failure returns false and
  // sets `error`; nothing else may be called then.
  bool start(std::string& error);
  // Discards sources, messages and the translation, for another translation with the same plugin.
  void restart();
  vel::OpManagerAPI& operators();
  // The names of an operator's inputs in order.
  std::vector<std::string> operatorInputs(const std::string& name) const;
  // The documentation of an add-on's operator in Markdown, with a line end; empty for none.
  std::string operatorPage(const std::string& name) const;

  // Sources must be loaded here before analyse() is called.
  SourceManager& sources();
  const SourceManager& sources() const;
  // The unit that contains this line of a source, such as "PROGRAM Pump"; empty for none.
  std::string unitAt(std::uint32_t file, std::uint32_t line) const;
  // Parses and checks all sources. Returns false when there are errors,
  // to which warnings belong if the options say so.
  // With `tests` the unit tests are checked and translated, too. PROGRAMs take the form in which
  // tests call them then: the C has their instances in tests and in configurations only.
  bool analyse(bool tests = false);
  // Those of analyse() by file, line and column, then those of translate(). None is there twice.
  const std::vector<Diagnostic>& messages() const;
  // What mends the fault that one of these messages is about, the likeliest first: the fixes that
  // the message has, and those that follow from its place in the program. To be asked before
  // translate().
  std::vector<Fix> fixes(const Diagnostic& message) const;
  // What editors ask about the program, once analyse() has run, with errors or without. Valid until
  // restart(). To be asked before translate(). See refhost/editor/program_view.h.
  const ProgramView& view() const;
  // The names that analyse() has found to be used, but declared in none of the sources, and that
  // another file could declare.
  const std::vector<std::string>& missingNames() const;

  // The C text. Call only after analyse() has returned true. When an operator generates nothing, an
  // error is appended to messages() and the text is empty.
  std::string translate(const TranslationOptions& options = {});
  // The header, once translate() has been told its path.
  const std::string& header() const;
  // The same program as several files, which include each other: for each unit a C file and a
  // header, for each structure a header; vel_all.h includes them all. None when translate() would
  // return an empty text. With `lines` they have `#line`.
  std::vector<TranslatedFile> translateSplit(bool lines = false);

  // The unit tests, once translate() has run. What they call the C file itself has no meaning.
  TestProgram tests() const;

  // The call graph, once translate() has run: calls of the program's units and those that the
  // operators record.
  const std::vector<CallEdge>& calls() const;

  // The programs to run: the instances of a configuration or, if there are none, the PROGRAMs, in
  // source order. The C names are set by translate().
  std::vector<Program> programs() const;
  // The C name of the `vel_task` table by which the instances run; empty when there are none.
  std::string taskTable() const;
  // The variables of all programs in order of declaration. These, like the C names above, are
  // complete once translate() has run. Function block instances have no shape unless they are asked
  // for; then it is that of a structure.
  std::vector<ProgramVariable> programVariables(Instances instances = Instances::Hidden) const;
  // The same for the global variables.
  std::vector<ProgramVariable> globalVariables(Instances instances = Instances::Hidden) const;
  // The variables of programs and the global ones that keep something without power. Their shapes
  // describe what, function block instances included.
  std::vector<ProgramVariable> retainedVariables() const;
  // A device address as a variable; one of several bits is a bit string. False when `address` is
  // not an address in either notation.
  bool addressVariable(const std::string& address, ProgramVariable& variable) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace refhost
