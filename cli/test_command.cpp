#include <fmt/format.h>
#include <fnmatch.h>
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <filesystem>

#include "cli/commands.h"
#include "cli/compilation.h"
#include "cli/crash_places.h"
#include "cli/excerpt.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/process.h"
#include "cli/progress.h"
#include "cli/temporary_folder.h"
#include "cli/tests/coverage.h"
#include "cli/tests/test_reports.h"
#include "cli/tests/test_sources.h"
#include "cli/translation.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

using ReportWriter = std::string (*)(const std::vector<TestResult>&);

struct TestOptions {
  std::vector<std::string> files;
  std::vector<std::string> filters;
  std::vector<std::string> names;  // of tests, whole
  bool list = false;
  bool strict = false;
  unsigned jobs = 0;              // 0: as many as there are processors
  double timeout = 10;            // seconds of a test
  ReportWriter report = nullptr;  // null: the text for readers
  std::string compiler = "cc";
  std::string output = "-";
  std::string coverage;  // file; empty for none
};

unsigned processors() {
  cpu_set_t set;
  CPU_ZERO(&set);
  const bool known = sched_getaffinity(0, sizeof set, &set) == 0;
  return known ? static_cast<unsigned>(std::max(CPU_COUNT(&set), 1)) : 1;
}

// While it lives, C functions take texts of this thread for UTF-8.
class Utf8Locale {
 public:
  Utf8Locale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
    if (locale_ != nullptr) before_ = uselocale(locale_);
  }
  ~Utf8Locale() {
    if (locale_ == nullptr) return;
    uselocale(before_);
    freelocale(locale_);
  }
  Utf8Locale(const Utf8Locale&) = delete;
  Utf8Locale& operator=(const Utf8Locale&) = delete;

 private:
  locale_t locale_;
  locale_t before_ = nullptr;
};

// A filter with '*' or '?' is a pattern for the whole title, any other one a part of it.
bool matches(const std::string& title, const std::string& filter) {
  std::string pattern;
  for (const char c : filter) {
    if (c == '[' || c == '\\') pattern += '\\';
    pattern += c;
  }
  if (filter.find_first_of("*?") == std::string::npos) pattern = '*' + pattern + '*';
  return fnmatch(pattern.c_str(), asUtf8(title).c_str(), FNM_CASEFOLD) == 0;
}

void select(std::vector<refhost::TestCase>& tests, const TestOptions& options) {
  if (tests.empty()) throw Failure("there is no TEST to run");
  if (options.filters.empty() && options.names.empty()) return;
  const Utf8Locale locale;
  const auto isOut = [&options](const refhost::TestCase& test) {
    const std::vector<std::string>& names = options.names;
    const bool named = std::find(names.begin(), names.end(), asUtf8(test.title)) != names.end();
    return !named && std::none_of(options.filters.begin(), options.filters.end(),
                                  [&](const auto& filter) { return matches(test.title, filter); });
  };
  tests.erase(std::remove_if(tests.begin(), tests.end(), isOut), tests.end());
  if (!tests.empty()) return;
  throw Failure(fmt::format("no test matches --{}", options.filters.empty() ? "name" : "filter"));
}

std::string listText(const refhost::SourceManager& sources,
                     const std::vector<refhost::TestCase>& tests) {
  std::string text;
  for (const refhost::TestCase& test : tests) {
    const TestPlace place = placeOf(sources, test.range);
    text += printable(fmt::format("{}:{}: {}", place.file, place.line, asUtf8(test.title))) + '\n';
  }
  return text;
}

Compilation compilationOf(const TestOptions& options) {
  // The time of a test is mostly that of its compilation.
  std::vector<std::string> flags{"-O0", "-gdwarf-4", "-g1"};
  if (options.strict) flags.emplace_back("-DVEL_STRICT");
  // Units that no test calls count, too.
  if (!options.coverage.empty()) {
    flags.insert(flags.end(), {"--coverage", "-fkeep-static-functions"});
  }
  constexpr std::chrono::seconds kLeast{60};
  const std::chrono::seconds given(static_cast<std::int64_t>(options.timeout));
  return {options.compiler, std::move(flags), std::max(given, kLeast)};
}

