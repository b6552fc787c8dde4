// Bits of a unit's parameters: `GETBITOFPARAM`, `SETBITOFPARAM`.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class BitParamOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
