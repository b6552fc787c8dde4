#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/depfile.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/split_folder.h"
#include "cli/translation.h"

namespace velc {

namespace {

struct TranslateOptions {
  std::vector<std::string> files;
  std::string output = "-";  // "-": standard output
  refhost::TranslationOptions translation;
  std::string header;     // empty for none
  std::string folder;     // of the C as several files; empty for one file
  std::string depfile;    // empty for none
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

namespace fs = std::filesystem;

// The path of the header from the folder of the C file on.
std::string pathOfHeader(const TranslateOptions& options) {
  if (options.header.empty()) return {};
  const fs::path folder = options.output == "-" ? "." : fs::path(options.output).parent_path();
  std::error_code error;
  const fs::path from = fs::weakly_canonical(folder.empty() ? "." : folder, error);
  std::string path = fs::weakly_canonical(options.header, error).lexically_proximate(from);
  if (path.find_first_of("\"\n") != std::string::npos) {
    throw Failure(fmt::format("C cannot include a file named {}", options.header));
  }
  return path;
}

// False when there are errors.
bool writeC(refhost::Session& session, const CommonOptions& common,
            const TranslateOptions& options) {
  if (!options.folder.empty()) {
    const auto files = translateToFiles(session, common, options.translation.lines);
    if (!files.empty()) writeSplitFolder(options.folder, files);
    return !files.empty();
  }
  refhost::TranslationOptions form = options.translation;
  form.header = pathOfHeader(options);
  const auto text = translateToC(session, common, form);
  if (!text) return false;
  if (!options.header.empty()) writeIfDifferent(options.header, session.header());
  if (options.output != "-") {
    writeFile(options.output, *text);
  } else if (!options.callTree) {
    writeStandardOutput(*text);
  }
  return true;
}

void writeDepfile(const CommonOptions& common, const TranslateOptions& options) {
  std::vector<std::string> inputs;
  for (const std::string& file : options.files) {
    if (file != "-") inputs.push_back(file);
  }
  for (const std::string& library : librariesOf(common)) inputs.push_back(library);
  const std::string output =
      options.folder.empty() ? options.output : (fs::path(options.folder) / kFileList).native();
  const std::string text = depfileText(output, inputs);
  if (options.depfile == "-") {
    writeStandardOutput(text);
  } else {
    writeFile(options.depfile, text);
  }
}

int translate(const CommonOptions& common, const TranslateOptions& options) {
  refuseClashes(options.files, {options.output, options.header, options.depfile});
  if (!options.depfile.empty() && options.folder.empty() && options.output == "-") {
    throw Failure("--depfile: standard output is no file; give its name with -o");
  }
  if (options.header == "-") {
    throw Failure("--header: standard output is no file that the C can include; give a name");
  }
  if (options.depfile == "-" && options.callTree) {
    throw Failure("standard output cannot be two outputs");
  }
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files)) return kProgramErrors;
  if (!writeC(*session, common, options)) return kProgramErrors;
  if (!options.depfile.empty()) writeDepfile(common, options);
  if (options.callTree) writeStandardOutput(callTreeText(*session));
  return kSuccess;
}

}  // namespace

void addTranslateCommand(CommandLine& line) {
  Command command = line.addCommand("translate", "Translate programs into C");
  const auto options = std::make_shared<TranslateOptions>();
  line.addSources(command, options->files);
  const Option output =
      command.option("-o,--output", options->output, "Where the C goes (default: standard output)")
          .value("OUT.c");
  const Option header = command
                            .option("--header", options->header,
                                    "Write the declarations into a header, for other C and C++")
                            .value("OUT.h");
  command
      .option("--split", options->folder,
              "Write a C file and a header for each unit, and only those that have changed")
      .value("FOLDER")
      .excludes(output)
      .excludes(header);
  command
      .option("--depfile", options->depfile,
              "Write a rule for make and ninja that names the files which the C depends on")
      .value("FILE");
  command.flag("--lines", options->translation.lines,
               "Have the C name the lines of the Structured Text (#line), for debuggers");
  command.flag("--call-tree", options->callTree,
               "Print who calls what as JSON; the C goes only where -o says");
  line.setAction(command, options, translate);
}

}  // namespace velc
