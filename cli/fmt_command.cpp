#include <fmt/format.h>

#include "cli/commands.h"
#include "cli/each_file.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/report.h"
#include "cli/source_files.h"
#include "refhost/format/format.h"

namespace velc {

namespace {

struct FormatOptions {
  std::vector<std::string> files;
  bool check = false;
};

int formatFile(const FormatOptions& options, Report& report, const std::string& file) {
  refhost::SourceManager sources;
  loadSource(sources, file);
  const refhost::Formatting result = refhost::formatSource(sources, 0);
  report.add(sources, result.errors, 0, 1);
  if (!result.errors.empty()) return kProgramErrors;
  if (options.check) {
    if (result.edits.empty()) return kSuccess;
    writeStandardOutput(sourceName(file) + '\n');
    return kProgramErrors;
  }
  const bool isInput = file == "-";
  if (result.edits.empty() && !isInput) return kSuccess;
  std::string text(sources.byteOrderMark(0));
  text += refhost::withEdits(sources.text(0), result.edits);
  if (isInput) {
    writeStandardOutput(text);
  } else {
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
  line.addFiles(command, options->files);
  line.addForm(command);
  line.setAction(command, options, format);
}

}  // namespace velc