// The records of the tests.
std::string runTests(const TemporaryFolder& folder, const TestOptions& options, unsigned jobs,
                     const TerminationGuard& guard) {
  const Progress progress("testing");
  const auto milliseconds = static_cast<std::int64_t>(options.timeout * 1000);
  const ProcessResult result =
      runProcess({folder.path() / "tests", folder.path() / "results", std::to_string(jobs),
                  std::to_string(milliseconds), options.strict ? "1" : "0"},
                 guard);
  if (!result.succeeded()) throw Failure("the tests could not be run: " + result.output);
  return folder.read("results");
}

int test(const CommonOptions& common, const TestOptions& options) {
  refuseClashes(options.files, {options.output, options.coverage});
  if (!options.coverage.empty()) requireCoverage(options.compiler);
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files, true)) return kProgramErrors;
  // The names of the C files themselves are of no use to anybody.
  const auto text = translateToC(*session, common, {true, "tests.c", {}});
  if (!text) return kProgramErrors;
  refhost::TestProgram program = session->tests();
  select(program.tests, options);
  if (options.list) {
    writeStandardOutput(listText(session->sources(), program.tests));
    return kSuccess;
  }

  const TerminationGuard guard;
  const TemporaryFolder folder;
  writeFile(folder.path() / "program.c", *text);
  const unsigned jobs = options.jobs != 0 ? options.jobs : processors();
  // Each file compiles the program again, which pays with many tests only.
  constexpr std::size_t kTestsOfFile = 100;
  const std::size_t files = std::min<std::size_t>(jobs, program.tests.size() / kTestsOfFile + 1);
  std::vector<fs::path> sources;
  for (const std::string& source : testSources(program, files, !options.coverage.empty())) {
    sources.push_back(folder.path() / fmt::format("tests_{}.c", sources.size()));
    writeFile(sources.back(), source);
  }
  const std::vector<fs::path> objects =
      compileParts(sources, folder.path() / "tests", compilationOf(options), guard);
  const std::string records = runTests(folder, options, jobs, guard);
  const auto places = [&](std::string_view report) {
    return crashPlaces(session->sources(), folder.path() / "tests", report, guard);
  };
  const std::vector<TestResult> results = testResults(
      *session, program, records, fmt::format("{} s (--timeout)", options.timeout), places);
  const bool printed = options.output == "-";
  const Colours colours = printed ? Colours(common.colour, STDOUT_FILENO) : Colours();
  const bool forReaders = options.report == nullptr;
  const std::string report = forReaders ? textReport(results, colours) : options.report(results);
  if (printed) {
    writeStandardOutput(report);
  } else {
    writeFile(options.output, report);
  }
  if (!options.coverage.empty()) {
    const Coverage coverage =
        readCoverage(objects, options.compiler, session->sources(), program, guard);
    writeFile(options.coverage, coverage.tracefile);
    if (forReaders && printed) {
      writeStandardOutput(coverage.summary);
    } else {
      writeStandardError(coverage.summary);
    }
  }
  return failedTests(results) == 0 ? kSuccess : kProgramErrors;
}

}  // namespace

void addTestCommand(CommandLine& line) {
  Command command = line.addCommand("test", "Run the unit tests of programs");
  const auto options = std::make_shared<TestOptions>();
  line.addSources(command, options->files);
  command
      .option("--filter", options->filters,
              "Only tests whose names contain this, or match it if it has '*' or '?' "
              "(repeatable)")
      .value("TEXT")
      .oneAtATime();
  command.option("--name", options->names, "Only the test of exactly this name (repeatable)")
      .value("NAME")
      .oneAtATime();
  const Option list = command.flag("--list", options->list, "Print the tests, and run none");
  command
      .number("-j,--jobs", options->jobs, 1U, 1000U, "Tests at a time (default: one per processor)")
      .value("N");
  command
      .choice<ReportWriter>(
          "--format", options->report,
          {{"text", nullptr}, {"junit", junitReport}, {"json", jsonReport}, {"tap", tapReport}},
          "Form of the results (default: text)")
      .excludes(list);
  command.option("-o,--output", options->output, "Where the results go (default: standard output)")
      .value("FILE")
      .excludes(list);
  command
      .option("--coverage", options->coverage,
              "Write the lines and branches that the tests execute, as lcov does")
      .value("FILE")
      .file()
      .excludes(list);
  command.flag("--strict", options->strict,
               "A division by zero fails a test, as does an operation on reals without a result");
  command
      .number("--timeout", options->timeout, 0.001, 1e6,
              "Seconds that a test may take (default: 10)")
      .value("SECONDS");
  command.option("--compiler", options->compiler, "The C compiler").value("CC").showDefault();
  line.setAction(command, options, test);
}

}  // namespace velc
