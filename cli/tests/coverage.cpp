#include "cli/tests/coverage.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "cli/compilation.h"
#include "cli/failure.h"
#include "cli/process.h"

namespace velc {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

struct Line {
  std::uint64_t count = 0;
  // By function, since several may share a line. Their branches have fixed places.
  std::map<std::string, std::vector<std::uint64_t>> branches;
};

using Lines = std::map<std::uint32_t, Line>;

struct Counts {
  std::size_t found = 0;
  std::size_t hit = 0;

  void add(bool executed) {
    ++found;
    hit += executed ? 1 : 0;
  }
  void operator+=(const Counts& other) {
    found += other.found;
    hit += other.hit;
  }
  std::string text(const char* what) const {
    const double share =
        found == 0 ? 100.0 : 100.0 * static_cast<double>(hit) / static_cast<double>(found);
    return fmt::format("{:.1f} % of {} {}", share, found, what);
  }
};

std::string gcovOf(const std::string& compiler) {
  fs::path tool(compiler);
  std::string name = tool.filename();
  const std::size_t at = name.find("gcc");
  if (at == std::string::npos) return "gcov";
  return tool.replace_filename(name.replace(at, 3, "gcov"));
}

json gcovReport(const fs::path& object, const std::string& gcov, const TerminationGuard& guard) {
  const fs::path report = fs::path(object).replace_extension(".json");
  // The report is longer than what runProcess() keeps.
  const ProcessResult result =
      runProcess({"sh", "-c", "cd \"$1\" && \"$2\" --json-format --stdout -b \"$3\" > \"$4\"", "sh",
                  object.parent_path(), gcov, object.filename(), report},
                 guard);
  if (!result.succeeded()) {
    throw Failure(fmt::format("'{}' failed, which reads the coverage:\n{}", gcov, result.output));
  }
  std::ifstream file(report);
  json parsed = json::parse(file, nullptr, false);
  if (parsed.is_discarded()) {
    throw Failure(fmt::format("'{}' does not know --json-format, which the coverage needs", gcov));
  }
  return parsed;
}

void addLines(const json& file, Lines& lines) {
  for (const json& entry : file.at("lines")) {
    Line& line = lines[entry.at("line_number").get<std::uint32_t>()];
    line.count += entry.at("count").get<std::uint64_t>();
    std::vector<std::uint64_t>& branches =
        line.branches[entry.value("function_name", std::string())];
    const json& counts = entry.at("branches");
    branches.resize(std::max(branches.size(), counts.size()));
    for (std::size_t i = 0; i < counts.size(); ++i) {
      branches[i] += counts[i].at("count").get<std::uint64_t>();
    }
  }
}

std::string fileRecord(const std::string& path, const Lines& lines, Counts& allLines,
                       Counts& allBranches) {
  Counts found;
  Counts branches;
  std::string lineText;
  std::string branchText;
  for (const auto& [number, line] : lines) {
    found.add(line.count > 0);
    lineText += fmt::format("DA:{},{}\n", number, line.count);
    int block = 0;
    for (const auto& [function, counts] : line.branches) {
      for (std::size_t i = 0; i < counts.size(); ++i) {
        branches.add(counts[i] > 0);
        const std::string taken = line.count == 0 ? "-" : std::to_string(counts[i]);
        branchText += fmt::format("BRDA:{},{},{},{}\n", number, block, i, taken);
      }
      ++block;
    }
  }
  allLines += found;
  allBranches += branches;
  return fmt::format("TN:\nSF:{}\n{}BRF:{}\nBRH:{}\n{}LF:{}\nLH:{}\nend_of_record\n",
                     fs::absolute(path).native(), branchText, branches.found, branches.hit,
                     lineText, found.found, found.hit);
}

}  // namespace

void requireCoverage(const std::string& compiler) {
  if (!isClang(compiler)) return;
  throw Failure(fmt::format(
      "--coverage needs gcc as the --compiler, and '{}' is clang, whose counters gcov cannot read",
      compiler));
}

Coverage readCoverage(const std::vector<fs::path>& objects, const std::string& compiler,
                      const refhost::SourceManager& sources, const refhost::TestProgram& tests,
                      const TerminationGuard& guard) {
  std::map<std::string, Lines> files;
  for (int i = 0; i < sources.count(); ++i) files[sources.path(static_cast<std::uint32_t>(i))];
  for (const fs::path& object : objects) {
    const json report = gcovReport(object, gcovOf(compiler), guard);
    for (const json& file : report.at("files")) {
      const auto found = files.find(file.at("file").get<std::string>());
      if (found != files.end()) addLines(file, found->second);
    }
  }
  for (const refhost::SourceRange& part : tests.parts) {
    Lines& lines = files[sources.path(part.begin.file())];
    const vel::TextLocation last(part.begin.file(), part.begin.offset() + part.length - 1);
    lines.erase(lines.lower_bound(sources.lineNumber(part.begin)),
                lines.upper_bound(sources.lineNumber(last)));
  }
  Coverage coverage;
  Counts lines;
  Counts branches;
  for (const auto& [path, found] : files) {
    if (!found.empty()) coverage.tracefile += fileRecord(path, found, lines, branches);
  }
  coverage.summary =
      lines.found == 0
          ? "covered: nothing, since the sources have nothing but tests\n"
          : fmt::format("covered: {}, {}\n", lines.text("lines"), branches.text("branches"));
  return coverage;
}

}  // namespace velc
