// One call of an operator of every family, and the operations of the plugin on it.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "bench/support/answers.h"
#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/services.h"
#include "hostkit/tree.h"
#include "hostkit/unit.h"

// A parameter, or the target of an assignment.
struct Operand {
  std::string source;
  vel::BasicDataType type = vel::BasicDataType::None;
};

// The symbols that the workloads' hosts know.
struct Symbols {
  Symbols();

  vel::SymbolDataType intType{"INT", vel::BasicDataType::Int};
  vel::SymbolDataType realType{"REAL", vel::BasicDataType::Real};
  vel::SymbolVar variable{"conveyor_speed", &intType, 0};
  hostkit::Unit function;  // of one input
  hostkit::Unit program;   // of the bit parameter "valve_positions"
};

struct Workload {
  const char* family;
  const char* name;
  std::vector<Operand> operands;
  Operand target;            // without a source where the call is not assigned
  std::size_t refusedCount;  // a number of parameters that the operator does not take
  ReadyAnswers::Ready answers;
};

// `symbols` must outlive the result.
std::vector<Workload> workloads(Symbols& symbols);

// On the call, on a call with a wrong number of parameters, on the call again, and on the
// operator. Elsewhere an operation is its index in here.
constexpr std::array<const char*, 4> kOperations = {"check, accepted", "check, refused", "generate",
                                                    "staticCode"};

// A workload with all that it works on.
class Bench {
 public:
  // Performs each operation once. std::logic_error when one does not do what its name says.
  // `registry` must outlive this object.
  Bench(vel::OpManagerAPI& registry, const Workload& workload);

  // Whatever the operation before has left is cleared.
  void run(std::size_t operation) { perform(operation, services_, generator_); }
  // Asks the host directly what the operation asks it.
  void askHost(std::size_t operation) {
    for (const Request& ask : requests_[operation]) ask(answers_);
  }

 private:
  // Did the operation do what its name says?
  bool perform(std::size_t operation, hostkit::Services& services, vel::Generator& generator);

  const std::string unitName_{"filling_station_control"};
  hostkit::Tree tree_;
  vel::STOperator* operator_;
  vel::ASTNode* call_;
  vel::ASTNode* refused_;
  ReadyAnswers answers_;
  hostkit::Services services_{&answers_};
  hostkit::TextGenerator generator_{services_};
  std::array<std::vector<Request>, kOperations.size()> requests_;
  std::vector<vel::VELMessage> messages_;
  std::string resultType_;
};
