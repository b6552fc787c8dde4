// Numeric functions: `ABS`, `SQRT`, `SIN` and their like.
#pragma once

#include <string>
#include <vector>

#include "core/fc_operator.h"
#include "host/ast.h"

namespace vel {

// The first parameter is a number. The result is a REAL for a REAL and an LREAL for all
// else, except that `ABS` keeps its parameter's type. Written before the conversion is
// checked.
bool checkNumericFunction(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType);

// The base of all of them.
class NumericOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

// C has one function for integers and one for floating-point numbers.
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
