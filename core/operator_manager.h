// The registry of operators.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "core/case_folding.h"
#include "core/op_manager_api.h"
#include "core/operator.h"

namespace vel {

struct Registration;

class OperatorManager final : public OpManagerAPI {
 public:
  // Registers every operator of the registration table, except those that the host refuses.
  explicit OperatorManager(InternalInterface* ii);
  // Deletes the operators in the order of their names. Removes no name before all operators
  // are deleted.
  ~OperatorManager() override;

  bool registerOperator(STOperator* op) override;
  STOperator* findOperator(const std::string& name) override;
  bool isFCOperator(const std::string& name) override;
  int operatorCount() override;
  void operatorNames(std::vector<std::string>& names) override;
  void clearOperators() override;

 private:
  // Tag of the constructor that leaves the registry empty.
  struct Empty {};
  OperatorManager(InternalInterface* ii, Empty empty);

  // False when the registry is not empty: it is filled only once.
  bool registerAllOperators();
  void registerRow(const Registration& row);
  bool addProgramUnit(const std::string& name);

  InternalInterface* ii_;
  // Owned. A hash table, because hosts look up every call but seldom ask for sorted names.
  std::unordered_map<std::string, STOperator*, HashIgnoringCase, EqualIgnoringCase> operators_;
};

}  // namespace vel
