// Runs all programs with one C compiler and tells which operators they have proven:
//   execution_tests COMPILER SUMMARY
// or, with "-" for both, translates them only and tells which operators have no case.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/execution/program.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 3) return 2;
  execution::compiler = argv[1];
  if (RUN_ALL_TESTS() != 0) return 1;
  if (testing::GTEST_FLAG(filter) != "*") return 0;
  bool complete = true;
  for (const std::string& name : execution::operatorNames()) {
    if (execution::proof().operators.count(name) != 0) continue;
    fmt::print("operator {} has no row in fuzz/programs/ and no call in tests/execution/\n", name);
    complete = false;
  }
  if (!complete || execution::compiler == "-") return complete ? 0 : 1;
  const std::string line =
      fmt::format("execution with {}: {} names, {} cases\n", execution::compiler,
                  execution::proof().operators.size(), execution::proof().cases);
  fmt::print("{}", line);
  return std::ofstream(argv[2]) << line ? 0 : 1;
}
