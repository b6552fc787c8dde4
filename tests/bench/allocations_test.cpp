// The plugin takes no more from the heap than what its floor takes: the host's answers, a
// result type that outgrows its string, and a generated text.
#include "bench/support/allocations.h"

#include <gtest/gtest.h>

#include "bench/operators/workload.h"

namespace {

class AllocationsTest : public ::testing::Test {
 protected:
  struct Taken {
    std::size_t allocations;
    std::uint64_t requests;  // a digest of what the host was asked
  };

  // The first of `step` takes what stays: room for messages, say.
  template <class Step>
  Taken measure(Step step) {
    step();
    CannedHost::trace() = 0;
    const Allocations before = Allocations::now();
    step();
    return {(Allocations::now() - before).count, CannedHost::trace()};
  }

  // Both do the same, which makes the floor one; the plugin takes no more than it.
  template <class Plugin, class Floor>
  void expectAtMost(const char* what, Plugin plugin, Floor floor) {
    SCOPED_TRACE(what);
    const Taken byPlugin = measure(plugin);
    const Taken byFloor = measure(floor);
    EXPECT_EQ(byPlugin.requests, byFloor.requests);
    EXPECT_LE(byPlugin.allocations, byFloor.allocations);
  }

  AllocationsTest() { host.registry = registry.get(); }

  CannedHost host;
  CreateRegistry create = loadPlugin();
  std::unique_ptr<vel::OpManagerAPI> registry{create(&host)};
};

TEST_F(AllocationsTest, OperatorsTakeWhatTheirFloorsTake) {
  const Symbols symbols(&host);
  for (const Workload& workload : workloads(symbols)) {
    SCOPED_TRACE(workload.name);
    Bench bench(host, workload);
    for (const bool right : {true, false}) {
      ASSERT_EQ(bench.check(right), right);
      const std::string resultType = bench.resultType();
      const std::vector<vel::VELMessage> messages = bench.messages();
      ASSERT_EQ(bench.checkFloor(right), right);
      EXPECT_EQ(resultType, right ? bench.resultType() : resultType);
      ASSERT_EQ(messages.size(), bench.messages().size());
      for (std::size_t i = 0; i < messages.size(); ++i) {
        EXPECT_EQ(messages[i].text, bench.messages()[i].text);
      }
      expectAtMost(
          right ? "check, accepted" : "check, refused", [&] { bench.check(right); },
          [&] { bench.checkFloor(right); });
    }
    EXPECT_NE(bench.generate(), "");
    EXPECT_EQ(bench.generate(), bench.generateFloor());
    expectAtMost(
        "generate", [&] { bench.generate(); }, [&] { bench.generateFloor(); });
    expectAtMost(
        "staticCode", [&] { bench.staticCode(); }, [&] { bench.staticCodeFloor(); });
  }
}

TEST_F(AllocationsTest, LookupsTakeNothing) {
  for (const std::string name : {"limit", "ULINT_to_WSTRING", "NO_SUCH_OPERATOR_OF_THE_PLUGIN"}) {
    EXPECT_EQ(measure([&] { registry->findOperator(name); }).allocations, 0U) << name;
  }
}

TEST_F(AllocationsTest, RegistrationTakesThreeForEachOperator) {
  const auto count = static_cast<std::size_t>(registry->operatorCount());
  EXPECT_LE(measure([&] { delete create(&host); }).allocations, 3 * count);
}

}  // namespace
