#include "cli/watch.h"

namespace velc {

// Collects text and writes it when all records that there were have been taken.
class Watch::Output : public TextSink, public RecordSink {
 public:
  // An empty path writes no text.
  Output(const WatchOptions& options, const TracedPlaces& traced, std::uint64_t cycle,
         const TerminationGuard& guard)
      : trace_(traced.columns, traced.recordSize, cycle), guard_(guard) {
    if (options.writesFile()) file_.emplace(options.output, guard);
  }

  Trace& trace() { return trace_; }

  void write(std::string_view text) override {
    text_ += text;
    if (text_.size() >= kEnough) flush();
  }

  void take(std::string_view bytes) override {
    trace_.take(bytes);
    flush();
  }

  void end() {
    trace_.end();
    flush();
    if (file_) file_->replace();
  }

 private:
  static constexpr std::size_t kEnough = 1 << 16;

  void flush() {
    if (text_.empty()) return;
    if (file_) {
      file_->write(text_);
    } else {
      writeStandardOutput(text_, guard_);
    }
    text_.clear();
  }

  Trace trace_;
  const TerminationGuard& guard_;
  std::optional<GrowingFile> file_;
  std::string text_;
};

Watch::Watch(const WatchOptions& options, const Places& places, std::uint64_t cycle)
    : options_(options), cycle_(cycle), traced_(tracedPlaces(places, options.traced)) {
  if (!options.plot.empty()) plot_ = std::make_unique<Plot>(traced_.columns);
}

Watch::~Watch() = default;

void Watch::start(const TerminationGuard& guard) {
  if (options_.traced.empty()) return;
  output_ = std::make_unique<Output>(options_, traced_, cycle_, guard);
  if (plot_ != nullptr) plotFile_ = std::make_unique<GrowingFile>(options_.plot, guard);
  if (options_.writesText()) {
    text_ = traceSink(options_.format, traced_.columns, options_.changesOnly, *output_);
    output_->trace().add(*text_);
  }
  if (plot_ != nullptr) output_->trace().add(*plot_);
}

RecordSink* Watch::records() { return output_.get(); }

void Watch::end() {
  if (output_ == nullptr) return;
  output_->end();
  if (plot_ == nullptr) return;
  plotFile_->write(plot_->svg());
  plotFile_->replace();
}

}  // namespace velc
