#include "bench/support/allocations.h"

#include <cstdlib>
#include <new>

namespace {

// Global, because operator new has no object that could hold it. Only one thread allocates.
std::size_t taken = 0;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

}  // namespace

std::size_t allocations() { return taken; }

void* operator new(std::size_t size) {
  ++taken;
  void* memory = std::malloc(size != 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
