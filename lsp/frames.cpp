#include "lsp/frames.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "hostkit/folding.h"

namespace lsp {

namespace {

constexpr std::string_view kLength = "Content-Length:";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kHeaderEnd = "\r\n\r\n";
// Longer ones are no messages.
constexpr std::size_t kLongestHeader = 4096;
constexpr std::size_t kLongestContent = std::size_t{256} << 20;

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
  return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

// The value of the header's Content-Length. Other fields say nothing that is needed.
std::optional<std::size_t> lengthIn(std::string_view header) {
  std::optional<std::size_t> length;
  while (!header.empty()) {
    const std::string_view line = header.substr(0, header.find(kLineEnd));
    header.remove_prefix(std::min(line.size() + kLineEnd.size(), header.size()));
    if (!hostkit::equalIgnoringCase(line.substr(0, kLength.size()), kLength)) continue;
    const std::string_view digits = trimmed(line.substr(kLength.size()));
    std::size_t number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return std::nullopt;
    length = number;
  }
  return length;
}

}  // namespace

std::optional<FrameReader::Frame> FrameReader::next() {
  if (lost_ && !findHeader()) return std::nullopt;
  const std::size_t end = bytes_.find(kHeaderEnd);
  if (std::min(end, bytes_.size()) > kLongestHeader) return skip(1, "a header is too long");
  if (end == std::string::npos) return std::nullopt;
  const std::size_t begin = end + kHeaderEnd.size();
  const auto length = lengthIn(std::string_view(bytes_).substr(0, end));
  if (!length) return skip(begin, "a header has no Content-Length");
  if (*length > kLongestContent) return skip(begin, "a message is too long");
  if (bytes_.size() - begin < *length) return std::nullopt;
  Frame frame{false, bytes_.substr(begin, *length)};
  bytes_.erase(0, begin + *length);
  return frame;
}

std::optional<FrameReader::Frame> FrameReader::skip(std::size_t count, const char* fault) {
  bytes_.erase(0, count);
  lost_ = true;
  return Frame{true, fault};
}

// Most clients begin a header with the length.
bool FrameReader::findHeader() {
  const std::size_t found = bytes_.find(kLength);
  const std::size_t kept = std::min(bytes_.size(), kLength.size() - 1);
  lost_ = found == std::string::npos;
  bytes_.erase(0, lost_ ? bytes_.size() - kept : found);
  return !lost_;
}

std::string framed(const std::string& content) {
  return fmt::format("Content-Length: {}\r\n\r\n{}", content.size(), content);
}

}  // namespace lsp
