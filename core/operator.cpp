#include "core/operator.h"

namespace vel {

std::string STOperator::staticCode(Generator* /*gen*/) { return {}; }

}  // namespace vel
