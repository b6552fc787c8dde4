// Calls with EN and ENO.
#include <fmt/format.h>

#include "refhost/emit/c_generator.h"

namespace refhost {

void CGenerator::whenEnabled(const Call& call, const std::function<void()>& write) {
  std::string flag = "1";
  if (call.enable != nullptr) {
    flag = expressionText(call.enable->leaf(1));
    if (call.enabled != nullptr) {
      const std::string kept = temporary(services_.symbols.elementary(BasicDataType::Bool));
      line(fmt::format("{} = {};", kept, flag));
      flag = kept;
    }
    line(fmt::format("if ({}) {{", flag));
    ++indent_;
  }
  write();
  if (call.enable != nullptr) {
    --indent_;
    line("}");
  }
  if (call.enabled != nullptr) line(storeEnabled(call, flag) + ";");
}

std::string CGenerator::enabledText(const Call& call, const std::string& value) {
  if (call.enable == nullptr && call.enabled == nullptr) return value;
  const std::string enable =
      call.enable != nullptr ? expressionText(call.enable->leaf(1)) : std::string("1");
  const std::string zero = zeroText(call.dataType);
  if (call.enabled == nullptr) return fmt::format("(({}) ? ({}) : {})", enable, value, zero);
  const std::string flag = fmt::format("vel_t{}", ++temporaries_);
  const std::string result = fmt::format("vel_t{}", ++temporaries_);
  return fmt::format("({{ u8 {0} = {1}; __auto_type {2} = {0} ? ({3}) : {4}; {5}; {2}; }})", flag,
                     enable, result, value, zero, storeEnabled(call, flag));
}

std::string CGenerator::storeEnabled(const Call& call, const std::string& flag) {
  const auto& target = static_cast<const Expr&>(*call.enabled->leaf(1));
  return store(target, call.enabled->negated ? "!" + flag : flag, BasicDataType::Bool);
}

}  // namespace refhost
