#include "refhost/warnings.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "core/add_on_api.h"
#include "hostkit/folding.h"

namespace refhost {
namespace {

// The number of a code such as `0xC0197`; 0 for any other text.
unsigned int codeOf(std::string_view text) {
  if (text.size() < 3 || text[0] != '0' || hostkit::toLower(text[1]) != 'x') return 0;
  unsigned int code = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data() + 2, end, code, 16);
  return read.ec == std::errc() && read.ptr == end ? code : 0;
}

const WarningGroup* groupOf(unsigned int code) {
  for (const WarningGroup& group : warningGroups()) {
    if (std::find(group.codes.begin(), group.codes.end(), code) != group.codes.end()) return &group;
  }
  return nullptr;
}

}  // namespace

const std::vector<WarningGroup>& warningGroups() {
  static const std::vector<WarningGroup> groups = {
      {"conversions", true, {0xC0032, 0xC0195, 0xC0196, 0xC0197, 0xF007D, 0xF007E, 0xF007F}},
      {"addresses", true, {0xC0221}},
      {"no-effect", true, {0xF003D, 0xF0096, 0xF00A4, 0xF00E3, 0xF00E4, 0xF00E7, 0xF00EB}},
      {"values", true, {0xF00E1, 0xF00E2, 0xF00E5, 0xF00F0}},
      {"unused", true, {0xF00E8, 0xF00E9}},
      {"pragmas", true, {0xF00E0}},
      {"unused-in-programs", false, {0xF00EA}},
      {"real-equality", false, {0xF00EC}},
      {"integer-division", false, {0xF00ED}},
      {"surprises", false, {0xF00EE}},
  };
  return groups;
}

std::vector<unsigned int> warningsNamed(std::string_view name) {
  using hostkit::equalIgnoringCase;
  if (equalIgnoringCase(name, "all")) return {kEveryWarning};
  for (const WarningGroup& group : warningGroups()) {
    if (equalIgnoringCase(group.name, name)) return group.codes;
  }
  const unsigned int code = codeOf(name);
  const bool ofAddOn = code >= vel::kFirstAddOnCode && code <= vel::kLastAddOnCode;
  if (code != 0 && (ofAddOn || groupOf(code) != nullptr)) return {code};
  return {};
}

bool WarningChoice::choose(std::string_view name, bool shown) {
  const std::vector<unsigned int> codes = warningsNamed(name);
  for (const unsigned int code : codes) {
    if (code == kEveryWarning) {
      every_ = shown;
      chosen_.clear();
    } else {
      chosen_[code] = shown;
    }
  }
  return !codes.empty();
}

bool WarningChoice::shows(unsigned int code) const {
  const auto chosen = chosen_.find(code);
  if (chosen != chosen_.end()) return chosen->second;
  if (every_) return *every_;
  const WarningGroup* const group = groupOf(code);
  return group == nullptr || group->shown;
}

}  // namespace refhost
