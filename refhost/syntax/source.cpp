#include "refhost/syntax/source.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <system_error>
#include <utility>

#include "hostkit/encoding.h"

namespace refhost {

namespace {

// A vel::TextLocation has 32 bits for the offset in bytes.
constexpr std::size_t kMaxFileSize = std::numeric_limits<std::uint32_t>::max() - 1;
constexpr std::size_t kReadSize = std::size_t{1} << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string systemReason(int code) { return std::generic_category().message(code); }

}  // namespace

int SourceManager::load(const std::string& path, std::string& error) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             &std::fclose);
  if (!file) {
    error = systemReason(errno);
    return -1;
  }
  std::error_code unknown;
  const std::uintmax_t size = std::filesystem::file_size(path, unknown);
  // One more byte, so that the read that detects the end of the file does not reallocate.
  const bool known = !unknown && size <= kMaxFileSize;
  return read(file.get(), path, known ? static_cast<std::size_t>(size) + 1 : 0, error);
}

int SourceManager::load(std::FILE* file, std::string name, std::string& error) {
  return read(file, std::move(name), 0, error);
}

int SourceManager::read(std::FILE* file, std::string name, std::size_t expected,
                        std::string& error) {
  std::string text;
  text.reserve(expected);
  for (;;) {
    const std::size_t size = text.size();
    const std::size_t room = text.capacity() - size;
    text.resize(size + (room > 0 ? room : std::max(kReadSize, size / 2)));
    const std::size_t got = std::fread(&text[size], 1, text.size() - size, file);
    const int code = errno;
    text.resize(size + got);
    if (std::ferror(file) != 0) {
      error = systemReason(code);
      return -1;
    }
    if (text.size() > kMaxFileSize) {
      error = systemReason(EFBIG);
      return -1;
    }
    if (std::feof(file) != 0) break;
  }
  text.shrink_to_fit();
  return add(std::move(name), std::move(text));
}

int SourceManager::add(std::string name, std::string text) {
  const bool marked = text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0;
  if (marked) text.erase(0, kByteOrderMark.size());
  files_.push_back({std::move(name), std::move(text), marked, {}});
  return count() - 1;
}

int SourceManager::count() const { return static_cast<int>(files_.size()); }

const std::string& SourceManager::path(std::uint32_t file) const { return files_[file].path; }

std::string_view SourceManager::byteOrderMark(std::uint32_t file) const {
  return files_[file].marked ? kByteOrderMark : std::string_view();
}

std::string_view SourceManager::text(std::uint32_t file) const { return files_[file].text; }

const std::vector<std::uint32_t>& SourceManager::lineStarts(const File& file) const {
  if (file.lineStarts.empty()) {
    file.isUtf8 = hostkit::isUtf8(file.text);
    file.lineStarts.push_back(0);
    for (std::size_t end = file.text.find_first_of(kLineEnds); end != std::string::npos;
         end = file.text.find_first_of(kLineEnds, end + 1)) {
      if (file.text.compare(end, 2, "\r\n") == 0) ++end;
      file.lineStarts.push_back(static_cast<std::uint32_t>(end + 1));
    }
  }
  return file.lineStarts;
}

std::uint32_t SourceManager::lineNumber(vel::TextLocation location) const {
  const auto& starts = lineStarts(files_[location.file()]);
  const auto next = std::upper_bound(starts.begin(), starts.end(), location.offset());
  return static_cast<std::uint32_t>(next - starts.begin());
}

LineColumn SourceManager::position(vel::TextLocation location) const {
  const File& file = files_[location.file()];
  const auto& starts = lineStarts(file);
  const auto offset = std::min(location.offset(), static_cast<std::uint32_t>(file.text.size()));
  const auto next = std::upper_bound(starts.begin(), starts.end(), offset);
  const auto start = *(next - 1);
  const std::string_view before = std::string_view(file.text).substr(start, offset - start);
  const std::size_t characters = file.isUtf8 ? hostkit::countCharacters(before) : before.size();
  return {static_cast<std::uint32_t>(next - starts.begin()),
          static_cast<std::uint32_t>(characters) + 1};
}

std::uint32_t SourceManager::offsetInLine(vel::TextLocation location) const {
  const auto& starts = lineStarts(files_[location.file()]);
  return location.offset() - starts[lineNumber(location) - 1];
}

std::string_view SourceManager::line(vel::TextLocation location) const {
  return line(location.file(), lineNumber(location));
}

std::string_view SourceManager::line(std::uint32_t file, std::uint32_t number) const {
  const std::string_view text = files_[file].text;
  const auto& starts = lineStarts(files_[file]);
  if (number == 0 || number > starts.size()) return {};
  const std::size_t end = number < starts.size() ? starts[number] : text.size();
  const std::string_view line = text.substr(starts[number - 1], end - starts[number - 1]);
  return line.substr(0, line.find_last_not_of(kLineEnds) + 1);
}

}  // namespace refhost
