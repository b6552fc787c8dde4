// Aligns what stands one a line in brackets: arguments, and values of members and enumerations.
#include <algorithm>
#include <cstddef>

#include "grammar.h"
#include "refhost/format/piece.h"

namespace refhost::format {

namespace {

using Kind = grammar::Parser::token;

struct Item {
  std::size_t head = 0;      // its first token
  std::uint32_t column = 0;  // of the head
  bool apart = false;        // blank lines precede it
  Piece* mark = nullptr;     // := or =>, if it is to be aligned
  std::uint32_t width = 0;   // in front of the mark
  std::uint32_t end = 0;     // of the longest of its lines
};

struct List {
  bool amid = false;   // in an item, the last one
  bool apart = false;  // blank lines precede the next item
  std::uint32_t end = 0;
  std::vector<Item> items;
};

class Arguments {
 public:
  Arguments(Pieces& pieces, std::size_t begin, std::size_t end)
      : pieces_(pieces), begin_(begin), end_(end) {}

  void run() {
    std::uint32_t column = 0;
    for (std::size_t i = begin_; i < end_; ++i) {
      const Piece& piece = pieces_[i];
      if (piece.begins()) column = 0;
      column += piece.outBlanks;
      const std::uint32_t end = piece.columnBehind(column);
      if (!lists_.empty() && piece.outNewlines > 1) lists_.back().apart = true;
      if (piece.isToken()) takeToken(i, column, end);
      column = end;
    }
  }

 private:
  void takeToken(std::size_t index, std::uint32_t column, std::uint32_t end) {
    const Piece& token = pieces_[index];
    if (token.closes() && !lists_.empty()) closeList();
    if (!lists_.empty()) {
      List& list = lists_.back();
      if (token.kind == ',') {
        list.amid = false;
      } else if (!list.amid && !token.closes()) {
        list.items.push_back({index, column, list.apart});
        list.amid = true;
        list.apart = false;
      }
      if (list.amid) takeEnd(list, end);
      if (token.kind == Kind::ASSIGN || token.kind == Kind::ARROW) takeMark(list, index);
    }
    if (token.opens()) lists_.emplace_back();
  }

  static void takeEnd(List& list, std::uint32_t end) {
    list.items.back().end = std::max(list.items.back().end, end);
    list.end = std::max(list.end, end);
  }

  void takeMark(List& list, std::size_t index) {
    if (!list.amid || list.items.back().width != 0) return;
    Item& item = list.items.back();
    bool plain = true;
    for (std::size_t i = item.head; i < index && item.width <= kMaxCell; ++i) {
      const Piece& piece = pieces_[i];
      plain = plain && piece.isToken() && !pieces_[i + 1].begins();
      item.width += piece.width + (piece.blank && i > item.head ? 1 : 0);
    }
    if (plain && item.width <= kMaxCell) item.mark = &pieces_[index];
  }

  void closeList() {
    const List list = std::move(lists_.back());
    lists_.pop_back();
    if (!lists_.empty() && lists_.back().amid) takeEnd(lists_.back(), list.end);
    const auto standsAlone = [&](const Item& item) {
      const bool first = item.head == list.items.front().head;
      return (first || pieces_[item.head].begins()) && item.column == list.items.front().column;
    };
    if (!std::all_of(list.items.begin(), list.items.end(), standsAlone)) return;
    for (auto begin = list.items.begin(); begin != list.items.end();) {
      const auto end =
          std::find_if(begin + 1, list.items.end(), [](const Item& item) { return item.apart; });
      align(begin, end);
      begin = end;
    }
  }

  template <typename Iterator>
  static void align(Iterator begin, Iterator end) {
    std::uint32_t width = 0;
    for (Iterator item = begin; item != end; ++item) {
      if (item->mark != nullptr) width = std::max(width, item->width);
    }
    const bool fits = std::all_of(begin, end, [width](const Item& item) {
      return item.mark == nullptr || item.end + width - item.width <= kMaxWidth;
    });
    if (!fits) return;
    for (Iterator item = begin; item != end; ++item) {
      if (item->mark != nullptr) item->mark->pad = width - item->width;
    }
  }

  Pieces& pieces_;
  std::size_t begin_;
  std::size_t end_;
  std::vector<List> lists_;  // that are open
};

}  // namespace

void alignArguments(Pieces& pieces, std::size_t begin, std::size_t end) {
  Arguments(pieces, begin, end).run();
}

}  // namespace refhost::format
