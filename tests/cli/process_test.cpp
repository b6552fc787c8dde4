// How processes end is seen by robustness_test and run_test.
#include "cli/process.h"

#include <gtest/gtest.h>

#include <chrono>

namespace velc {
namespace {

using namespace std::chrono_literals;
using End = ProcessResult::End;

TEST(Process, KeepsBothOutputsAndGivesNoInput) {
  const TerminationGuard guard;
  EXPECT_EQ(runProcess({"sh", "-c", "echo a; echo b >&2; cat"}, guard).output, "a\nb\n");
  EXPECT_EQ(runProcess({"printf", "%s", "$(echo x);*"}, guard).output, "$(echo x);*");
  const ProcessResult longOutput = runProcess({"head", "-c", "1000000", "/dev/zero"}, guard);
  EXPECT_TRUE(longOutput.succeeded());
  EXPECT_EQ(longOutput.output.size(), 65536u);
}

TEST(Process, EndsWithAllItStartedWhenTimeIsUp) {
  const TerminationGuard guard;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(runProcess({"sh", "-c", "sleep 30 & sleep 30"}, guard, 50ms).end, End::TimedOut);
  EXPECT_EQ(runProcess({"sh", "-c", "while :; do echo x; done"}, guard, 50ms).end, End::TimedOut);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

}  // namespace
}  // namespace velc
