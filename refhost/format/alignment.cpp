// Aligns the parts of declarations that follow each other.
#include <algorithm>
#include <cstddef>

#include "refhost/format/piece.h"

namespace refhost::format {

namespace {

struct Declaration {
  Piece* address = nullptr;  // AT, or null
  Piece* colon = nullptr;
  Piece* value = nullptr;  // := or REF=, or null
  // Widths of the names, of the address and of the type.
  std::uint32_t names = 0;
  std::uint32_t place = 0;
  std::uint32_t type = 0;

  bool isAligned() const { return std::max(names, place) <= kMaxCell; }
  bool hasValue() const { return isAligned() && value != nullptr && type <= kMaxCell; }
};

class Alignment {
 public:
  explicit Alignment(Pieces& pieces) : pieces_(pieces) {}

  void run() {
    std::size_t begin = 0;
    while (begin < pieces_.size()) {
      std::size_t end = begin + 1;
      while (end < pieces_.size() && pieces_[end].before != Break::Line) ++end;
      takeLine(begin, end);
      begin = end;
    }
    alignGroup();
  }

 private:
  void takeLine(std::size_t begin, std::size_t end) {
    std::size_t first = begin;
    while (first < end && !pieces_[first].isToken()) ++first;
    const bool comment = first == end;
    const bool declares = !comment && pieces_[first].declares;
    const bool apart = pieces_[begin].outNewlines > 1;
    const bool nested = declares && pieces_[begin].level != level_;
    if (apart || nested || (!declares && !comment)) alignGroup();
    if (!declares) return;
    level_ = pieces_[begin].level;
    Declaration line;
    std::size_t cell = begin;
    for (std::size_t i = first; i < end && line.value == nullptr; ++i) {
      if (pieces_[i].mark == Mark::None) continue;
      const std::uint32_t width = widthOf(cell, i);
      // The width must not depend on line breaks that are put in.
      for (std::size_t k = cell; width <= kMaxCell && k <= i; ++k) pieces_[k].whole = true;
      if (pieces_[i].mark == Mark::Address && line.colon == nullptr) {
        line.address = &pieces_[i];
        line.names = width;
        cell = i;
      } else if (pieces_[i].mark == Mark::Colon && line.colon == nullptr) {
        line.colon = &pieces_[i];
        (line.address != nullptr ? line.place : line.names) = width;
        cell = i + 1;
      } else if (pieces_[i].mark == Mark::Value) {
        line.value = &pieces_[i];
        line.type = width;
      }
    }
    if (line.colon != nullptr) group_.push_back(line);
  }

  // The width of the pieces from `begin` to `end`; more than any for those that are not aligned.
  std::uint32_t widthOf(std::size_t begin, std::size_t end) const {
    std::uint32_t width = 0;
    for (std::size_t i = begin; i < end && width <= kMaxCell; ++i) {
      const Piece& piece = pieces_[i];
      if (!piece.isToken() || (i > begin && piece.begins())) return kMaxCell + 1;
      width += piece.width + (piece.blank && i > begin ? 1 : 0);
    }
    return pieces_[end].begins() ? kMaxCell + 1 : width;
  }

  void alignGroup() {
    std::uint32_t names = 0;  // of those with an address
    std::uint32_t type = 0;
    for (const Declaration& line : group_) {
      if (line.isAligned() && line.address != nullptr) names = std::max(names, line.names);
      if (line.hasValue()) type = std::max(type, line.type);
    }
    std::uint32_t colon = 0;
    const auto before = [&names](const Declaration& line) {
      return line.address != nullptr ? names + 1 + line.place : line.names;
    };
    for (const Declaration& line : group_) {
      if (line.isAligned()) colon = std::max(colon, before(line));
    }
    for (const Declaration& line : group_) {
      if (!line.isAligned()) continue;
      if (line.address != nullptr) line.address->pad = names - line.names;
      line.colon->pad = colon - before(line);
      if (line.hasValue()) line.value->pad = type - line.type;
    }
    group_.clear();
  }

  Pieces& pieces_;
  std::vector<Declaration> group_;  // those that are aligned with each other
  std::uint16_t level_ = 0;
};

}  // namespace

void alignDeclarations(Pieces& pieces) { Alignment(pieces).run(); }

}  // namespace refhost::format
