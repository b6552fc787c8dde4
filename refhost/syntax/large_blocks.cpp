#include "refhost/syntax/large_blocks.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstddef>

namespace refhost {
namespace {

class LargeBlocks final : public std::pmr::memory_resource {
  static constexpr std::size_t kHugePage = std::size_t{2} << 20;

  static std::size_t alignmentFor(std::size_t size, std::size_t alignment) {
    return size >= kHugePage ? std::max(alignment, kHugePage) : alignment;
  }

  void* do_allocate(std::size_t size, std::size_t alignment) override {
    void* block = std::pmr::new_delete_resource()->allocate(size, alignmentFor(size, alignment));
#ifdef MADV_HUGEPAGE
    // This is only advice: a system without huge pages uses its normal ones.
    if (size >= kHugePage) static_cast<void>(madvise(block, size, MADV_HUGEPAGE));
#endif
    return block;
  }
  void do_deallocate(void* block, std::size_t size, std::size_t alignment) override {
    std::pmr::new_delete_resource()->deallocate(block, size, alignmentFor(size, alignment));
  }
  bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
    return this == &other;
  }
};

}  // namespace

std::pmr::memory_resource* largeBlocks() {
  static LargeBlocks blocks;
  return &blocks;
}

}  // namespace refhost
