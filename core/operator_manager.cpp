#include "core/operator_manager.h"

#include <algorithm>
#include <string_view>

#include "core/fc_operator.h"
#include "core/registration.h"
#include "host/internal_interface.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"

namespace vel {
namespace {

bool convertsToItself(std::string_view name) {
  constexpr std::string_view kSeparator = "_TO_";
  const std::size_t at = name.find(kSeparator);
  return at != std::string_view::npos && name.substr(0, at) == name.substr(at + kSeparator.size());
}

}  // namespace

OperatorManager::OperatorManager(InternalInterface* ii) : ii_(ii) {
  constexpr std::size_t kExpected = 520;
  operators_.max_load_factor(0.25F);
  operators_.reserve(kExpected);
  registerAllOperators();
}

bool OperatorManager::registerOperator(STOperator* op) {
  if (op == nullptr) return false;
  // The entry comes first: should it fail for want of memory, the caller still has `op`.
  const auto [entry, isNew] = operators_.try_emplace(op->name);
  if (!isNew) return false;
  auto& owner = entry->second;
  if (dynamic_cast<FCOperator*>(op) == nullptr && !addProgramUnit(op->name)) {
    operators_.erase(op->name);
    return false;
  }
  owner.reset(op);
  return true;
}

bool OperatorManager::addProgramUnit(const std::string& name) {
  auto unit = std::make_unique<SymbolPOU>(ii_, name, POUType::Operator, nullptr);
  if (!ii_->symbolManager()->addPOU(unit.get(), -1)) return false;
  static_cast<void>(unit.release());  // the symbol table's from here on
  return true;
}

STOperator* OperatorManager::findOperator(const std::string& name) {
  const auto found = operators_.find(name);
  return found == operators_.end() ? nullptr : found->second.get();
}

bool OperatorManager::isFCOperator(const std::string& name) {
  return dynamic_cast<FCOperator*>(findOperator(name)) != nullptr;
}

int OperatorManager::operatorCount() { return static_cast<int>(operators_.size()); }

void OperatorManager::operatorNames(std::vector<std::string>& names) {
  const auto before = static_cast<std::ptrdiff_t>(names.size());
  names.reserve(names.size() + operators_.size());
  for (const auto& entry : operators_) names.push_back(entry.first);
  std::sort(names.begin() + before, names.end(), LessIgnoringCase());
}

void OperatorManager::clearOperators() {
  for (auto& entry : operators_) static_cast<void>(entry.second.release());
  operators_.clear();
}

bool OperatorManager::registerAllOperators() {
  if (operatorCount() > 0) return false;
  for (const Registration& row : registrationTable()) registerRow(row);
  return true;
}

void OperatorManager::registerRow(const Registration& row) {
  const std::size_t star = row.pattern.find('*');
  std::string_view rest = row.words;
  do {
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(word.size() < rest.size() ? word.size() + 1 : rest.size());

    std::string name(row.pattern);
    if (star != std::string_view::npos) {
      name.replace(star, 1, word);
      if (convertsToItself(name)) continue;
    }

    std::unique_ptr<STOperator> op = row.make(name);
    if (registerOperator(op.get())) static_cast<void>(op.release());
  } while (!rest.empty());
}

}  // namespace vel

vel::OpManagerAPI* CreateOpManager(vel::InternalInterface* ii) {
  try {
    return new vel::OperatorManager(ii);
  } catch (...) {
    return nullptr;
  }
}
