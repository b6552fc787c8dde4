#include "cli/commands.h"
#include "cli/each_file.h"
#include "cli/failure.h"
#include "cli/report.h"
#include "cli/translation.h"

namespace velc {

namespace {

struct CheckOptions {
  std::vector<std::string> files;
  bool each = false;
};

int check(const CommonOptions& common, const CheckOptions& options) {
  Report report(common);
  const auto session = startSession(common);
  const auto checkProgram = [&](const std::vector<std::string>& files) {
    session->restart();
    return analyse(*session, report, files, true) ? kSuccess : kProgramErrors;
  };
  const int code =
      options.each ? forEachFile(options.files, checkProgram) : checkProgram(options.files);
  report.finish();
  return code;
}

}  // namespace

void addCheckCommand(CommandLine& line) {
  Command command = line.addCommand("check", "Print the diagnostics of programs");
  const auto options = std::make_shared<CheckOptions>();
  line.addSources(command, options->files,
                  {{"text", DiagnosticsForm::Text},
                   {"json", DiagnosticsForm::Json},
                   {"sarif", DiagnosticsForm::Sarif}});
  addEachOption(command, options->each);
  line.setAction(command, options, check);
}

}  // namespace velc
