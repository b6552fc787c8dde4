#include "cli/run_each.h"

#include <fmt/format.h>

#include <filesystem>

#include "cli/failure.h"
#include "cli/translation.h"
#include "cli/value_json.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

// `file` with the name of the program in it, unless it is none or a device.
std::string named(const std::string& file, const std::string& source) {
  std::error_code unknown;
  const bool isDevice = fs::exists(file, unknown) && !fs::is_regular_file(file, unknown);
  if (file.empty() || file == "-" || isDevice) return file;
  const fs::path path = file;
  const std::string program = source == "-" ? "stdin" : fs::path(source).stem().native();
  return path.parent_path() / (path.stem().native() + '-' + program + path.extension().native());
}

}  // namespace

RunOptions optionsOfOne(const RunOptions& options, const std::string& file) {
  RunOptions one = options;
  one.files = {file};
  one.retained = named(options.retained, file);
  one.watch.output = named(options.watch.output, file);
  one.watch.plot = named(options.watch.plot, file);
  return one;
}

void refuseForEach(const RunOptions& options) {
  if (options.realtime) throw Failure("--realtime is for one program, not for --each");
  std::vector<std::string> inputs = options.files;
  inputs.push_back(options.stimulus);
  std::vector<std::string> outputs;
  for (const std::string& file : options.files) {
    const RunOptions one = optionsOfOne(options, file);
    for (const std::string& output : {one.retained, one.watch.output, one.watch.plot}) {
      outputs.push_back(output);
    }
  }
  refuseClashes(inputs, outputs);
}

std::string EachValues::json(const std::string& name, const std::string& values) {
  std::string text = (any_ ? ",\n  " : "{\n  ") + jsonString(name) + ": ";
  any_ = true;
  for (const char c : values.substr(0, values.find_last_not_of('\n') + 1)) {
    text += c;
    if (c == '\n') text += "  ";
  }
  return text;
}

}  // namespace velc
