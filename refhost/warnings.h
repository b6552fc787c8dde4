// The warnings by name: their codes, the groups that they belong to, and which of them are shown.
#pragma once

#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace refhost {

struct WarningGroup {
  std::string_view name;
  bool shown;  // unless the user says otherwise
  std::vector<unsigned int> codes;
};

// Each warning of the plugin and the host is in one group.
const std::vector<WarningGroup>& warningGroups();

inline constexpr unsigned int kEveryWarning = 0;

// The codes that `name` stands for: the code of a warning ("0xC0197", in any letter case), a group,
// or "all", which is kEveryWarning. Empty for any other name.
std::vector<unsigned int> warningsNamed(std::string_view name);

// Which warnings are shown, and how.
class WarningChoice {
 public:
  // Shows or hides what `name` stands for; a later choice goes before an earlier one. False for a
  // name that stands for nothing.
  bool choose(std::string_view name, bool shown);
  bool shows(unsigned int code) const;

  bool asErrors = false;

 private:
  std::optional<bool> every_;
  std::map<unsigned int, bool> chosen_;
};

}  // namespace refhost
