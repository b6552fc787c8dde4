#include "hostkit/plugin_library.h"

#include <dlfcn.h>

#include "core/add_on_api.h"
#include "hostkit/add_on_registry.h"

namespace hostkit {

PluginLibrary::~PluginLibrary() {
  registry_.reset();  // its operators' code is in the libraries
  for (void* const handle : handles_) dlclose(handle);
}

void* PluginLibrary::entry(const std::string& path, const char* name, std::string& error) {
  // A name without a slash would be searched for in the system's folders.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  void* const handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    error = dlerror();
    return nullptr;
  }
  handles_.push_back(handle);
  void* const function = dlsym(handle, name);
  if (function == nullptr) error = path + ": has no entry point " + name;
  return function;
}

bool PluginLibrary::load(const std::string& path, vel::InternalInterface* services,
                         std::string& error) {
  void* const create = entry(path, "CreateOpManager", error);
  if (create == nullptr) return false;
  registry_.reset(reinterpret_cast<decltype(&CreateOpManager)>(create)(services));
  if (registry_ == nullptr) error = path + ": built no registry";
  return registry_ != nullptr;
}

bool PluginLibrary::extend(const std::string& path, std::string& error) {
  void* const add = entry(path, "RegisterOperators", error);
  if (add == nullptr) return false;
  AddOnRegistry registry(*registry_);
  const bool accepted = reinterpret_cast<decltype(&RegisterOperators)>(add)(&registry);
  if (accepted && registry.refusal().empty()) return true;
  error =
      path + ": " + (registry.refusal().empty() ? "cannot add its operators" : registry.refusal());
  return false;
}

}  // namespace hostkit
