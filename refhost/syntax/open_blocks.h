// The stack of open blocks at the current token.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/syntax/constructs.h"
#include "refhost/syntax/span.h"

namespace refhost {

struct OpenBlock {
  const Construct* construct;
  Span opener;
  std::uint32_t begin;    // of the opener, or of the ELSIF behind it
  bool inHeader;          // the token that ends the header has not been read
  bool hasUntil = false;  // of a REPEAT
  bool hasTo = false;     // of a FOR
  bool doubtful = false;  // there is an error in its header
  bool hasPaths = false;  // of a VAR_CONFIG, whose variables have paths
};

class OpenBlocks {
 public:
  void open(const Construct& construct, Span opener) {
    blocks_.push_back({&construct, opener, opener.begin, construct.headerEnd != 0});
  }
  void close() { blocks_.pop_back(); }

  // From the outermost to the innermost.
  auto begin() const { return blocks_.begin(); }
  auto end() const { return blocks_.end(); }
  bool any() const { return !blocks_.empty(); }
  std::size_t count() const { return blocks_.size(); }
  // Requires any().
  OpenBlock& top() { return blocks_.back(); }
  const OpenBlock& top() const { return blocks_.back(); }
  bool isTop(const Construct* construct) const {
    return any() && blocks_.back().construct == construct;
  }
  bool isOpen(const Construct* construct) const {
    return std::any_of(blocks_.begin(), blocks_.end(), [construct](const OpenBlock& block) {
      return block.construct == construct;
    });
  }
  // Nothing is said of the end of a block if that is hidden in `text`.
  void doubtEndsIn(std::string_view text) {
    for (OpenBlock& block : blocks_) {
      const std::string_view closer = block.construct->closerName;
      for (std::size_t i = 0; i + closer.size() <= text.size() && !block.doubtful; ++i) {
        block.doubtful = hostkit::equalIgnoringCase(text.substr(i, closer.size()), closer);
      }
    }
  }
  bool isIn(Construct::Kind kind) const { return any() && top().construct->kind == kind; }
  bool inDeclarations() const { return any() && top().construct->holdsDeclarations(); }
  bool inProgramUnit() const { return any() && blocks_.front().construct->isProgramUnit(); }
  bool isUnit(const Construct* construct) const {
    return any() && blocks_.front().construct == construct;
  }

 private:
  std::vector<OpenBlock> blocks_;
};

}  // namespace refhost
