// The registry of operators.
#pragma once

#include <memory>
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
  // Registers every operator of the registration table that the host accepts.
  explicit OperatorManager(InternalInterface* ii);

  bool registerOperator(STOperator* op) override;
  STOperator* findOperator(const std::string& name) override;
  bool isFCOperator(const std::string& name) override;
  int operatorCount() override;
  void operatorNames(std::vector<std::string>& names) override;
  void clearOperators() override;

 private:
  // False when the registry is not empty: it is filled only once.
  bool registerAllOperators();
  void registerRow(const Registration& row);
  bool addProgramUnit(const std::string& name);

  InternalInterface* ii_;
  // Looked up for every call of a program; put in order only for `operatorNames`.
  std::unordered_map<std::string, std::unique_ptr<STOperator>, HashIgnoringCase, EqualIgnoringCase>
      operators_;
};

}  // namespace vel
