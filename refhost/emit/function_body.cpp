#include "refhost/emit/function_body.h"

#include <fmt/format.h>

#include <utility>

#include "hostkit/tree_builder.h"
#include "refhost/emit/type_text.h"

namespace refhost {

FunctionBody::FunctionBody(const SymbolNames& names, const UnitSymbol* owner)
    : unit(owner), names_(names) {
  if (owner == nullptr) return;
  // C is hardly ever longer than this. Memory that is reserved but not written costs nothing.
  constexpr std::size_t kGrowth = 3;
  lines_.reserve(kGrowth * vel::TreeBuilder::source(*owner->node).size());
}

void FunctionBody::line(const std::string& text) {
  lines_.append(static_cast<std::size_t>(depth_) * 2, ' ');
  lines_ += text;
  lines_ += '\n';
}

void FunctionBody::statement(const std::string& text) {
  lines_.append(static_cast<std::size_t>(depth_) * 2, ' ');
  lines_ += text;
  lines_ += ";\n";
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

std::string FunctionBody::take(bool hasSelf, const std::string& front) {
  std::string before = hasSelf && !usesSelf ? "  (void)self;\n" : "";
  before += declarations_;
  before += front;
  std::string text = std::move(lines_);
  text.insert(0, before);
  if (returns) text += "vel_return:;\n";
  text += closing_;
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
