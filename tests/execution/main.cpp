// Runs all programs with one C compiler and tells which operators they have proven:
//   execution_tests COMPILER SUMMARY
// or, with "-" for both, translates them only and tells which operators have no case.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/execution/program.h"

int main(int argc, char** argv) {
  using namespace execution;
  testing::InitGoogleTest(&argc, argv);
  if (argc != 3) return 2;
  compiler = argv[1];
  if (RUN_ALL_TESTS() != 0) return 1;
  if (testing::GTEST_FLAG(filter) != "*") return 0;
  bool complete = true;
  for (const std::string& name : operatorNames()) {
    if (proof().operators.count(name) != 0) continue;
    fmt::print("operator {} has no case in tests/execution/\n", name);
    complete = false;
  }
  if (!complete || compiler == "-") return complete ? 0 : 1;
  const std::string line = fmt::format("execution with {}: {} names, {} cases\n", compiler,
                                       proof().operators.size(), proof().cases);
  fmt::print("{}", line);
  return std::ofstream(argv[2]) << line ? 0 : 1;
}
