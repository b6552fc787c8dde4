// The plugin's operations take no more from the heap than they need. What their host's answers
// take is not counted.
#include "bench/support/allocations.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "bench/operators/workload.h"

namespace {

// The number of allocations of `step`. The first takes what stays: room for messages, say.
template <class Step>
std::size_t taken(Step step) {
  step();
  const std::size_t before = allocations();
  step();
  return allocations() - before;
}

class AllocationsTest : public ::testing::Test {
 protected:
  ReadyAnswers answers;
  hostkit::Services services{&answers};
  std::unique_ptr<vel::OpManagerAPI> registry{CreateOpManager(&services)};
};

TEST_F(AllocationsTest, OperationsStayWithinTheirBounds) {
  // Of the operations in their order: a check that accepts, one that refuses with a message,
  // generate and staticCode.
  using Bounds = std::array<std::size_t, kOperations.size()>;
  const std::map<std::string, Bounds> bounds = {
      {"ADR", {0, 2, 3, 0}},           {"BCD_TO_INT", {1, 2, 1, 0}},
      {"GETBITOFPARAM", {1, 3, 1, 0}}, {"INT_TO_BOOL", {1, 2, 1, 0}},
      {"INT_TO_REAL", {1, 2, 1, 0}},   {"INT_TO_STRING", {1, 2, 1, 0}},
      {"IRDBIT", {3, 2, 1, 1}},        {"LIMIT", {1, 2, 1, 1}},
      {"MAX", {3, 2, 1, 1}},           {"MEP", {1, 2, 5, 1}},
      {"MOVE", {1, 2, 1, 0}},          {"MUX", {1, 2, 2, 0}},
      {"REAL_TO_INT", {1, 2, 1, 1}},   {"ROL", {2, 2, 1, 1}},
      {"SEL", {1, 2, 1, 1}},           {"SHL", {1, 2, 2, 1}},
      {"SIZEOF", {2, 2, 3, 0}},        {"SQRT", {1, 2, 1, 0}},
      {"STRING_TO_INT", {1, 2, 1, 0}}, {"TO_REAL", {1, 2, 3, 1}},
      {"TRUNC", {1, 2, 1, 0}},         {"ZSET", {0, 2, 1, 0}},
  };
  Symbols symbols;
  const std::vector<Workload> all = workloads(symbols);
  EXPECT_EQ(all.size(), bounds.size());
  for (const Workload& workload : all) {
    Bench bench(*registry, workload);
    for (std::size_t i = 0; i < kOperations.size(); ++i) {
      const std::size_t whole = taken([&] { bench.run(i); });
      const std::size_t answered = taken([&] { bench.askHost(i); });
      EXPECT_LE(whole, bounds.at(workload.name)[i] + answered)
          << workload.name << ", " << kOperations[i];
    }
  }
}

TEST_F(AllocationsTest, LookUpsTakeNothing) {
  for (const std::string name : {"limit", "ULINT_to_WSTRING", "NO_SUCH_OPERATOR_OF_THE_PLUGIN"}) {
    EXPECT_EQ(taken([&] { registry->findOperator(name); }), 0U) << name;
  }
}

TEST_F(AllocationsTest, RegistrationTakesThreeForEachOperator) {
  const auto count = static_cast<std::size_t>(registry->operatorCount());
  EXPECT_LE(taken([&] { delete CreateOpManager(&services); }), 3 * count);
}

}  // namespace
