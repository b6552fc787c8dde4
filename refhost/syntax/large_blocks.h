// Memory for arenas: the large blocks that they grow by cost few page faults.
#pragma once

#include <memory_resource>

namespace refhost {

// What an arena takes its blocks from. It has no state and is never freed.
std::pmr::memory_resource* largeBlocks();

}  // namespace refhost
