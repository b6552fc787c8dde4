#include "cli/tests/test_reports.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/counted.h"
#include "cli/excerpt.h"

namespace velc {

namespace {

using Status = TestResult::Status;

// A value that is a literal in the source is not repeated.
std::string valueText(const TestFailure::Value& value) {
  return value.name == value.value ? value.value : value.name + " = " + value.value;
}

// In one line, and without commands to a terminal.
std::string shown(const std::string& text) { return printable(asUtf8(text)); }

std::string failureText(const TestFailure& failure, const std::string& indent) {
  std::string text = fmt::format("{}{}: ", indent, placeText(failure.place));
  text += failure.assertion.empty() ? failure.text : failure.assertion;
  if (!failure.assertion.empty() && !failure.text.empty()) text += ": " + failure.text;
  if (failure.part != "TEST") text += " (in " + failure.part + ")";
  text = shown(text) + '\n';
  for (const TestFailure::Value& value : failure.values) {
    text += indent + "  " + shown(valueText(value)) + '\n';
  }
  return text;
}

// In TAP a '#' begins a directive.
std::string escapedTitle(const std::string& title) {
  std::string text;
  for (const char c : title) {
    if (c == '#' || c == '\\') text += '\\';
    text += c;
  }
  return text;
}

}  // namespace

std::size_t failedTests(const std::vector<TestResult>& results) {
  return static_cast<std::size_t>(
      std::count_if(results.begin(), results.end(),
                    [](const TestResult& result) { return result.status != Status::Passed; }));
}

std::string textReport(const std::vector<TestResult>& results, const Colours& colours) {
  std::string text;
  std::string file;
  for (const TestResult& result : results) {
    if (result.place.file != file) text += shown(file = result.place.file) + '\n';
    const bool passed = result.status == Status::Passed;
    const std::string word =
        passed ? colours(Colours::Role::Mark, "ok") + "  " : colours(Colours::Role::Error, "FAIL");
    text += fmt::format("  {}  {}\n", word, shown(result.title));
    for (const TestFailure& failure : result.failures) {
      text += failureText(failure, "        ");
    }
  }
  const std::size_t failed = failedTests(results);
  const std::string tests = counted(results.size(), "test");
  text += failed == 0 ? tests + " passed\n" : fmt::format("{} of {} failed\n", failed, tests);
  return text;
}

std::string tapReport(const std::vector<TestResult>& results) {
  std::string text = fmt::format("TAP version 14\n1..{}\n", results.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    const TestResult& result = results[i];
    text += fmt::format("{}ok {} - {}\n", result.status == Status::Passed ? "" : "not ", i + 1,
                        escapedTitle(shown(result.title)));
    if (result.failures.empty()) continue;
    // YAML takes a JSON string for a string.
    const auto quoted = [](const std::string& value) {
      return nlohmann::ordered_json(asUtf8(value)).dump();
    };
    const TestFailure& first = result.failures.front();
    text += fmt::format("  ---\n  status: {}\n  at: {}\n  message: {}\n  ...\n",
                        statusName(result.status), quoted(placeText(first.place)),
                        quoted(summaryOf(first)));
  }
  return text;
}

std::string jsonReport(const std::vector<TestResult>& results) {
  nlohmann::ordered_json tests = nlohmann::ordered_json::array();
  for (const TestResult& result : results) {
    nlohmann::ordered_json failures = nlohmann::ordered_json::array();
    for (const TestFailure& failure : result.failures) {
      nlohmann::ordered_json values = nlohmann::ordered_json::array();
      for (const TestFailure::Value& value : failure.values) {
        values.push_back({{"expression", asUtf8(value.name)}, {"value", asUtf8(value.value)}});
      }
      nlohmann::ordered_json entry = {{"file", asUtf8(failure.place.file)},
                                      {"line", failure.place.line}};
      if (failure.place.column != 0) entry["column"] = failure.place.column;
      entry.update({{"part", failure.part},
                    {"assertion", asUtf8(failure.assertion)},
                    {"text", asUtf8(failure.text)},
                    {"values", std::move(values)}});
      failures.push_back(std::move(entry));
    }
    tests.push_back({{"name", asUtf8(result.title)},
                     {"file", asUtf8(result.place.file)},
                     {"line", result.place.line},
                     {"status", statusName(result.status)},
                     {"seconds", result.seconds},
                     {"failures", std::move(failures)}});
  }
  const nlohmann::ordered_json report = {{"tests", std::move(tests)},
                                         {"passed", results.size() - failedTests(results)},
                                         {"failed", failedTests(results)}};
  return report.dump(2) + '\n';
}

}  // namespace velc
