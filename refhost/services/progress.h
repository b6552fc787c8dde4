// How far the analysis of a declaration that others name has come.
#pragma once

#include <cstdint>

namespace refhost {

enum class Progress : std::uint8_t { Waiting, Open, Done };

}  // namespace refhost
