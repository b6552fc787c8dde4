#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/translation.h"

namespace velc {

namespace {

struct TranslateOptions {
  std::vector<std::string> files;
  std::string output = "-";  // "-": standard output
  refhost::TranslationOptions translation;
  bool callTree = false;  // print the call tree instead of the C to standard output
};

std::string callTreeText(refhost::Session& session) {
  auto edges = nlohmann::ordered_json::array();
  for (const refhost::CallEdge& edge : session.calls()) {
    edges.push_back({{"caller", edge.caller},
                     {"callee", edge.callee},
                     {"line", session.sources().position(edge.location).line}});
  }
  return edges.dump(2) + '\n';
}

int translate(const CommonOptions& common, const TranslateOptions& options) {
  refuseSourceAsOutput(options.files, options.output);
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files)) return kProgramErrors;
  const auto text = translateToC(*session, common, options.translation);
  if (!text) return kProgramErrors;
  if (options.output != "-") writeFile(options.output, *text);
  if (options.callTree) {
    writeStandardOutput(callTreeText(*session));
  } else if (options.output == "-") {
    writeStandardOutput(*text);
  }
  return kSuccess;
}

}  // namespace

void addTranslateCommand(CommandLine& line) {
  CLI::App& command = line.addCommand("translate", "Translate programs into C");
  const auto options = std::make_shared<TranslateOptions>();
  addSources(command, line.common, options->files);
  command.add_option("-o,--output", options->output, "Where the C goes (default: standard output)")
      ->type_name("OUT.c");
  command.add_flag("--lines", options->translation.lines,
                   "Have the C name the lines of the Structured Text (#line), for debuggers");
  command.add_flag("--call-tree", options->callTree,
                   "Print who calls what as JSON; the C goes only where -o says");
  line.setAction(command, options, translate);
}

}  // namespace velc
