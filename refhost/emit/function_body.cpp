#include "refhost/emit/function_body.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "hostkit/tree_builder.h"
#include "refhost/emit/line_directives.h"
#include "refhost/emit/type_text.h"

namespace refhost {

namespace {

std::string inOneLine(const std::string& lines) {
  std::string text;
  for (std::size_t begin = lines.find_first_not_of(" \n"); begin != std::string::npos;) {
    const std::size_t end = lines.find('\n', begin);
    if (!text.empty()) text += ' ';
    text.append(lines, begin, end - begin);
    begin = lines.find_first_not_of(" \n", end);
  }
  return text;
}

}  // namespace

FunctionBody::FunctionBody(const SymbolNames& names, const UnitSymbol* owner)
    : unit(owner), names_(names) {
  if (owner == nullptr) return;
  // C is hardly ever longer than this. Memory that is reserved but not written costs nothing.
  constexpr std::size_t kGrowth = 3;
  lines_.reserve(kGrowth * vel::TreeBuilder::source(*owner->node).size());
}

void FunctionBody::follow(const SourceManager& sources, const vel::ASTNode& source) {
  sources_ = &sources;
  const vel::TextLocation begin = source.pos();
  const auto size = static_cast<std::uint32_t>(vel::TreeBuilder::source(source).size());
  last_ = sources.lineNumber(vel::TextLocation(begin.file(), begin.offset() + size - 1));
  wanted_ = open_ = sources.lineNumber(begin);
  directive_ = lineDirective(open_, sources.path(begin.file()));
}

void FunctionBody::at(const vel::ASTNode& node) {
  if (sources_ != nullptr) wanted_ = sources_->lineNumber(node.pos());
}

void FunctionBody::line(const std::string& text) { append(text, "\n"); }

void FunctionBody::statement(const std::string& text) { append(text, ";\n"); }

void FunctionBody::append(const std::string& text, const char* end) {
  if (sources_ == nullptr) {
    lines_.append(static_cast<std::size_t>(depth_) * 2, ' ');
    lines_ += text;
    lines_ += end;
    return;
  }
  // A brace belongs to what it closes, not to the condition behind it.
  const bool closes = text.compare(0, 2, "} ") == 0;
  if (closes) lines_ += " }";
  moveToWanted();
  lines_.append(text, closes ? 2 : 0);
  lines_.append(end, std::strlen(end) - 1);
  open_ += static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
}

void FunctionBody::moveToWanted() {
  if (wanted_ == open_) {
    lines_ += ' ';
    return;
  }
  lines_ += '\n';
  if (wanted_ != open_ + 1) lines_ += lineDirective(wanted_);
  lines_.append(static_cast<std::size_t>(depth_) * 2, ' ');
  open_ = wanted_;
}

std::string FunctionBody::enclosed(const std::string& lines) const {
  if (sources_ != nullptr) return "({" + lines + " })";
  return "({\n" + lines + std::string(static_cast<std::size_t>(depth_) * 2, ' ') + "})";
}

std::string FunctionBody::newName() { return fmt::format("vel_t{}", ++temporaries_); }

std::string FunctionBody::temporary(const vel::SymbolDataType* type) {
  std::vector<std::string>& free = free_[type];
  std::string name;
  if (recycles_ && !free.empty()) {
    name = std::move(free.back());
    free.pop_back();
  } else {
    name = newName();
    declarations_ += "  " + declaration(names_, type, name) + ";\n";
  }
  if (recycles_) busy_.emplace_back(type, name);
  return name;
}

std::string FunctionBody::temporaryPointer(const vel::SymbolDataType* type) {
  std::string name = newName();
  declarations_ += fmt::format("  {}* {};\n", typeText(names_, type), name);
  return name;
}

std::string FunctionBody::opening(const std::string& head) const {
  return sources_ != nullptr ? '\n' + directive_ + inOneLine(head) : '\n' + head;
}

std::string FunctionBody::take(bool hasSelf, const std::string& front, const std::string& end) {
  std::string before = hasSelf && !usesSelf ? "  (void)self;\n" : "";
  before += declarations_;
  before += front;
  const std::string behind = (returns ? "vel_return:;\n" : "") + closing_ + end;
  if (sources_ != nullptr) {
    if (!before.empty()) before = ' ' + inOneLine(before);
    depth_ = 0;
    wanted_ = last_;
    moveToWanted();
  }
  std::string text = std::move(lines_);
  text.insert(0, before);
  text += sources_ != nullptr ? inOneLine(behind) + '\n' + kToOwnLines : behind;
  return text;
}

void join(std::string& out, std::string text) {
  if (text.size() <= out.size()) {
    out += text;
  } else {
    text.insert(0, out);
    out = std::move(text);
  }
}

}  // namespace refhost
