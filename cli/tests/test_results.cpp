#include "cli/tests/test_results.h"

#include <fmt/format.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <limits>

#include "cli/compilation.h"
#include "cli/failure.h"
#include "cli/harness/crash.h"
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

// The length of the comment that `text` begins with; 0 for none.
std::size_t lengthOfComment(std::string_view text) {
  const std::string_view mark = text.substr(0, 2);
  if (mark == "//") return std::min(text.find_first_of("\r\n"), text.size());
  if (mark == "/*") return std::min(text.find("*/", 2), text.size() - 2) + 2;
  if (mark != "(*") return 0;
  std::size_t at = 0;
  int depth = 0;
  do {
    const std::string_view here = text.substr(at, 2);
    if (here == "(*") ++depth;
    if (here == "*)") --depth;
    at += here == "(*" || here == "*)" ? 2 : 1;
  } while (depth > 0 && at < text.size());
  return at;
}

std::size_t lengthOfString(std::string_view text) {
  if (text.front() != '\'' && text.front() != '"') return 0;
  std::size_t at = 1;
  while (at < text.size() && text[at] != text.front()) at += text[at] == '$' ? 2 : 1;
  return std::min(at + 1, text.size());
}

// The source of the range in one line, without comments.
std::string sourceText(const refhost::SourceManager& sources, const refhost::SourceRange& range) {
  std::string_view source =
      sources.text(range.begin.file()).substr(range.begin.offset(), range.length);
  std::string text;
  bool blank = false;
  while (!source.empty()) {
    const std::size_t comment = lengthOfComment(source);
    const bool space = std::string_view(" \t\r\n").find(source.front()) != std::string_view::npos;
    std::size_t length = std::max<std::size_t>(comment, 1);
    if (comment != 0 || space) {
      blank = true;
    } else {
      length = std::max(lengthOfString(source), length);
      const bool closes = source.front() == ',' || source.front() == ')';
      if (blank && !closes && !text.empty()) text += ' ';
      blank = false;
      text += source.substr(0, length);
    }
    source.remove_prefix(length);
  }
  return text;
}

std::string endText(int end, int signal, const std::string& limit, std::string_view crash) {
  if (end == VEL_TEST_LATE) return "did not end within " + limit;
  if (end != VEL_TEST_SIGNALLED) return "ended without a result";
  if (signal == SIGFPE) return "division by zero";
  const bool deep =
      signal == SIGSEGV && crash.size() >= VEL_CRASH_MOST_CALLS * sizeof(std::uint64_t);
  return "crashed with " + signalText(signal) +
         (deep ? ", perhaps by a recursion without end," : "");
}

// The first part of a long value.
std::string shortValue(std::string value) {
  constexpr std::size_t kMost = 300;
  if (value.size() <= kMost) return value;
  std::size_t length = kMost;
  while (length > 0 && (static_cast<unsigned char>(value[length]) & 0xC0U) == 0x80U) --length;
  return fmt::format("{}... ({} characters)", value.substr(0, length), value.size());
}

// Adds where a test ended, and from where that was called.
void addPlaces(const refhost::Session& session, const std::vector<SourcePlace>& places,
               TestFailure& failure) {
  constexpr std::size_t kMostCalls = 4;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::string& path = session.sources().path(places[i].file);
    if (i == 0) {
      const std::string unit = session.unitAt(places[i].file, places[i].line);
      failure.place = {path, places[i].line, 0};
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

  // `isCrash` becomes true for the item of a crash, whose text may be empty.
  TestFailure failure(Reader& report, const TestPlace& test, bool& isCrash) {
    TestFailure failure;
    constexpr const char* kParts[] = {"SETUP", "TEST", "TEARDOWN"};
    failure.part = kParts[report.number<std::uint8_t>() % 3];
    failure.place = test;
    switch (report.number<std::uint8_t>()) {
      case VEL_TEST_ASSERTION:
        readAssertion(report, failure);
        break;
      case VEL_TEST_CRASH:
        isCrash = true;
        if (report.number<std::uint8_t>() != 0)
          failure.text = "invalid operation, such as 0.0 / 0.0";
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
      failure.values.push_back({std::move(name), shortValue(std::move(value))});
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

std::string placeText(const TestPlace& place) {
  const std::string line = fmt::format("{}:{}", place.file, place.line);
  return place.column == 0 ? line : fmt::format("{}:{}", line, place.column);
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
    bool crashReported = false;
    while (!report.atEnd()) {
      result.failures.push_back(reader.failure(report, result.place, crashReported));
    }
    if (end == VEL_TEST_DONE) {
      if (!result.failures.empty()) result.status = TestResult::Status::Failed;
      continue;
    }
    result.status =
        end == VEL_TEST_LATE ? TestResult::Status::TimedOut : TestResult::Status::Crashed;
    if (!crashReported) {
      result.failures.emplace_back();
      result.failures.back().place = result.place;
      result.failures.back().part = "TEST";
    }
    TestFailure& failure = result.failures.back();
    if (failure.text.empty()) failure.text = endText(end, signal, limit, crash);
    constexpr int kMostPlaced = 100;  // each costs a process
    if (crashes++ < kMostPlaced) addPlaces(session, places(crash), failure);
  }
  return results;
}

}  // namespace velc
