// What users watch while a program runs: its trace, in text and in pictures.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/output_file.h"
#include "cli/plot/plot.h"
#include "cli/run_options.h"
#include "cli/termination_guard.h"
#include "cli/trace/trace.h"

namespace velc {

class Watch {
 public:
  // Throws Failure for places that there are not. `cycle` is the time between scans in
  // milliseconds.
  Watch(const WatchOptions& options, const Places& places, std::uint64_t cycle);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  const std::vector<refhost::ProgramVariable>& places() const { return traced_.places; }

  // Opens the files, before the program runs; throws Failure. `guard` must outlive the object.
  void start(const TerminationGuard& guard);
  // Null when nothing is watched.
  RecordSink* records();
  // Completes the files, also when the program did not run to its end. Without it the files stay as
  // they were.
  void end();

 private:
  class Output;

  const WatchOptions& options_;
  std::uint64_t cycle_;
  TracedPlaces traced_;
  std::unique_ptr<Output> output_;
  std::unique_ptr<Plot> plot_;
  std::unique_ptr<GrowingFile> plotFile_;
  std::unique_ptr<TraceSink> text_;
};

}  // namespace velc
