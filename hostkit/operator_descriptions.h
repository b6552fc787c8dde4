// What add-ons tell of their operators.
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
    bool namesInputs = false;         // false: `inputs` says nothing
    std::vector<std::string> inputs;  // in the order of the parameters
    std::string page;                 // Markdown that ends in a line end, or empty
  };

  // Copies what is told of the operator `name`. False, with the fault in `error`, when the
  // description breaks its contract.
  bool add(const std::string& name, const vel::OperatorDescription& description,
           std::string& error);

  // By the operator's name in any letter case; null for those of which nothing is told.
  const Entry* find(std::string_view name) const;

 private:
  std::map<std::string, Entry, vel::LessIgnoringCase> entries_;
};

}  // namespace hostkit
