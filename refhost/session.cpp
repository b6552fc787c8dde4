#include "refhost/session.h"

#include <optional>

#include "core/operator.h"
#include "host/text.h"
#include "hostkit/operator_inputs.h"
#include "hostkit/plugin_library.h"
#include "refhost/editor/fixes.h"
#include "refhost/editor/program_view.h"
#include "refhost/emit/file_parts.h"
#include "refhost/emit/file_writer.h"
#include "refhost/emit/line_directives.h"
#include "refhost/emit/split_writer.h"
#include "refhost/operator_calls.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/analyser.h"
#include "refhost/services/test_functions.h"
#include "refhost/syntax/parser.h"

namespace refhost {

struct Session::Impl {
  explicit Impl(Options given)
      : options(std::move(given)),
        services(static_cast<int>(options.notation),
                 {options.memory.markers, options.memory.inputs, options.memory.outputs}) {
    services.settings.localIoAddress = options.localIo;
  }

  Options options;
  SourceManager sources;
  std::vector<bool> broken;  // by file
  std::optional<Tree> tree{std::in_place};
  // Declared before the plugin, since the operator registry refers to the services.
  Services services;
  PluginLibrary plugin;
  Diagnostics found;
  std::vector<Diagnostic> messages;
  std::vector<std::string> missing;

  // Every message of the session passes through here on its way out. Returns false if there is an
  // error among those from index `first` on.
  bool publish(std::size_t first) {
    bool good = true;
    for (Diagnostic& message : found.inOrder(first)) {
      if (message.severity == Severity::Warning) {
        if (!options.warnings.shows(message.code)) continue;
        if (options.warnings.asErrors) message.severity = Severity::Error;
      }
      good = good && message.severity != Severity::Error;
      messages.push_back(std::move(message));
    }
    return good;
  }
  AnalysedProgram analysed() const { return {sources, *tree, services, broken}; }
  // Before and after the emission. The latter returns false if the C must not be used.
  std::size_t startEmission() {
    shapes.clear();
    return found.count();
  }
  bool emitted(std::size_t first) { return publish(first) && !found.hasErrors(); }

