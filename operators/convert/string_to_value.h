// Conversions from STRING and WSTRING: `STRING_TO_INT`.
#pragma once

#include "core/fc_operator.h"
#include "core/pending_operator.h"

namespace vel {

class StrToOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
