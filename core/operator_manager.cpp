#include "core/operator_manager.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "core/fc_operator.h"
#include "core/registration.h"
#include "host/internal_interface.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"

namespace vel {

bool convertsToItself(std::string_view name) {
  constexpr std::string_view kSeparator = "_TO_";
  const std::size_t at = name.find(kSeparator);
  return at != std::string_view::npos && name.substr(0, at) == name.substr(at + kSeparator.size());
}

OperatorManager::OperatorManager(InternalInterface* ii, Empty /*empty*/) : ii_(ii) {
  constexpr std::size_t kExpected = 520;
  operators_.max_load_factor(0.25F);
  operators_.reserve(kExpected);
}

// Delegates, so that the object counts as constructed while the operators are registered: when
// the host throws meanwhile, the destructor runs and deletes those registered so far.
OperatorManager::OperatorManager(InternalInterface* ii) : OperatorManager(ii, Empty()) {
  registerAllOperators();
}

OperatorManager::~OperatorManager() {
  std::vector<std::string> names;
  operatorNames(names);
  for (const std::string& name : names) delete findOperator(name);
  clearOperators();
}

bool OperatorManager::registerOperator(STOperator* op) {
  if (op == nullptr || findOperator(op->name) != nullptr) return false;
  // Ask the host first, so that an operator which it refuses is never registered.
  if (dynamic_cast<FCOperator*>(op) == nullptr && !addProgramUnit(op->name)) return false;
  operators_[op->name] = op;
  return true;
}

bool OperatorManager::addProgramUnit(const std::string& name) {
  auto unit = std::make_unique<SymbolPOU>(ii_, name, POUType::Operator, nullptr);
  if (!ii_->symbolManager()->addPOU(unit.get(), -1)) return false;
  static_cast<void>(unit.release());  // the symbol table owns it now
  return true;
}

STOperator* OperatorManager::findOperator(const std::string& name) {
  const auto found = operators_.find(name);
  return found == operators_.end() ? nullptr : found->second;
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

void OperatorManager::clearOperators() { operators_.clear(); }

bool OperatorManager::registerAllOperators() {
  if (operatorCount() > 0) return false;
  for (const Registration& row : registrationTable()) registerRow(row);
  return true;
}

void OperatorManager::registerRow(const Registration& row) {
  forEachName(row, [this, &row](const std::string& name) {
    std::unique_ptr<STOperator> op = row.make(name);
    if (registerOperator(op.get())) static_cast<void>(op.release());
  });
}

}  // namespace vel

vel::OpManagerAPI* CreateOpManager(vel::InternalInterface* ii) {
  try {
    return new vel::OperatorManager(ii);
  } catch (...) {
    return nullptr;
  }
}
