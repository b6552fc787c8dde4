#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "cli/commands.h"
#include "cli/each_file.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/report.h"
#include "cli/source_files.h"
#include "cli/unified_diff.h"
#include "refhost/format/format.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

struct FormatOptions {
  std::vector<std::string> files;
  bool check = false;
  bool diff = false;
};

// What the file has: a byte order mark does not belong to the text of a source.
std::string withMark(const refhost::SourceManager& sources, std::string_view text) {
  return std::string(sources.byteOrderMark(0)).append(text);
}

std::string differences(const refhost::SourceManager& sources, const std::string& file,
                        std::vector<refhost::LayoutEdit> edits) {
  const auto shift = static_cast<std::uint32_t>(sources.byteOrderMark(0).size());
  for (refhost::LayoutEdit& edit : edits) {
    edit.range = {edit.range.begin + shift, edit.range.end + shift};
  }
  return unifiedDiff(sourceName(file), withMark(sources, sources.text(0)), edits);
}

// A pipe or a device cannot be replaced.
void refuseOther(const std::string& file) {
  std::error_code unknown;
  const fs::file_status status = fs::status(file, unknown);
  if (!fs::exists(status) || fs::is_regular_file(status)) return;
  throw Failure(fmt::format("{} is not a file that can be replaced", file));
}

// Files are replaced, which asks for no right to write to them.
void refuseReadOnly(const std::string& file) {
  if (access(file.c_str(), W_OK) == 0) return;
  throw Failure(fmt::format("cannot write {}: {}", file, std::strerror(errno)));
}

int formatFile(const FormatOptions& options, Report& report, const std::string& file) {
  const bool isInput = file == "-";
  if (!isInput && !options.check && !options.diff) refuseOther(file);
  refhost::SourceManager sources;
  loadSource(sources, file);
  const refhost::Formatting result = refhost::formatSource(sources, 0);
  report.add(sources, result.errors, 0, 1);
  if (!result.errors.empty()) return kProgramErrors;
  if (result.edits.empty() && (!isInput || options.check || options.diff)) return kSuccess;
  if (options.diff || options.check) {
    writeStandardOutput(options.diff ? differences(sources, file, result.edits)
                                     : sourceName(file) + '\n');
    return kProgramErrors;
  }
  const std::string text = withMark(sources, refhost::withEdits(sources.text(0), result.edits));
  if (isInput) {
    writeStandardOutput(text);
  } else {
    refuseReadOnly(file);
    writeFile(file, text);
  }
  return kSuccess;
}

int format(const CommonOptions& common, const FormatOptions& options) {
  Report report(common);
  const int code = forEachFile(options.files, [&](const std::vector<std::string>& files) {
    return formatFile(options, report, files.front());
  });
  report.finish();
  return code;
}

}  // namespace

void addFormatCommand(CommandLine& line) {
  Command command = line.addPlainCommand("fmt", "Format programs, in place");
  const auto options = std::make_shared<FormatOptions>();
  command.flag("--check", options->check,
               "Write nothing, but name the files that would change; the exit code is 1 then");
  command.flag("--diff", options->diff,
               "Write nothing, but show what would change; the exit code is 1 then");
  line.addFiles(command, options->files);
  line.addForm(command);
  line.setAction(command, options, format);
}

}  // namespace velc
