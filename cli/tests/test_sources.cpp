#include "cli/tests/test_sources.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/shape_tables.h"

namespace velc {

namespace {

std::string orNull(const std::string& function) { return function.empty() ? "NULL" : function; }

// The tests from index `begin` to before `end`.
std::string partText(const refhost::TestProgram& program, std::size_t part, std::size_t begin,
                     std::size_t end) {
  std::string text = "#include \"program.c\"\n#include <veltest.h>\n" + program.fixtures;
  std::string table;
  for (std::size_t i = begin; i < end; ++i) {
    const refhost::TestCase& test = program.tests[i];
    text += test.text;
    table +=
        fmt::format("  {{{}, {}, {}}},\n", orNull(test.setup), test.body, orNull(test.teardown));
  }
  return text + fmt::format("\nconst vel_test vel_tests_{}[] = {{\n{}}};\n", part, table);
}

std::string assertionTable(const refhost::TestProgram& program) {
  ShapeTables tables;
  std::string rows;
  for (const refhost::Assertion& assertion : program.assertions) {
    std::string shapes;
    int count = 0;
    for (const refhost::Assertion::Operand& operand : assertion.operands) {
      if (operand.shape == nullptr) continue;
      shapes += fmt::format("{}&{}", count++ == 0 ? "" : ", ", tables.nameOf(*operand.shape));
    }
    rows += fmt::format("  {{{}, {{{}}}}},\n", count, count == 0 ? "NULL" : shapes);
  }
  return tables.text() +
         fmt::format(
             "\nstatic const vel_test_assertion vel_test_assertions[] = {{\n{}  {{0, "
             "{{NULL}}}},\n}};\n",
             rows);
}

}  // namespace

std::vector<std::string> testSources(const refhost::TestProgram& program, std::size_t count,
                                     bool coverage) {
  std::vector<std::string> sources;
  std::string others;
  std::string parts;
  for (std::size_t part = 0; part < count; ++part) {
    const std::size_t begin = program.tests.size() * part / count;
    const std::size_t end = program.tests.size() * (part + 1) / count;
    sources.push_back(partText(program, part, begin, end));
    if (part > 0) others += fmt::format("extern const vel_test vel_tests_{}[];\n", part);
    parts += fmt::format("  {{vel_tests_{}, {}}},\n", part, end - begin);
  }
  sources.front() += assertionTable(program);
  if (coverage) others += "void __gcov_dump(void);\n";
  sources.front() += fmt::format(
      "\n{}static const vel_test_part vel_test_parts[] = {{\n{}}};\n"
      "\nint main(int argc, char** argv) {{\n"
      "  static const vel_test_program program = {{vel_test_parts, {}, vel_test_assertions, {}}};\n"
      "  return vel_test_main(argc, argv, &program);\n}}\n",
      others, parts, count, coverage ? "__gcov_dump" : "NULL");
  return sources;
}

}  // namespace velc
