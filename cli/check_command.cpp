#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/translation.h"

namespace velc {

namespace {

using Files = std::vector<std::string>;

int check(const CommonOptions& common, const Files& files) {
  const auto session = startSession(common);
  return analyse(*session, common, files) ? kSuccess : kProgramErrors;
}

}  // namespace

void addCheckCommand(CommandLine& line) {
  static const FormNames forms = {{"text", DiagnosticsForm::Text},
                                  {"json", DiagnosticsForm::Json},
                                  {"sarif", DiagnosticsForm::Sarif}};
  CLI::App& command = line.addCommand("check", "Print the diagnostics of programs");
  const auto files = std::make_shared<Files>();
  addSources(command, line.common, *files, forms);
  line.setAction(command, files, check);
}

}  // namespace velc
