// The descriptions that add-ons give of their operators.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/add_on_api.h"
#include "core/case_folding.h"

namespace hostkit {

class OperatorDescriptions {
 public:
  struct Entry {
    bool namesInputs = false;         // false: the add-on does not name the inputs
    std::vector<std::string> inputs;  // in the order of the parameters
    std::string page;                 // Markdown that ends in a newline, or empty
  };

  // Copies the description of the operator `name`. False, with the reason in `error`, when the
  // description violates the contract.
  bool add(const std::string& name, const vel::OperatorDescription& description,
           std::string& error);

  // Looks up by operator name, regardless of letter case; null for one without a description.
  const Entry* find(std::string_view name) const;

 private:
  std::map<std::string, Entry, vel::LessIgnoringCase> entries_;
};

}  // namespace hostkit
