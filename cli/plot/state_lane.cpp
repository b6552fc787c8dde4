#include "cli/plot/state_lane.h"

#include <algorithm>

#include "hostkit/encoding.h"

namespace velc {

namespace {

constexpr std::size_t kMostCharacters = 60;  // of a text that is kept

}  // namespace

void StateLane::add(const Cell& cell) {
  if (cell.changed) {
    value_.text = cell.text.substr(0, hostkit::sizeOfFirst(kMostCharacters, cell.text));
  }
  buckets_.add(value_);
}

std::vector<StateLane::Stretch> StateLane::stretches() const {
  std::vector<Stretch> result;
  std::size_t end = 0;
  for (const StateBucket& bucket : buckets_.buckets()) {
    const bool same = !result.empty() && result.back().state->mixed == bucket.mixed &&
                      result.back().state->text == bucket.text;
    if (!same) result.push_back({&bucket, static_cast<double>(end), 0});
    result.back().end = static_cast<double>(++end);
  }
  return result;
}

void StateLane::draw(const Frame& frame, std::uint64_t scans, std::string& svg) const {
  constexpr double kVisible = 2;
  const double width = frame.width * static_cast<double>(buckets_.scansInEach()) /
                       static_cast<double>(std::max<std::uint64_t>(scans, 1));
  std::vector<Stretch> all = stretches();
  for (std::size_t i = 1; i + 1 < all.size(); ++i) {
    // A single change somewhere in a bucket: the two states meet in its middle.
    const bool change = all[i].state->mixed && (all[i].end - all[i].begin) * width < kVisible;
    if (!change) continue;
    all[i].begin = all[i].end = (all[i].begin + all[i].end) / 2;
    all[i - 1].end = all[i + 1].begin = all[i].begin;
  }
  for (const Stretch& stretch : all) {
    const double left = frame.left + width * stretch.begin;
    const double right = std::min(frame.left + width * stretch.end, frame.right());
    if (stretch.end <= stretch.begin) continue;
    drawBox({left, frame.top, right - left, frame.height}, stretch.state->text,
            stretch.state->mixed ? "mixed" : "box", svg);
  }
}

}  // namespace velc
