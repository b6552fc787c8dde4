// Immediate access to process images: `IRDBIT`, `IZSET` and their like.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class DirectIOOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
