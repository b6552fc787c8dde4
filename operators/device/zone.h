// Zones of device memory: `ZSET`, `ZRST`.
#pragma once

#include "core/operator.h"
#include "core/pending_operator.h"

namespace vel {

class ZMemOperator : public PendingOperator<STOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
