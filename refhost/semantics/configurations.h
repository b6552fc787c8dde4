// Tasks and program instances of configurations.
#pragma once

#include "refhost/semantics/part.h"

namespace refhost {

// Has the operators that remember their operand take a hidden variable of the instance for it
// rather than a byte of device memory: see the table of questions in docs/hosts.md.
constexpr int kKindOfInstances = 2;

class Configurations : public Part {
 public:
  using Part::Part;

  // Enters tasks and instances in the configuration of the services; the units must have been
  // declared, but none analysed. The instance `Resource.Instance` is found there from now on.
  void declare();
  // Analyses the properties of tasks and the connections of instances.
  void analyseConfigurations();

 private:
  void sayAgain(const ConfigurationItem& again, const ConfigurationItem& first);
  void declareTask(const ConfigurationItem& node);
  void declareInstance(const ConfigurationItem& node);
  const Task* taskOf(const ConfigurationItem& instance);
  void analyseTask(Task& task);
  void setProperty(Task& task, BasicDataType type, const Expr& value);

  bool misnamed_ = false;  // an instance is of no PROGRAM, and may be meant to be of any
};

}  // namespace refhost
