// A call of one operator of every family, and the plugin's operations on it.
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

// The symbols in the hosts of the workloads.
struct Symbols {
  Symbols();

  vel::SymbolDataType intType{"INT", vel::BasicDataType::Int};
  vel::SymbolDataType realType{"REAL", vel::BasicDataType::Real};
  vel::SymbolVar variable{"conveyor_speed", &intType, 0};
  hostkit::Unit function;  // with one input
  hostkit::Unit program;   // with the bit parameter "valve_positions"
};

struct Workload {
  const char* family;
  const char* name;
  std::vector<Operand> operands;
  Operand target;            // with an empty source if the call is not assigned
  std::size_t refusedCount;  // a number of parameters that the operator refuses
  ReadyAnswers::Ready answers;
};

// `symbols` must outlive the result.
std::vector<Workload> workloads(Symbols& symbols);

// The second is performed on a call with a wrong number of parameters. An index into this array
// denotes an operation.
constexpr std::array<const char*, 4> kOperations = {"check, accepted", "check, refused", "generate",
                                                    "staticCode"};

// A workload with its host, trees and recorded requests.
class Bench {
 public:
  // Performs each operation once. Throws std::logic_error when its result is unexpected.
  // `registry` must outlive this object.
  Bench(vel::OpManagerAPI& registry, const Workload& workload);

  // Discards the results of the previous operation first.
  void run(std::size_t operation) { perform(operation, services_, generator_); }
  // Makes the requests of the operation to the host, without the plugin.
  void askHost(std::size_t operation) {
    for (const Request& ask : requests_[operation]) ask(answers_);
  }

 private:
  // False when the result is not the one that the name of the operation promises.
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
