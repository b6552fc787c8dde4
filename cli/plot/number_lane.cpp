#include "cli/plot/number_lane.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "hostkit/elementary_types.h"

namespace velc {

namespace {

using vel::BasicDataType;

template <typename T>
double loaded(std::string_view bytes) {
  T value{};
  std::memcpy(&value, bytes.data(), sizeof value);
  return static_cast<double>(value);
}

double numberOf(BasicDataType type, std::string_view bytes) {
  switch (type) {
    case BasicDataType::SInt:
      return loaded<std::int8_t>(bytes);
    case BasicDataType::Int:
      return loaded<std::int16_t>(bytes);
    case BasicDataType::DInt:
    case BasicDataType::Time:
      return loaded<std::int32_t>(bytes);
    case BasicDataType::LInt:
    case BasicDataType::LTime:
      return loaded<std::int64_t>(bytes);
    case BasicDataType::USInt:
      return loaded<std::uint8_t>(bytes);
    case BasicDataType::UInt:
      return loaded<std::uint16_t>(bytes);
    case BasicDataType::UDInt:
      return loaded<std::uint32_t>(bytes);
    case BasicDataType::ULInt:
      return loaded<std::uint64_t>(bytes);
    case BasicDataType::Real:
      return loaded<float>(bytes);
    default:
      return loaded<double>(bytes);
  }
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

template <typename HeightOf>
std::string stepPath(const Buckets<NumberBucket>& buckets, const Frame& frame, std::uint64_t scans,
                     HeightOf heightOf) {
  StepLine line;
  const double width = frame.width * static_cast<double>(buckets.scansInEach()) /
                       static_cast<double>(std::max<std::uint64_t>(scans, 1));
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
  if (std::isfinite(value)) bucket.first = bucket.last = bucket.low = bucket.high = value;
  return bucket;
}

void NumberBucket::append(const NumberBucket& next) {
  last = next.last;
  low = std::min(low, next.low);
  high = std::max(high, next.high);
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
  if (!hostkit::isDuration(shape_.type) || isConstant()) return {};
  const double nanoseconds = shape_.type == BasicDataType::Time ? 1e6 : 1;
  Unit unit = timeUnit(std::max(std::abs(low_), std::abs(high_)) * nanoseconds);
  unit.size /= nanoseconds;
  return unit;
}

void NumberLane::draw(const Frame& frame, std::uint64_t scans, std::string& svg) const {
  constexpr int kMostTicks = 5;
  if (isConstant()) return drawBox(frame, text_, "box", svg);
  if (low_ > high_) return;
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
