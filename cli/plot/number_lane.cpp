#include "cli/plot/number_lane.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "hostkit/elementary_types.h"
#include "refhost/value_memory.h"

namespace velc {

namespace {

using vel::BasicDataType;

double numberOf(BasicDataType type, std::string_view bytes) {
  if (hostkit::isFloat(type)) return refhost::realAt(bytes);
  const bool isSigned = hostkit::isSigned(type) || hostkit::isDuration(type);
  return isSigned ? static_cast<double>(refhost::signedAt(bytes))
                  : static_cast<double>(refhost::unsignedAt(bytes));
}

// Draws values that hold until the next scan, from left to right.
class StepLine {
 public:
  // Goes on at `x` after a gap.
  void begin(double x, double y) {
    append('M', x);
    path_ += ' ' + px(y);
    y_ = y;
    open_ = true;
  }
  void goTo(double y) {
    if (px(y) == px(y_)) return;
    append('V', y);
    y_ = y;
  }
  // Every line ends so, and so does each of its levels.
  void holdUntil(double x) { append('H', x); }
  void end() { open_ = false; }
  bool isOpen() const { return open_; }

  const std::string& path() const { return path_; }

 private:
  void append(char command, double value) {
    // A second H in a row replaces the first.
    if (command == 'H' && lastCommand_ == 'H') path_.resize(lastSize_);
    lastSize_ = path_.size();
    lastCommand_ = command;
    path_ += command + px(value);
  }

