// What became of the tests.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/crash_places.h"
#include "refhost/session.h"

namespace velc {

// A place in the source.
struct TestPlace {
  std::string file;
  std::uint32_t line = 0;
  std::uint32_t column = 0;  // 0 if it is not known
};

std::string placeText(const TestPlace& place);

struct TestFailure {
  struct Value {
    std::string name;  // as in the source, with the path to the part that differs
    std::string value;
  };

  TestPlace place;
  std::string part;       // "SETUP", "TEST" or "TEARDOWN"
  std::string assertion;  // the call in the source; empty for none
  std::string text;       // that the assertion gives, or what happened; may be empty
  std::vector<Value> values;
};

struct TestResult {
  enum class Status : std::uint8_t { Passed, Failed, Crashed, TimedOut };

  std::string title;
  TestPlace place;
  Status status = Status::Passed;
  double seconds = 0;
  std::vector<TestFailure> failures;
};

std::string_view statusName(TestResult::Status status);  // "passed", "failed", ...
// The failure in one line: the text and the assertion with its values.
std::string summaryOf(const TestFailure& failure);

// Tells the places of a crash by its report, see crashPlaces().
using CrashPlaces = std::function<std::vector<SourcePlace>(std::string_view report)>;

// Reads the records of the runner, `bytes`. The results are in the order of the tests of `program`.
// Throws Failure when a record is missing. `limit` is what a test may take, as a text.
std::vector<TestResult> testResults(refhost::Session& session, const refhost::TestProgram& program,
                                    std::string_view bytes, const std::string& limit,
                                    const CrashPlaces& places);
TestPlace placeOf(const refhost::SourceManager& sources, const refhost::SourceRange& range);

}  // namespace velc
