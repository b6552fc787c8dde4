// Shifts: `SHL`, `SHR`.
#pragma once

#include "core/pending_operator.h"
#include "operators/select/macro_operator.h"

namespace vel {

class ShiftOperator : public PendingOperator<StaticOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class SHLOperator : public ShiftOperator {
 public:
  using ShiftOperator::ShiftOperator;
};

class SHROperator : public ShiftOperator {
 public:
  using ShiftOperator::ShiftOperator;
};

}  // namespace vel
