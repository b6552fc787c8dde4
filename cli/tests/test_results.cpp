#include "cli/tests/test_results.h"

#include <fmt/format.h>

#include <csignal>
#include <cstring>
#include <limits>

#include "cli/compilation.h"
#include "cli/failure.h"
#include "cli/harness/test_records.h"
#include "cli/value_parts.h"

namespace velc {

namespace {

using refhost::ValueShape;

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

// Takes numbers and texts from the front of records.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  bool atEnd() const { return bytes_.empty(); }
  std::string_view& rest() { return bytes_; }

  std::string_view take(std::size_t size) {
    if (bytes_.size() < size) throw Failure("the tests did not write all their results");
    const std::string_view taken = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
    return taken;
  }
  template <typename T>
  T number() {
    T value{};
    std::memcpy(&value, take(sizeof value).data(), sizeof value);
    return value;
  }
  // Empty for none.
  std::string text() {
    const auto size = number<std::uint32_t>();
    return size == kNone ? std::string() : std::string(take(size));
  }

 private:
  std::string_view bytes_;
};

// The elementary value with this number, its path and the bytes before it.
struct Part {
  const ValueShape* shape = nullptr;
  std::string path;
  std::size_t offset = 0;
};

std::string subscripts(const ValueShape& array, std::int64_t index) {
  std::string text;
  for (auto bounds = array.bounds.rbegin(); bounds != array.bounds.rend(); ++bounds) {
    const std::int64_t count = bounds->second - bounds->first + 1;
    text = std::to_string(bounds->first + index % count) + (text.empty() ? "" : ", ") + text;
    index /= count;
  }
  return "[" + text + "]";
}

// Counts `number` down. True once the part is found.
bool findPart(const ValueShape& shape, std::uint32_t& number, Part& part) {
  const std::size_t length = part.path.size();
  const auto enter = [&](const std::string& step, const ValueShape& inner) {
    part.path += step;
    if (findPart(inner, number, part)) return true;
    part.path.resize(length);
    return false;
  };
  if (shape.element != nullptr) {
    for (std::int64_t i = 0; i < shape.count; ++i) {
      if (enter(subscripts(shape, i), *shape.element)) return true;
    }
    return false;
  }
  if (shape.isStructure) {
    for (const ValueShape::Member& member : shape.members) {
      if (enter("." + member.name, *member.shape)) return true;
    }
    return false;
  }
  if (number-- == 0) {
    part.shape = &shape;
    return true;
  }
  part.offset += static_cast<std::size_t>(shape.byteSize);
  return false;
}

// The source of the range in one line.
std::string sourceText(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  const std::string_view source =
      sources.text(range.begin.file()).substr(range.begin.offset(), range.length);
  std::string text;
  for (const char c : source) {
    const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (!blank) {
      text += c;
    } else if (!text.empty() && text.back() != ' ') {
      text += ' ';
    }
  }
  return text;
}

std::string endText(int end, int signal, const std::string& limit) {
  if (end == VEL_TEST_LATE) return "did not end within " + limit;
  if (end != VEL_TEST_SIGNALLED) return "ended without a result";
  return signal == SIGFPE ? "division by zero" : "crashed with " + signalText(signal);
}

// Adds where a test ended, and from where that was called.
void addPlaces(const refhost::Session& session, const std::vector<SourcePlace>& places,
               TestFailure& failure) {
  constexpr std::size_t kMostCalls = 4;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::string& path = session.sources().path(places[i].file);
    if (i == 0) {
      const std::string unit = session.unitAt(places[i].file, places[i].line);
      failure.place = {path, places[i].line, 1};
      if (!unit.empty()) failure.text += " in " + unit;
    } else if (i <= kMostCalls) {
      failure.text += fmt::format("{}{}:{}", i == 1 ? ", called at " : ", ", path, places[i].line);
    } else {
      failure.text += ", ...";
      break;
    }
  }
}

class ReportReader {
 public:
  ReportReader(refhost::Session& session, const refhost::TestProgram& program)
      : sources_(session.sources()), program_(program) {}

