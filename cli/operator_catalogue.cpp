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
#include "hostkit/operator_traits.h"

namespace velc {

namespace {

// The names in order of registration, which the registry does not preserve.
constexpr std::string_view kOrder[] = {
#include "operator_order.inc"
};

std::string classNameOf(const vel::STOperator& op) {
  const char* mangled = typeid(op).name();
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> demangled(
      abi::__cxa_demangle(mangled, nullptr, nullptr, &status), &std::free);
  const std::string_view name = demangled ? demangled.get() : mangled;
  const auto scope = name.rfind("::");
  return std::string(scope == std::string_view::npos ? name : name.substr(scope + 2));
}

void describe(const refhost::Session& session, const std::string& name, OperatorEntry& entry) {
  const hostkit::OperatorTraits& traits = hostkit::operatorTraits(name);
  entry.family = hostkit::familyName(traits.family);
  entry.isExtensible = traits.has(hostkit::OperatorTraits::kExtensible);
  entry.inputs = session.operatorInputs(name);
}

// All names in the registry, in order of registration.
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
    entry.isFunctionCall = registry.isFCOperator(name);
    describe(session, name, entry);
    entries.push_back(std::move(entry));
  }
  return entries;
}

}  // namespace velc