  std::string path_;
  double y_ = 0;
  bool open_ = false;
  char lastCommand_ = 0;
  std::size_t lastSize_ = 0;
};

double bucketWidth(const Buckets<NumberBucket>& buckets, const Frame& frame, std::uint64_t scans) {
  return frame.width * static_cast<double>(buckets.scansInEach()) /
         static_cast<double>(std::max<std::uint64_t>(scans, 1));
}

template <typename HeightOf>
std::string stepPath(const Buckets<NumberBucket>& buckets, const Frame& frame, std::uint64_t scans,
                     HeightOf heightOf) {
  StepLine line;
  const double width = bucketWidth(buckets, frame, scans);
  double x = frame.left;
  for (const NumberBucket& bucket : buckets.buckets()) {
    if (bucket.isGap()) {
      line.end();
    } else {
      const double first = heightOf(std::isfinite(bucket.first) ? bucket.first : bucket.low);
      const double last = heightOf(std::isfinite(bucket.last) ? bucket.last : bucket.high);
      if (!line.isOpen()) line.begin(x, first);
      for (const double y : {first, heightOf(bucket.low), heightOf(bucket.high), last})
        line.goTo(y);
      line.holdUntil(std::min(x + width, frame.right()));
    }
    x += width;
  }
  return line.path();
}

}  // namespace

NumberBucket NumberBucket::of(double value) {
  NumberBucket bucket;
  if (std::isfinite(value)) {
    bucket.first = bucket.last = bucket.low = bucket.high = value;
  } else {
    bucket.beyond = std::isnan(value) ? NaN : value > 0 ? Above : Below;
  }
  return bucket;
}

void NumberBucket::append(const NumberBucket& next) {
  last = next.last;
  low = std::min(low, next.low);
  high = std::max(high, next.high);
  beyond |= next.beyond;
}

void NumberLane::add(const Cell& cell) {
  if (cell.changed) {
    value_ = numberOf(shape_.type, cell.bytes);
    text_ = cell.text;
    ++changes_;
  }
  if (std::isfinite(value_)) {
    low_ = std::min(low_, value_);
    high_ = std::max(high_, value_);
  }
  buckets_.add(NumberBucket::of(value_));
}

Unit NumberLane::unitOf() const {
  if (isConstant()) return {};
  const double highest = std::max(std::abs(low_), std::abs(high_));
  if (!hostkit::isDuration(shape_.type)) {
    // The ends of an axis for larger values would be infinite.
    return highest > 1e306 ? Unit{1e306, "1E306"} : Unit{};
  }
  const double nanoseconds = shape_.type == BasicDataType::Time ? 1e6 : 1;
  Unit unit = timeUnit(highest * nanoseconds);
  unit.size /= nanoseconds;
  return unit;
}

// Infinities at the edges of the lane, what is no number in its middle.
void NumberLane::drawBeyond(const Frame& frame, std::uint64_t scans, std::string& svg) const {
  struct Kind {
    NumberBucket::Beyond beyond;
    const char* text;
    double place;  // 0 at the top, 1 at the bottom
  };
  constexpr double kHeight = 18;
  constexpr double kFewest = 1;  // of the width, to be seen
  const double width = bucketWidth(buckets_, frame, scans);
  const std::vector<NumberBucket>& buckets = buckets_.buckets();
  for (const Kind& kind : {Kind{NumberBucket::Above, "Inf", 0}, Kind{NumberBucket::NaN, "NaN", 0.5},
                           Kind{NumberBucket::Below, "-Inf", 1}}) {
    const auto has = [&](std::size_t i) {
      return i < buckets.size() && (buckets[i].beyond & kind.beyond) != 0;
    };
    for (std::size_t begin = 0; begin < buckets.size(); ++begin) {
      if (!has(begin)) continue;
      std::size_t end = begin;
      while (has(end)) ++end;
      const double left = frame.left + width * static_cast<double>(begin);
      const double right = std::min(frame.left + width * static_cast<double>(end), frame.right());
      drawBox({left, frame.top + (frame.height - kHeight) * kind.place,
               std::max(right - left, kFewest), kHeight},
              kind.text, "beyond", svg);
      begin = end;
    }
  }
}

void NumberLane::draw(const Frame& frame, std::uint64_t scans, std::string& svg) const {
  if (isConstant()) return drawBox(frame, text_, "box", svg);
  if (low_ <= high_) drawAxisAndLine(frame, scans, svg);
  drawBeyond(frame, scans, svg);  // on top of a line that may be a band
}

void NumberLane::drawAxisAndLine(const Frame& frame, std::uint64_t scans, std::string& svg) const {
  constexpr int kMostTicks = 5;
  const Unit unit = unitOf();
  const bool whole = hostkit::isInteger(shape_.type);
  double low = low_ / unit.size;
  double high = high_ / unit.size;
  roundRange(low, high, kMostTicks, whole);
  const auto heightOf = [&](double inUnits) {
    return frame.bottom() - (inUnits - low) / (high - low) * frame.height;
  };
  for (const Tick& tick : ticksBetween(low, high, kMostTicks, whole)) {
    const std::string y = px(heightOf(tick.value));
    svg += fmt::format("<path class=\"grid\" d=\"M{} {}H{}\"/>\n", px(frame.left), y,
                       px(frame.right()));
    svg += fmt::format("<text class=\"tick\" x=\"{}\" y=\"{}\" text-anchor=\"end\">{}</text>\n",
                       px(frame.left - 6), px(heightOf(tick.value) + 3.5), svgText(tick.label));
  }
  svg += fmt::format(
      "<path class=\"line\" d=\"{}\"/>\n",
      stepPath(buckets_, frame, scans, [&](double value) { return heightOf(value / unit.size); }));
}

void LevelLane::add(const Cell& cell) {
  buckets_.add(NumberBucket::of(cell.text == "TRUE" ? 1 : 0));
}

void LevelLane::draw(const Frame& frame, std::uint64_t scans, std::string& svg) const {
  if (buckets_.buckets().empty()) return;
  const std::string path = stepPath(
      buckets_, frame, scans, [&](double value) { return value > 0 ? frame.top : frame.bottom(); });
  svg +=
      fmt::format("<path class=\"fill\" d=\"{0}V{1}H{2}Z\"/>\n<path class=\"line\" d=\"{0}\"/>\n",
                  path, px(frame.bottom()), px(frame.left));
}

}  // namespace velc