  TestFailure failure(Reader& report, const TestPlace& test) {
    TestFailure failure;
    constexpr const char* kParts[] = {"SETUP", "TEST", "TEARDOWN"};
    failure.part = kParts[report.number<std::uint8_t>() % 3];
    failure.place = test;
    switch (report.number<std::uint8_t>()) {
      case VEL_TEST_ASSERTION:
        readAssertion(report, failure);
        break;
      default:
        failure.text = report.text();
        break;
    }
    return failure;
  }

 private:
  void readAssertion(Reader& report, TestFailure& failure) {
    const refhost::Assertion& assertion = program_.assertions.at(report.number<std::uint32_t>());
    const auto differing = report.number<std::uint32_t>();
    failure.text = report.text();
    failure.place = placeOf(sources_, assertion.range);
    failure.assertion = sourceText(sources_, assertion.range);
    for (const refhost::Assertion::Operand& operand : assertion.operands) {
      if (operand.shape == nullptr) continue;
      std::string name = sourceText(sources_, operand.range);
      std::string_view bytes = report.rest();
      std::string value = partsText(*operand.shape, report.rest());
      Part part;
      std::uint32_t number = differing;
      if (differing != kNone && findPart(*operand.shape, number, part)) {
        name += part.path;
        bytes.remove_prefix(part.offset);
        value = partsText(*part.shape, bytes);
      }
      failure.values.push_back({std::move(name), std::move(value)});
    }
  }

  const refhost::SourceManager& sources_;
  const refhost::TestProgram& program_;
};

}  // namespace

TestPlace placeOf(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  const refhost::LineColumn at = sources.position(range.begin);
  return {sources.path(range.begin.file()), at.line, at.column};
}

std::string_view statusName(TestResult::Status status) {
  switch (status) {
    case TestResult::Status::Passed:
      return "passed";
    case TestResult::Status::Failed:
      return "failed";
    case TestResult::Status::Crashed:
      return "crashed";
    case TestResult::Status::TimedOut:
      return "timed out";
  }
  return {};
}

std::string summaryOf(const TestFailure& failure) {
  std::string line = failure.text;
  if (!failure.assertion.empty()) {
    line += (line.empty() ? "" : ": ") + failure.assertion;
  }
  const char* before = " where ";
  for (const TestFailure::Value& value : failure.values) {
    if (value.name == value.value) continue;
    line += before + value.name + " = " + value.value;
    before = ", ";
  }
  return line;
}

std::vector<TestResult> testResults(refhost::Session& session, const refhost::TestProgram& program,
                                    std::string_view bytes, const std::string& limit,
                                    const CrashPlaces& places) {
  std::vector<TestResult> results;
  for (const refhost::TestCase& test : program.tests) {
    TestResult result;
    result.title = test.title;
    result.place = placeOf(session.sources(), test.range);
    results.push_back(std::move(result));
  }
  ReportReader reader(session, program);
  Reader records(bytes);
  int crashes = 0;
  for (std::size_t i = 0; i < results.size(); ++i) {
    TestResult& result = results.at(records.number<std::uint32_t>());
    const auto end = records.number<std::uint8_t>();
    const int signal = records.number<std::uint8_t>();
    result.seconds = static_cast<double>(records.number<std::uint64_t>()) / 1e9;
    Reader report(records.take(records.number<std::uint32_t>()));
    const std::string_view crash = records.take(records.number<std::uint32_t>());
    while (!report.atEnd()) result.failures.push_back(reader.failure(report, result.place));
    if (end == VEL_TEST_DONE) {
      if (!result.failures.empty()) result.status = TestResult::Status::Failed;
      continue;
    }
    result.status =
        end == VEL_TEST_LATE ? TestResult::Status::TimedOut : TestResult::Status::Crashed;
    TestFailure failure;
    failure.place = result.place;
    failure.part = "TEST";
    failure.text = endText(end, signal, limit);
    constexpr int kMostPlaced = 100;  // each costs a process
    if (crashes++ < kMostPlaced) addPlaces(session, places(crash), failure);
    result.failures.push_back(std::move(failure));
  }
  return results;
}

}  // namespace velc
