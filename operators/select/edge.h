// Edge detection: `MEP`, `MEF`.
#pragma once

#include "core/pending_operator.h"
#include "operators/select/macro_operator.h"

namespace vel {

class MepMefOperator : public PendingOperator<StaticOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class MepOperator : public MepMefOperator {
 public:
  using MepMefOperator::MepMefOperator;
};

class MefOperator : public MepMefOperator {
 public:
  using MepMefOperator::MepMefOperator;
};

}  // namespace vel
