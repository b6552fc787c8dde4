#include "hostkit/operator_descriptions.h"

#include <algorithm>
#include <cstddef>

#include "hostkit/folding.h"

namespace hostkit {
namespace {

// The size of the first version of the structure.
constexpr std::size_t kSmallest =
    offsetof(vel::OperatorDescription, page) + sizeof(vel::OperatorDescription::page);

bool isPlainName(std::string_view text) {
  constexpr std::string_view kLetters = "_ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  constexpr std::string_view kDigits = "0123456789";
  const auto isIn = [](std::string_view set, char c) { return set.find(c) != std::string::npos; };
  return !text.empty() && isIn(kLetters, text.front()) &&
         std::all_of(text.begin(), text.end(),
                     [&](char c) { return isIn(kLetters, c) || isIn(kDigits, c); });
}

// Splits `names` at single blanks. False, with the reason in `error`, if one is not a name.
bool split(std::string_view names, std::vector<std::string>& inputs, std::string& error) {
  while (!names.empty()) {
    const std::string name(names.substr(0, names.find(' ')));
    names.remove_prefix(std::min(name.size() + 1, names.size()));
    if (!isPlainName(name)) {
      error = "'" + name + "' is no name of an input";
      return false;
    }
    const bool known = std::any_of(inputs.begin(), inputs.end(), [&](const std::string& other) {
      return equalIgnoringCase(other, name);
    });
    if (known) {
      error = "two inputs have the name '" + name + "'";
      return false;
    }
    inputs.push_back(name);
  }
  return true;
}

}  // namespace

bool OperatorDescriptions::add(const std::string& name, const vel::OperatorDescription& description,
                               std::string& error) {
  if (description.size < kSmallest) {
    error = "its size is " + std::to_string(description.size);
    return false;
  }
  Entry entry;
  entry.namesInputs = description.inputs != nullptr;
  if (entry.namesInputs && !split(description.inputs, entry.inputs, error)) return false;
  if (description.page != nullptr) entry.page = description.page;
  if (!entry.page.empty() && entry.page.back() != '\n') entry.page += '\n';
  entries_.insert_or_assign(name, std::move(entry));
  return true;
}

const OperatorDescriptions::Entry* OperatorDescriptions::find(std::string_view name) const {
  const auto found = entries_.find(std::string(name));
  return found == entries_.end() ? nullptr : &found->second;
}

}  // namespace hostkit
