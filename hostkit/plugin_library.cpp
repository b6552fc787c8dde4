#include "hostkit/plugin_library.h"

#include <dlfcn.h>

#include "core/add_on_api.h"
#include "hostkit/add_on_registry.h"
#include "hostkit/guarded.h"
#include "hostkit/operator_inputs.h"

namespace hostkit {

PluginLibrary::~PluginLibrary() {
  registry_.reset();  // before the libraries, which contain the code of its operators
  for (void* const handle : handles_) dlclose(handle);
}

void* PluginLibrary::entry(const std::string& path, const char* name, std::string& error) {
  // Without a slash, dlopen would search the system's folders.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  void* const handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    error = dlerror();
    // The library that is missing may be one that this one needs.
    if (error.rfind(file + ": ", 0) != 0) error = path + ": " + error;
    return nullptr;
  }
  handles_.push_back(handle);
  void* const function = dlsym(handle, name);
  if (function == nullptr) error = path + ": has no entry point " + name;
  return function;
}

bool PluginLibrary::start(Services& services, const std::string& plugin,
                          const std::vector<std::string>& addOns, std::string& error) {
  if (!load(plugin, &services, error)) return false;
  services.operators = registry();
  services.descriptions = &descriptions();
  for (const std::string& addOn : addOns) {
    if (!extend(addOn, error)) return false;
  }
  declareFunctionOperators(services);
  return true;
}

bool PluginLibrary::load(const std::string& path, vel::InternalInterface* services,
                         std::string& error) {
  void* const create = entry(path, "CreateOpManager", error);
  if (create == nullptr) return false;
  std::string fault = "built no registry";
  registry_.reset(
      guarded([&] { return reinterpret_cast<decltype(&CreateOpManager)>(create)(services); },
              [&](const std::string& why) { fault = "CreateOpManager failed: " + why; }));
  if (registry_ == nullptr) error = path + ": " + fault;
  return registry_ != nullptr;
}

bool PluginLibrary::extend(const std::string& path, std::string& error) {
  void* const add = entry(path, "RegisterOperators", error);
  if (add == nullptr) return false;
  AddOnRegistry registry(*registry_);
  std::string fault = "cannot add its operators";
  const bool accepted =
      guarded([&] { return reinterpret_cast<decltype(&RegisterOperators)>(add)(&registry); },
              [&](const std::string& why) { fault = "RegisterOperators failed: " + why; });
  if (!registry.refusal().empty()) {
    fault = registry.refusal();
  } else if (accepted && describe(registry.taken(), fault)) {
    return true;
  }
  error = path + ": " + fault;
  return false;
}

bool PluginLibrary::describe(const std::vector<std::string>& names, std::string& fault) {
  const auto ask =
      reinterpret_cast<decltype(&DescribeOperator)>(dlsym(handles_.back(), "DescribeOperator"));
  if (ask == nullptr) return true;
  for (const std::string& name : names) {
    std::string reason;
    const vel::OperatorDescription* const told =
        guarded([&] { return ask(name.c_str()); },
                [&](const std::string& why) { reason = "DescribeOperator failed: " + why; });
    if (reason.empty() && (told == nullptr || descriptions_.add(name, *told, reason))) continue;
    fault = "its description of '";
    fault.append(name).append("' is refused: ").append(reason);
    return false;
  }
  return true;
}

}  // namespace hostkit
