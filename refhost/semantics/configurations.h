// Tasks and program instances of configurations.
#pragma once

#include "refhost/semantics/part.h"

namespace refhost {

class Configurations : public Part {
 public:
  using Part::Part;

  void analyseConfigurations();

 private:
  void analyseTask(const ASTNode& task);
  void analyseInstance(const ASTNode& instance);
};

}  // namespace refhost
