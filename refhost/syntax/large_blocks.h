// Memory for arenas in large blocks, which cost fewer page faults. Without it the translation of
// 100,000 calls has 3.4 times the page faults and takes 10 % longer.
#pragma once

#include <memory_resource>

namespace refhost {

// The upstream resource of an arena. It has no state and is never freed.
std::pmr::memory_resource* largeBlocks();

}  // namespace refhost
