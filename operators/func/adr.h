// `ADR`, the address of a variable.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class ADROperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
