#include "refhost/diagnostics.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "refhost/warnings.h"

namespace refhost {
namespace {

bool isSamePlace(vel::TextLocation a, vel::TextLocation b) {
  return a.file() == b.file() && a.offset() == b.offset();
}

const vel::ASTNode* leafWith(const vel::ASTNode& node, vel::TextLocation place) {
  for (int i = 0; i < node.leavesCount(); ++i) {
    const vel::ASTNode* const leaf = node.leaf(i);
    if (leaf == nullptr || place.offset() < leaf->pos().offset()) continue;
    if (place.offset() - leaf->pos().offset() < rangeOf(*leaf).length) return leaf;
  }
  return nullptr;
}

// The outermost node at or below `node` that begins at `place`; null for none.
const vel::ASTNode* nodeAt(const vel::ASTNode& node, vel::TextLocation place) {
  const vel::ASTNode* found = &node;
  while (found != nullptr && !isSamePlace(found->pos(), place)) found = leafWith(*found, place);
  return found;
}

Diagnostic diagnosticOf(const vel::VELMessage& record, const Remarks& remarks) {
  return {{record.location, remarks.length},
          static_cast<Severity>(record.severity),
          record.code,
          record.text,
          remarks.notes,
          remarks.fixes};
}

bool isRepeated(const Diagnostic& message, const std::vector<Diagnostic>& before) {
  for (auto other = before.rbegin(); other != before.rend(); ++other) {
    if (!isSamePlace(other->range.begin, message.range.begin)) return false;
    if (other->code == message.code && other->text == message.text) return true;
  }
  return false;
}

using Messages = std::vector<Diagnostic>;

// The end of what the errors refuse that begin at the place of `first`, at least `end`.
std::uint64_t refusedBy(Messages::const_iterator first, Messages::const_iterator last,
                        std::uint64_t end) {
  const vel::TextLocation place = first->range.begin;
  for (; first != last && isSamePlace(first->range.begin, place); ++first) {
    if (first->severity != Severity::Error) continue;
    end = std::max(end, std::uint64_t{place.offset()} + first->range.length);
  }
  return end;
}

// Without doubts about parts of what errors refuse, and without repetitions. `all` is sorted.
Messages withoutFollowUps(Messages all) {
  Messages kept;
  std::uint64_t refused = 0;  // its end in the file of the message
  vel::TextLocation place;
  for (auto message = all.begin(); message != all.end(); ++message) {
    const vel::TextLocation at = message->range.begin;
    if (message == all.begin() || at.file() != place.file()) refused = 0;
    if (message == all.begin() || !isSamePlace(at, place)) {
      refused = refusedBy(message, all.end(), refused);
    }
    place = at;
    const bool moot = isDoubt(message->code) && at.offset() + message->range.length <= refused;
    if (!moot && !isRepeated(*message, kept)) kept.push_back(std::move(*message));
  }
  return kept;
}

}  // namespace

Remarks& Diagnostics::report(const SourceRange& range, const MessageFormat& format,
                             std::initializer_list<std::string_view> args) {
  refhost::report(records_, range.begin, format, args);
  Remarks& remarks = remarksOn(records_.size() - 1);
  remarks.length = range.length;
  return remarks;
}

void Diagnostics::setRanges(std::size_t first, const vel::ASTNode& call) {
  for (std::size_t i = first; i < records_.size(); ++i) {
    const vel::ASTNode* const node = nodeAt(call, records_[i].location);
    if (node != nullptr) remarksOn(i).length = rangeOf(*node).length;
  }
}

void Diagnostics::note(std::size_t first, const SourceRange& where, const std::string& text) {
  for (std::size_t i = first; i < records_.size(); ++i) remarksOn(i).note(where, text);
}

bool Diagnostics::hasErrors(std::size_t first) const {
  return std::any_of(records_.begin() + static_cast<std::ptrdiff_t>(first), records_.end(),
                     [](const vel::VELMessage& record) {
                       return record.severity == static_cast<int>(Severity::Error);
                     });
}

void Diagnostics::drop(std::size_t first) {
  if (records_.size() > first) records_.resize(first);
  if (remarks_.size() > first) remarks_.resize(first);
}

void Diagnostics::dropWarnings(std::size_t first) {
  std::size_t kept = first;
  remarks_.resize(records_.size());
  for (std::size_t i = first; i < records_.size(); ++i) {
    if (records_[i].severity == static_cast<int>(Severity::Warning)) continue;
    std::swap(records_[kept], records_[i]);
    std::swap(remarks_[kept], remarks_[i]);
    ++kept;
  }
  records_.resize(kept);
  remarks_.resize(kept);
}

bool Diagnostics::isSilenced(const vel::VELMessage& record) const {
  if (record.severity != static_cast<int>(Severity::Warning)) return false;
  const vel::TextLocation at = record.location;
  return std::any_of(silent_.begin(), silent_.end(), [&](const SilentPart& part) {
    return part.file == at.file() && at.offset() >= part.begin && at.offset() < part.end &&
           std::any_of(part.warnings.begin(), part.warnings.end(), [&record](unsigned int code) {
             return code == kEveryWarning || code == record.code;
           });
  });
}

std::vector<Diagnostic> Diagnostics::inOrder(std::size_t first) const {
  std::vector<Diagnostic> all;
  const Remarks none;
  for (std::size_t i = first; i < records_.size(); ++i) {
    if (isSilenced(records_[i])) continue;
    all.push_back(diagnosticOf(records_[i], i < remarks_.size() ? remarks_[i] : none));
  }
  const auto place = [](const Diagnostic& message) {
    return std::tuple(message.range.begin.file(), message.range.begin.offset());
  };
  std::stable_sort(all.begin(), all.end(), [&place](const Diagnostic& a, const Diagnostic& b) {
    return place(a) < place(b);
  });
  return withoutFollowUps(std::move(all));
}

Remarks& Diagnostics::remarksOn(std::size_t index) {
  if (remarks_.size() <= index) remarks_.resize(index + 1);
  return remarks_[index];
}

}  // namespace refhost
