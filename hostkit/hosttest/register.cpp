#include <utility>

#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

class DutyTest : public testing::Test {
 public:
  DutyTest(HostFactory factory, Duty duty, bool needsAll)
      : factory_(std::move(factory)), duty_(duty), needsAll_(needsAll) {}

  void TestBody() override {
    const testing::TestSuite* const suite = testing::UnitTest::GetInstance()->current_test_suite();
    if (needsAll_ && suite->failed_test_count() > 0) {
      GTEST_SKIP() << "whole calls need every duty, and a test of one has failed";
    }
    const std::unique_ptr<HostUnderTest> host = factory_();
    ASSERT_NE(host, nullptr) << "the factory has made no host";
    duty_.test(*host);
  }

 private:
  HostFactory factory_;
  Duty duty_;
  bool needsAll_;
};

}  // namespace

void registerTests(const std::string& suite, HostFactory factory) {
  const auto enter = [&](const Duties& duties, bool needsAll) {
    for (const Duty& duty : duties) {
      testing::RegisterTest(suite.c_str(), duty.name, nullptr, nullptr, __FILE__, __LINE__,
                            [factory, duty, needsAll]() -> DutyTest* {
                              return new DutyTest(factory, duty, needsAll);
                            });
    }
  };
  for (const auto& duties : {typeDuties, symbolDuties, treeDuties, expressionDuties, ratingDuties,
                             textDuties, addressDuties, serviceDuties}) {
    enter(duties(), false);
  }
  enter(callDuties(), true);
}

}  // namespace hosttest
