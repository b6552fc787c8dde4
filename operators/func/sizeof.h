// `SIZEOF`.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class SizeofOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
