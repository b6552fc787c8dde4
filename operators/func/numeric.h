// Numeric functions: `ABS`, `SQRT`, `SIN` and their like.
#pragma once

#include "core/fc_operator.h"
#include "core/pending_operator.h"

namespace vel {

class ABSOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class ACOSOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class ASINOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class ATANOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class COSOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class SINOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class TANOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class EXPOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class EXPTOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class LNOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class LOGOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

class SQRTOperator : public PendingOperator<FCOperator> {
 public:
  using PendingOperator::PendingOperator;
};

}  // namespace vel
