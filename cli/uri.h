// Paths as URIs.
#pragma once

#include <string>

namespace velc {

// A relative path stays relative, an absolute one becomes `file:///...`.
std::string fileUri(const std::string& path);
// The reverse for absolute ones. A URI of another scheme stays as it is.
std::string pathOfUri(const std::string& uri);

}  // namespace velc
