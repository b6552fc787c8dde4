// The text of the option "localio.addr".
#pragma once

#include <string>

namespace velc {

// Why a text is not one of local I/O ranges; empty if it is one, or empty. The operators take any
// text, and refresh nothing, or the wrong bits, for most of them.
std::string checkLocalIo(const std::string& text);

}  // namespace velc
