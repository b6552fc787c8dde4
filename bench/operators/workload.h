// One call of an operator of every family, to be given to the plugin and to its floor.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bench/operators/floors.h"
#include "bench/support/canned_host.h"
#include "bench/support/canned_tree.h"
#include "core/op_manager_api.h"
#include "core/operator.h"

// What the canned host is asked for.
struct Symbols {
  explicit Symbols(vel::InternalInterface* ii);
  ~Symbols();

  std::unique_ptr<vel::Symbol> intType;
  std::unique_ptr<vel::Symbol> realType;
  std::unique_ptr<vel::Symbol> variable;  // an INT
  std::unique_ptr<vel::Symbol> bitParameter;
  std::unique_ptr<vel::Symbol> input;
  std::unique_ptr<vel::Symbol> function;  // of that input
  std::unique_ptr<vel::Symbol> program;   // of that bit parameter
};

struct Workload {
  const char* family;
  const char* name;
  std::vector<Operand> operands;
  Operand target;            // without a source where the call is not assigned
  std::size_t refusedCount;  // a number of parameters that the operator does not take
  floors::Start refusalStart;
  bool refusalUpperCase;  // the refusal names the operator in capitals
  floors::Check checkFloor;
  floors::Generate generateFloor;
  floors::StaticCode staticCodeFloor;
  CannedAnswers answers;
};

// `symbols` must outlive the result.
std::vector<Workload> workloads(const Symbols& symbols);

// The entry point of the plugin, which stays loaded.
using CreateRegistry = decltype(&CreateOpManager);
CreateRegistry loadPlugin();

// A workload with all that it works on. One works at a time: it sets the host's answers.
class Bench {
 public:
  Bench(CannedHost& host, const Workload& workload);

  // Each clears what the one before has left.
  bool check(bool right);
  bool checkFloor(bool right);
  std::string generate() { return operator_->generate(&generator_, call_); }
  std::string generateFloor() { return workload_.generateFloor(&generator_, call_); }
  std::string staticCode() { return operator_->staticCode(&generator_); }
  std::string staticCodeFloor() { return workload_.staticCodeFloor(&generator_, staticCode_); }

  const std::vector<vel::VELMessage>& messages() const { return messages_; }
  const std::string& resultType() const { return resultType_; }

 private:
  CheckCall request(bool right);

  CannedHost& host_;
  const Workload& workload_;
  vel::TreeBuilder tree_;
  CannedGenerator generator_;
  vel::STOperator* operator_;
  vel::ASTNode* call_;
  vel::ASTNode* refused_;
  std::vector<vel::VELMessage> messages_;
  std::string resultType_;
  std::string pouName_;
  std::string staticCode_;
};
