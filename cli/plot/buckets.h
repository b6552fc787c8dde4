// Values of any number of scans in limited memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace velc {

// Each bucket has the values of as many consecutive scans as the others, which double when there
// are too many buckets; the last one may have fewer. `Bucket` has the operation
// `void append(const Bucket& next)`, which makes it that of its own scans and of those of `next`.
template <typename Bucket>
class Buckets {
 public:
  static constexpr std::size_t kMost = 2048;

  // Adds the value of the next scan.
  void add(Bucket value) {
    if (scansInLast_ == scansInEach_ || buckets_.empty()) {
      if (buckets_.size() == kMost) mergePairs();
      buckets_.push_back(std::move(value));
      scansInLast_ = 0;
    } else {
      buckets_.back().append(value);
    }
    ++scansInLast_;
  }

  const std::vector<Bucket>& buckets() const { return buckets_; }
  std::uint64_t scansInEach() const { return scansInEach_; }

 private:
  void mergePairs() {
    for (std::size_t i = 0; i < kMost / 2; ++i) {
      Bucket merged = std::move(buckets_[2 * i]);
      merged.append(buckets_[2 * i + 1]);
      buckets_[i] = std::move(merged);
    }
    buckets_.resize(kMost / 2);
    scansInEach_ *= 2;
  }

  std::vector<Bucket> buckets_;
  std::uint64_t scansInEach_ = 1;
  std::uint64_t scansInLast_ = 0;
};

}  // namespace velc
