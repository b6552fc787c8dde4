#include "cli/operator_catalogue.h"

#include <cxxabi.h>
#include <fmt/format.h>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <typeinfo>
#include <unordered_set>

#include "cli/failure.h"
#include "core/op_manager_api.h"
#include "core/operator.h"

namespace velc {

namespace {

// Names in the order of registration, which the registry does not keep; a few of
// them are not registered.
constexpr std::string_view kOrder[] = {
#include "operator_order.inc"
};

struct Family {
  std::string_view className;
  const char* name;
};

constexpr Family kFamilies[] = {
    {"ConvertOperator", "conversion"},
    {"RealToIntegerOperator", "conversion"},
    {"ToBoolOperator", "conversion"},
    {"GeneralConvertOperator", "generic conversion"},
    {"TruncOperator", "truncation"},
    {"StrToOperator", "string conversion"},
    {"ToStrOperator", "string conversion"},
    {"ToStrUniversalOperator", "string conversion"},
    {"BCDToOperator", "BCD conversion"},
    {"ToBCDOperator", "BCD conversion"},
    {"SelectOperator", "selection"},
    {"LimitOperator", "selection"},
    {"MinOperator", "selection"},
    {"MaxOperator", "selection"},
    {"MUXOperator", "selection"},
    {"SHLOperator", "shift"},
    {"SHROperator", "shift"},
    {"ROLOperator", "rotation"},
    {"ROROperator", "rotation"},
    {"MepOperator", "edge"},
    {"MefOperator", "edge"},
    {"MoveOperator", "assignment"},
    {"ABSOperator", "numeric"},
    {"SQRTOperator", "numeric"},
    {"LNOperator", "numeric"},
    {"LOGOperator", "numeric"},
    {"EXPOperator", "numeric"},
    {"EXPTOperator", "numeric"},
    {"SINOperator", "numeric"},
    {"COSOperator", "numeric"},
    {"TANOperator", "numeric"},
    {"ASINOperator", "numeric"},
    {"ACOSOperator", "numeric"},
    {"ATANOperator", "numeric"},
    {"SizeofOperator", "reference"},
    {"ADROperator", "reference"},
    {"DirectIOOperator", "direct I/O"},
    {"ZMemOperator", "zone"},
    {"BitParamOperator", "bit of parameter"},
};

const char* familyOf(std::string_view className) {
  for (const Family& family : kFamilies) {
    if (family.className == className) return family.name;
  }
  return "other";
}

std::string classNameOf(const vel::STOperator& op) {
  const char* mangled = typeid(op).name();
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> demangled(
      abi::__cxa_demangle(mangled, nullptr, nullptr, &status), &std::free);
  const std::string_view name = demangled ? demangled.get() : mangled;
  const auto scope = name.rfind("::");
  return std::string(scope == std::string_view::npos ? name : name.substr(scope + 2));
}

// Every name that the registry holds, in order of registration.
std::vector<std::string> orderedNames(vel::OpManagerAPI& registry) {
  std::vector<std::string> registered;
  registry.operatorNames(registered);
  std::unordered_set<std::string_view> left(registered.begin(), registered.end());
  std::vector<std::string> names;
  for (const std::string_view name : kOrder) {
    if (left.erase(name) != 0) names.emplace_back(name);
  }
  for (const std::string& name : registered) {
    if (left.count(name) != 0) names.push_back(name);
  }
  return names;
}

}  // namespace

std::vector<OperatorEntry> operatorCatalogue(refhost::Session& session,
                                             const std::vector<std::string>& names) {
  vel::OpManagerAPI& registry = session.operators();
  std::unordered_set<const vel::STOperator*> wanted;
  for (const std::string& name : names) {
    const vel::STOperator* op = registry.findOperator(name);
    if (op == nullptr) throw Failure(fmt::format("'{}' is no operator", name));
    wanted.insert(op);
  }
  std::vector<OperatorEntry> entries;
  for (const std::string& name : orderedNames(registry)) {
    const vel::STOperator* op = registry.findOperator(name);
    if (!names.empty() && wanted.count(op) == 0) continue;
    OperatorEntry entry;
    entry.name = name;
    entry.className = classNameOf(*op);
    entry.family = familyOf(entry.className);
    entry.isFunctionCall = registry.isFCOperator(name);
    entry.isReady = session.operatorReady(name);
    entries.push_back(std::move(entry));
  }
  return entries;
}

}  // namespace velc
