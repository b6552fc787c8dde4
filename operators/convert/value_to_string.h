// Conversions to STRING and WSTRING: `INT_TO_STRING`, `TO_STRING`.
#pragma once

#include "core/fc_operator.h"
#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

// Names the source.
class ToStrOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

// Takes the source from the argument.
class ToStrUniversalOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
