// Rotations: `ROL`, `ROR`.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class RotateOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class ROLOperator : public RotateOperator {
 public:
  using RotateOperator::RotateOperator;
};

class ROROperator : public RotateOperator {
 public:
  using RotateOperator::RotateOperator;
};

}  // namespace vel
