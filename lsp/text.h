// Places in texts as the protocol counts them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lsp {

// The unit of characters in a line.
enum class Encoding { Utf8, Utf16 };

struct Position {
  std::uint32_t line = 0;       // from 0
  std::uint32_t character = 0;  // from 0, in units of the encoding
};

// Converts between offsets in bytes and positions. Lines end in LF, CR LF or CR. Bytes that are not
// UTF-8 count as one character each.
class Lines {
 public:
  // The text must outlive the object. `mark` is the byte order mark that precedes it in the
  // document; positions count it, offsets do not.
  Lines(std::string_view text, Encoding encoding, std::string_view mark = {});

  // An offset behind the text is its end.
  Position position(std::size_t offset) const;
  // A position behind a line is its end, one behind the last line the end of the text, and one
  // within a character its begin.
  std::size_t offset(Position position) const;

 private:
  std::size_t lineEnd(std::size_t line) const;

  std::string_view text_;
  Encoding encoding_;
  std::uint32_t markWidth_;  // in units of the encoding
  std::vector<std::size_t> starts_;
};

}  // namespace lsp
