// The transport of messages: a header with the length of the content, then the content.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lsp {

// Takes bytes in pieces of any size and gives the contents of the messages in them.
class FrameReader {
 public:
  struct Frame {
    bool broken = false;  // `text` says what is wrong with a header
    std::string text;     // the content
  };

  void take(std::string_view bytes) { bytes_ += bytes; }
  // The next one, if all of it is there. Behind a broken header reading goes on at the next one.
  std::optional<Frame> next();

 private:
  std::optional<Frame> skip(std::size_t count, const char* fault);
  bool findHeader();

  std::string bytes_;
  bool lost_ = false;  // behind a broken header, where the next one is not known
};

// The content with its header.
std::string framed(const std::string& content);

}  // namespace lsp
