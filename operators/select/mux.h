// The multiplexer `MUX`.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class MUXOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
