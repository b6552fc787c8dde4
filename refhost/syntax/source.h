// Source files in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "host/text_location.h"

namespace refhost {

struct LineColumn {
  std::uint32_t line = 1;    // from 1
  std::uint32_t column = 1;  // from 1, in characters; in bytes if the file is not UTF-8
};

// The characters that end a line, alone or both.
constexpr std::string_view kLineEnds = "\r\n";

class SourceManager {
 public:
  // Reads a file and returns its index. On failure returns -1 and sets `error` to the reason,
  // without the path.
  int load(const std::string& path, std::string& error);
  // The same for the rest of an open file, which gets a name.
  int load(std::FILE* file, std::string name, std::string& error);
  // Adds a text under a name and returns its index.
  int add(std::string name, std::string text);

  int count() const;
  const std::string& path(std::uint32_t file) const;
  // The byte order mark that preceded the text; empty for none.
  std::string_view byteOrderMark(std::uint32_t file) const;
  // Without a byte order mark. Zero-terminated. It stays valid and in place, since nodes point into
  // it.
  std::string_view text(std::uint32_t file) const;

  std::uint32_t lineNumber(vel::TextLocation location) const;
  LineColumn position(vel::TextLocation location) const;
  // Bytes from the start of the line to the location.
  std::uint32_t offsetInLine(vel::TextLocation location) const;
  // A line without its line end: the one that contains the location, or by its number.
  std::string_view line(vel::TextLocation location) const;
  std::string_view line(std::uint32_t file, std::uint32_t number) const;

 private:
  // `expected` is the size for which to make room.
  int read(std::FILE* file, std::string name, std::size_t expected, std::string& error);

  struct File {
    std::string path;
    std::string text;
    bool marked = false;  // a byte order mark preceded it
    // Computed when first needed.
    mutable std::vector<std::uint32_t> lineStarts;
    mutable bool isUtf8 = false;
  };
  const std::vector<std::uint32_t>& lineStarts(const File& file) const;

  std::deque<File> files_;
};

}  // namespace refhost
