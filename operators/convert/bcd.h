// Binary-coded decimal: `BCD_TO_INT`, `INT_TO_BCD`.
#pragma once

#include "core/fc_operator.h"
#include "core/pending_operator.h"

namespace vel {

class BCDToOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class ToBCDOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
