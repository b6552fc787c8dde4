// How many cases of a large test run.
#pragma once

#include <cstddef>

namespace refhost {

// Of cases by the thousand, one in so many is tried: sanitizers take a multiple of the time, and
// find what they look for in fewer.
constexpr std::size_t kOneCaseIn = ONE_CASE_IN;

}  // namespace refhost
