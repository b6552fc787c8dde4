// Numeric functions such as `ABS`, `SQRT` and `SIN`.
#pragma once

#include <string>
#include <vector>

#include "core/fc_operator.h"
#include "host/ast.h"

namespace vel {

// Checks that the first parameter is a number. The result is a REAL for a REAL and an LREAL for
// any other number, except that `ABS` keeps the type of its parameter. `resultType` is set
// before the conversion to it is checked.
bool checkNumericFunction(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType);

// The base class of the numeric functions.
class NumericOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

// Calls `ABS` for an integer and `FABS` for a floating-point number.
class ABSOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;

  std::string generate(Generator* gen, ASTNode* invocation) override;
};

class ACOSOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class ASINOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class ATANOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class COSOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class SINOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class TANOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class EXPOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class EXPTOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class LNOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class LOGOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

class SQRTOperator : public NumericOperator {
 public:
  using NumericOperator::NumericOperator;
};

}  // namespace vel
