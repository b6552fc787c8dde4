#include "refhost/prelude/prelude.h"

#include <algorithm>

#include "refhost/spelling.h"
#include "refhost/syntax/parser.h"
#include "refhost/warnings.h"

namespace refhost {
namespace {

constexpr std::string_view kText =
#include "prelude_text.inc"
    ;

bool occurs(std::string_view name) {
  const auto same = [](char a, char b) { return toLower(a) == toLower(b); };
  return std::search(kText.begin(), kText.end(), name.begin(), name.end(), same) != kText.end();
}

}  // namespace

std::string_view preludeText() { return kText; }

std::vector<PreludeUnit> preludeUnits() {
  constexpr std::string_view kFunction = "FUNCTION ";
  constexpr std::string_view kBlock = "FUNCTION_BLOCK ";
  std::vector<PreludeUnit> units;
  for (std::size_t at = 0; at < kText.size();) {
    const std::size_t end = std::min(kText.find('\n', at), kText.size());
    std::string_view line = kText.substr(at, end - at);
    at = end + 1;
    const bool isBlock = line.substr(0, kBlock.size()) == kBlock;
    if (!isBlock && line.substr(0, kFunction.size()) != kFunction) continue;
    line.remove_prefix(isBlock ? kBlock.size() : kFunction.size());
    units.push_back({line.substr(0, line.find_first_of(" :;\r")), isBlock});
  }
  return units;
}

Unit* Prelude::unit(std::string_view name) {
  // Most undeclared names are mistakes of the program, for which nothing need be parsed.
  if (!parsed_ && !occurs(name)) return nullptr;
  if (!parsed_) parse();
  const auto found = units_.find(name);
  return found != units_.end() ? found->second : nullptr;
}

void Prelude::offerBlocks(Spelling& spelling) {
  if (!parsed_) parse();
  for (const auto& [name, unit] : units_) {
    if (unit->POUDeclaration::type() == vel::POUType::FunctionBlock) spelling.offer(name);
  }
}

void Prelude::parse() {
  parsed_ = true;
  const std::size_t before = tree_.units.size();
  const auto file = static_cast<std::uint32_t>(sources_.add("prelude", std::string(kText)));
  messages_.silence({file, 0, kText.size(), {kEveryWarning}});
  refhost::parse(sources_, file, tree_, messages_);
  for (std::size_t i = before; i < tree_.units.size(); ++i) {
    units_.emplace(tree_.units[i]->name(), tree_.units[i]);
  }
  tree_.units.resize(before);
}

}  // namespace refhost