  SymbolNames names;   // set by translate()
  std::string header;  // likewise
  TestTexts tests;     // likewise
  std::vector<AssertionSite> assertions;
  ValueShapes shapes{names, services.layouts};
  std::unique_ptr<const ProgramView> view;  // null before it is asked for
};

namespace {

void setPlace(ProgramVariable& variable, const Place& place) {
  variable.reference = place.load();
  if (place.kind == Place::Kind::MemoryBit) variable.memoryBit = place.text;
}

std::uint64_t firstBit(bool isBit, vel::HeapRawAddr raw) {
  return std::uint64_t{raw.address} * (isBit ? 1 : 8);
}

// The object that contains the variables of a program or the global ones.
struct Data {
  std::string program;
  const UnitSymbol& unit;
  const std::string& object;
  Retention retention;  // for variables that do not say it
};

template <typename Append>
void forEachProgram(const Services& services, const SymbolNames& names, Append append) {
  const Configuration& configuration = services.configuration;
  for (const ProgramInstance& instance : configuration.instances) {
    append(Data{configuration.displayName(instance), *instance.program, names.of(instance).data,
                instance.retention});
  }
  if (!configuration.instances.empty()) return;
  for (const UnitSymbol* const unit : services.symbols.units()) {
    if (unit->type() != vel::POUType::Program || unit->instantiated) continue;
    append(Data{unit->name(), *unit, names.of(*unit).data, Retention::Unsaid});
  }
}

template <typename Append>
void forGlobals(const Services& services, const SymbolNames& names, Append append) {
  const UnitSymbol* const globals = services.symbols.globals();
  if (globals != nullptr) append(Data{{}, *globals, names.of(*globals).data, Retention::Unsaid});
}

ProgramVariable entryOf(const SymbolNames& names, const Data& data, const VarSymbol& variable,
                        ValueShapes::Shape shape) {
  ProgramVariable entry;
  entry.program = data.program;
  entry.name = variable.name();
  entry.typeName = displayName(variable.dataType());
  entry.type = valueType(variable.dataType());
  entry.byteSize = shape != nullptr ? shape->byteSize : 0;
  entry.shape = std::move(shape);
  setPlace(entry, globalPlace(names, data.object, variable));
  if (variable.isLocated()) {
    entry.firstBit = firstBit(variable.isDeviceBit(), variable.backendAddress());
  }
  entry.settable = entry.shape != nullptr && !variable.constant;
  return entry;
}

void appendVariables(const SymbolNames& names, ValueShapes& shapes, const Data& data,
                     Session::Instances instances, std::vector<ProgramVariable>& result) {
  for (const auto& variable : data.unit.variables()) {
    const vel::SymbolDataType* const type = variable->dataType();
    const bool kept =
        variable->role != Role::Temp && variable->role != Role::EdgeState && !variable->indirect;
    if (kept && type != nullptr) {
      const bool shown = instances == Session::Instances::Shown;
      result.push_back(
          entryOf(names, data, *variable, shown ? shapes.withInstances(type) : shapes.of(type)));
    }
  }
}

void appendRetained(const SymbolNames& names, ValueShapes& shapes, const Data& data,
                    std::vector<ProgramVariable>& result) {
  for (const auto& variable : data.unit.variables()) {
    if (variable->role == Role::Temp || variable->indirect || variable->constant) continue;
    const Retention said = variable->retention;
    ValueShapes::Shape shape =
        shapes.retained(variable->dataType(), said == Retention::Unsaid ? data.retention : said);
    if (shape != nullptr) result.push_back(entryOf(names, data, *variable, std::move(shape)));
  }
}

}  // namespace

Session::Session(Options options) : impl_(std::make_unique<Impl>(std::move(options))) {}
Session::~Session() = default;

bool Session::start(std::string& error) {
  const Options& options = impl_->options;
  if (!impl_->plugin.start(impl_->services, options.pluginPath, options.addOnPaths, error)) {
    return false;
  }
  impl_->services.symbols.keep();
  return true;
}

void Session::restart() {
  impl_->view.reset();
  impl_->broken.clear();
  impl_->found = {};
  impl_->messages.clear();
  impl_->missing.clear();
  impl_->names.clear();
  impl_->shapes.clear();
  impl_->tests = {};
  impl_->assertions.clear();
  impl_->services.calls = {};
  impl_->services.configuration = {};
  impl_->services.configured = {};
  impl_->services.memory.releaseState();
  impl_->services.symbols.forget();
  impl_->services.layouts = {};
  impl_->tree.emplace();
  impl_->sources = {};
}

vel::OpManagerAPI& Session::operators() { return *impl_->plugin.registry(); }

std::string Session::operatorPage(const std::string& name) const {
  const auto* const told = impl_->plugin.descriptions().find(name);
  return told != nullptr ? told->page : std::string();
}

std::vector<std::string> Session::operatorInputs(const std::string& name) const {
  return hostkit::inputNames(impl_->services, name);
}

SourceManager& Session::sources() { return impl_->sources; }
const SourceManager& Session::sources() const { return impl_->sources; }

std::string Session::unitAt(std::uint32_t file, std::uint32_t line) const {
  for (const Unit* const unit : impl_->tree->units) {
    const SourceRange range = rangeOf(*unit);
    const vel::TextLocation last(range.begin.file(), range.begin.offset() + range.length - 1);
    const bool contains = range.begin.file() == file &&
                          impl_->sources.lineNumber(range.begin) <= line &&
                          line <= impl_->sources.lineNumber(last);
    if (!contains) continue;
    const vel::POUType type = unit->POUDeclaration::type();
    const char* const kind = type == vel::POUType::Program         ? "PROGRAM "
                             : type == vel::POUType::FunctionBlock ? "FUNCTION_BLOCK "
                                                                   : "FUNCTION ";
    return kind + std::string(unit->name());
  }
  return {};
}

bool Session::analyse(bool tests) {
  for (int file = 0; file < impl_->sources.count(); ++file) {
    const std::size_t before = impl_->found.count();
    parse(impl_->sources, static_cast<std::uint32_t>(file), *impl_->tree, impl_->found);
    impl_->broken.push_back(impl_->found.hasErrors(before));
  }
  Prelude prelude(impl_->sources, *impl_->tree, impl_->found);
  Analyser analyser(impl_->services, *impl_->tree, prelude, impl_->found);
  analyser.run(tests);
  impl_->missing.assign(analyser.missingNames().begin(), analyser.missingNames().end());
  return impl_->publish(0);
}

const std::vector<Diagnostic>& Session::messages() const { return impl_->messages; }
const std::vector<std::string>& Session::missingNames() const { return impl_->missing; }

std::vector<Fix> Session::fixes(const Diagnostic& message) const {
  return fixesFor(impl_->analysed(), message);
}

const ProgramView& Session::view() const {
  if (impl_->view == nullptr) {
    impl_->view = std::make_unique<const ProgramView>(impl_->analysed());
  }
  return *impl_->view;
}

std::string Session::translate(const TranslationOptions& options) {
  const std::size_t first = impl_->startEmission();
  FileWriter writer(impl_->services, impl_->sources, impl_->names, impl_->found, options.lines,
                    options.header);
  std::string text = writer.text();
  if (options.lines) text = withOwnLines(text, options.fileName);
  impl_->tests = writer.tests();
  if (options.lines) {
    impl_->tests.fixtures = withOwnLines(impl_->tests.fixtures, options.fileName);
    for (TestTexts::Test& test : impl_->tests.tests) {
      test.text = withOwnLines(test.text, options.fileName);
    }
  }
  impl_->assertions = writer.assertions();
  impl_->header = options.header.empty() ? "" : writer.headerText();
  if (!impl_->emitted(first)) text.clear();
  return text;
}

const std::string& Session::header() const { return impl_->header; }

std::vector<TranslatedFile> Session::translateSplit(bool lines) {
  const std::size_t first = impl_->startEmission();
  SplitWriter writer(impl_->services, impl_->sources, impl_->names, impl_->found, lines);
  std::vector<TranslatedFile> files = writer.files();
  if (!impl_->emitted(first)) files.clear();
  return files;
}

TestProgram Session::tests() const {
  TestProgram program;
  program.fixtures = impl_->tests.fixtures;
  for (const TestTexts::Test& test : impl_->tests.tests) {
    const ASTNode& title = *test.unit->node->leaf(Unit::kName);
    LiteralValue name;
    parseLiteral(vel::TreeBuilder::source(title), name);
    program.tests.push_back(
        {name.text, rangeOf(title), setupFunction(impl_->services, impl_->names, test.unit->outer),
         impl_->names.of(*test.unit).name,
         test.teardown != nullptr ? impl_->names.of(*test.teardown).name : std::string(),
         test.text});
  }
  for (const AssertionSite& site : impl_->assertions) {
    Assertion assertion{rangeOf(*site.call), std::string(site.call->testFunction()->name), {}};
    const ASTNode& list = *site.call->parameters();
    for (int i = 0; i < site.call->testFunction()->operands(); ++i) {
      const auto index = static_cast<std::size_t>(i);
      const bool shown = index < site.shown.size();
      assertion.operands.push_back(
          {rangeOf(*list.leaf(i)), shown ? impl_->shapes.of(site.shown[index]) : nullptr});
    }
    program.assertions.push_back(std::move(assertion));
  }
  for (const Unit* const part : impl_->tree->tests) program.parts.push_back(rangeOf(*part));
  return program;
}

const std::vector<CallEdge>& Session::calls() const { return impl_->services.calls.edges; }

std::vector<Session::Program> Session::programs() const {
  std::vector<Program> result;
  const Configuration& configuration = impl_->services.configuration;
  const auto add = [&](const std::string& name, const UnitNames& names) {
    result.push_back({name, names.init, names.scan});
  };
  for (const ProgramInstance& instance : configuration.instances) {
    add(configuration.displayName(instance), impl_->names.of(instance));
  }
  if (!result.empty()) return result;
  for (const UnitSymbol* const unit : impl_->services.symbols.units()) {
    const bool runs = unit->type() == vel::POUType::Program && !unit->instantiated;
    if (runs) add(unit->name(), impl_->names.of(*unit));
  }
  return result;
}

std::string Session::taskTable() const { return impl_->names.configuration.tasks; }

std::vector<ProgramVariable> Session::programVariables(Instances instances) const {
  std::vector<ProgramVariable> result;
  forEachProgram(impl_->services, impl_->names, [&](const Data& data) {
    appendVariables(impl_->names, impl_->shapes, data, instances, result);
  });
  return result;
}

std::vector<ProgramVariable> Session::globalVariables(Instances instances) const {
  std::vector<ProgramVariable> result;
  forGlobals(impl_->services, impl_->names, [&](const Data& data) {
    appendVariables(impl_->names, impl_->shapes, data, instances, result);
  });
  return result;
}

std::vector<ProgramVariable> Session::retainedVariables() const {
  std::vector<ProgramVariable> result;
  const auto append = [&](const Data& data) {
    appendRetained(impl_->names, impl_->shapes, data, result);
  };
  forEachProgram(impl_->services, impl_->names, append);
  forGlobals(impl_->services, impl_->names, append);
  return result;
}

bool Session::addressVariable(const std::string& address, ProgramVariable& variable) const {
  vel::HeapAddress parsed;
  if (!impl_->services.memory.parse(address, parsed)) return false;
  const char* const name = addressTypeName(parsed);
  const ElementaryType& type = *elementaryType(std::string_view(name));
  variable = ProgramVariable();
  variable.name = vel::stringToUpper(address);
  variable.typeName = name;
  variable.type = type.type;
  variable.byteSize = type.size;
  const vel::HeapRawAddr raw = impl_->services.memory.raw(parsed);
  setPlace(variable, Place::ofAddress(parsed, raw, type.cType));
  variable.firstBit = firstBit(parsed.isBitMode(), raw);
  variable.settable = true;
  variable.shape = impl_->shapes.of(impl_->services.symbols.dataType(name));
  return true;
}

}  // namespace refhost
