#include "refhost/emit/test_writer.h"

#include <fmt/format.h>

#include <map>

#include "refhost/emit/declarations.h"
#include "refhost/emit/function_writer.h"

namespace refhost {

TestTexts TestWriter::texts() {
  TestTexts result;
  std::map<std::uint32_t, const UnitSymbol*> teardowns;  // by file
  for (const UnitSymbol* const unit : file_.services.symbols.units()) {
    switch (unit->node->testPart) {
      case TestPart::None:
        break;
      case TestPart::Setup:
        appendSetup(*unit, result.fixtures);
        break;
      case TestPart::Test: {
        std::string text;
        FunctionWriter(file_, unit).appendFunction(text);
        result.tests.push_back({unit, nullptr, std::move(text)});
        break;
      }
      case TestPart::Teardown:
        teardowns[unit->node->pos().file()] = unit;
        FunctionWriter(file_, unit).appendFunction(result.fixtures);
        break;
    }
  }
  for (TestTexts::Test& test : result.tests) {
    const auto found = teardowns.find(test.unit->node->pos().file());
    if (found != teardowns.end()) test.teardown = found->second;
  }
  return result;
}

void TestWriter::appendSetup(const UnitSymbol& setup, std::string& out) {
  const UnitNames& names = file_.names.of(setup);
  const UnitSymbol* const globals = file_.services.symbols.globals();
  out += fmt::format("\nstatic struct {} {};\n", names.name, names.data);
  FunctionWriter(file_, &setup).appendInitialisation(out);
  FunctionWriter(file_, &setup).appendBody(out);
  out += fmt::format("\nstatic void {}(void) {{\n", names.scan);
  if (globals != nullptr) out += fmt::format("  {}();\n", file_.names.of(*globals).init);
  const ConfiguredVariables::Root& root = file_.services.configured.roots[&setup];
  if (!root.places.empty()) out += "  " + placesTable(root) + "\n";
  out += fmt::format("  {}(&{}{});\n  {}(&{});\n}}\n", names.init, names.data,
                     root.places.empty() ? "" : ", vel_places", names.body, names.data);
}

std::string setupFunction(const Services& services, const SymbolNames& names,
                          const UnitSymbol* setup) {
  if (setup != nullptr) return names.of(*setup).scan;
  const UnitSymbol* const globals = services.symbols.globals();
  return globals != nullptr ? names.of(*globals).init : std::string();
}

}  // namespace refhost
