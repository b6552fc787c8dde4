// Conversions that name the target only: `TO_INT`.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class GeneralConvertOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
