// Several programs that run one behind the other with the same options.
#pragma once

#include <string>

#include "cli/run_options.h"

namespace velc {

// The options for the program of one file: files that it writes have its name in theirs,
// `trace-lift.csv` for `trace.csv`.
RunOptions optionsOfOne(const RunOptions& options, const std::string& file);

// Throws Failure for options that several programs cannot have, and if they would write the same
// file or one of the sources.
void refuseForEach(const RunOptions& options);

// The values of the programs as members of one JSON object.
class EachValues {
 public:
  // The text for the values of one program, which are an object, too.
  std::string json(const std::string& name, const std::string& values);
  std::string jsonEnd() const { return any_ ? "\n}\n" : "{\n}\n"; }

 private:
  bool any_ = false;
};

}  // namespace velc
