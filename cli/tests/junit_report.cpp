// The XML that continuous integration reads.
#include <fmt/format.h>

#include <map>
#include <string_view>

#include "cli/excerpt.h"
#include "cli/tests/test_reports.h"
#include "cli/xml.h"

namespace velc {

namespace {

using Status = TestResult::Status;

// XML allows no other control characters than these three, not even escaped.
std::string inXml(const std::string& text) {
  std::string result;
  for (const char c : asUtf8(text)) {
    const bool allowed = c == '\t' || c == '\n' || c == '\r';
    if (const char* const entity = xmlEntity(c)) {
      result += entity;
    } else if (allowed) {
      result += fmt::format("&#{};", static_cast<int>(c));
    } else if (static_cast<unsigned char>(c) < ' ') {
      result += "\xEF\xBF\xBD";
    } else {
      result += c;
    }
  }
  return result;
}

std::string testCase(const TestResult& result) {
  std::string text =
      fmt::format(R"(    <testcase name="{}" classname="{}" file="{}" line="{}" time="{:.6f}")",
                  inXml(result.title), inXml(result.place.file), inXml(result.place.file),
                  result.place.line, result.seconds);
  if (result.failures.empty()) return text + "/>\n";
  text += ">\n";
  const char* const element = result.status == Status::Failed ? "failure" : "error";
  for (const TestFailure& failure : result.failures) {
    const std::string summary = summaryOf(failure);
    text += fmt::format("      <{0} type=\"{1}\" message=\"{2}\">{3}: {2}</{0}>\n", element,
                        statusName(result.status), inXml(summary), inXml(placeText(failure.place)));
  }
  return text + "    </testcase>\n";
}

struct Suite {
  std::string cases;
  std::size_t tests = 0;
  std::size_t failures = 0;
  std::size_t errors = 0;
  double seconds = 0;

  void add(const TestResult& result) {
    cases += testCase(result);
    ++tests;
    failures += result.status == Status::Failed ? 1 : 0;
    errors += result.status != Status::Failed && result.status != Status::Passed ? 1 : 0;
    seconds += result.seconds;
  }
  std::string counts() const {
    return fmt::format(R"(tests="{}" failures="{}" errors="{}" time="{:.6f}")", tests, failures,
                       errors, seconds);
  }
};

}  // namespace

std::string junitReport(const std::vector<TestResult>& results) {
  Suite all;
  std::map<std::string, Suite> files;
  for (const TestResult& result : results) {
    files[result.place.file].add(result);
    all.add(result);
  }
  std::string text = fmt::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"velc\" {}>\n", all.counts());
  for (const auto& [file, suite] : files) {
    text += fmt::format("  <testsuite name=\"{}\" {}>\n{}  </testsuite>\n", inXml(file),
                        suite.counts(), suite.cases);
  }
  return text + "</testsuites>\n";
}

}  // namespace velc
