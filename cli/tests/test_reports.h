// The forms in which the results of tests are printed.
#pragma once

#include <string>
#include <vector>

#include "cli/colours.h"
#include "cli/tests/test_results.h"

namespace velc {

std::string textReport(const std::vector<TestResult>& results, const Colours& colours);
std::string tapReport(const std::vector<TestResult>& results);  // version 14
std::string jsonReport(const std::vector<TestResult>& results);
std::string junitReport(const std::vector<TestResult>& results);

std::size_t failedTests(const std::vector<TestResult>& results);

}  // namespace velc
