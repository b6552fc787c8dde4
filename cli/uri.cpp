#include "cli/uri.h"

#include <fmt/format.h>

#include <cctype>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <string_view>

namespace velc {

std::string fileUri(const std::string& path) {
  const std::filesystem::path normal = std::filesystem::path(path).lexically_normal();
  std::string uri = normal.is_absolute() ? "file://" : "";
  for (const char c : normal.generic_string()) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte < 0x80 && (std::isalnum(byte) != 0 || std::strchr("/-._~", c));
    uri += plain ? std::string(1, c) : fmt::format("%{:02X}", byte);
  }
  return uri;
}

std::string pathOfUri(const std::string& uri) {
  constexpr std::string_view kScheme = "file://";
  if (uri.compare(0, kScheme.size(), kScheme) != 0) return uri;
  // Behind a host, which can only be this one.
  const std::size_t begin = std::min(uri.find('/', kScheme.size()), uri.size());
  std::string path;
  for (std::size_t i = begin; i < uri.size(); ++i) {
    unsigned char byte = 0;
    const char* const digits = uri.data() + i + 1;
    const bool escaped = uri[i] == '%' && i + 2 < uri.size() &&
                         std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
    path += escaped ? static_cast<char>(byte) : uri[i];
    if (escaped) i += 2;
  }
  return std::filesystem::path(path).lexically_normal();
}

}  // namespace velc
