#include "refhost/plugin_library.h"

#include <dlfcn.h>

namespace refhost {

PluginLibrary::~PluginLibrary() {
  registry_.reset();  // its operators' code is in the library
  if (handle_ != nullptr) dlclose(handle_);
}

bool PluginLibrary::load(const std::string& path, vel::InternalInterface* services,
                         std::string& error) {
  // A name without a slash would be searched for in the system's folders.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  handle_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    error = dlerror();
    return false;
  }
  using Entry = vel::OpManagerAPI* (*)(vel::InternalInterface*);
  const auto create = reinterpret_cast<Entry>(dlsym(handle_, "CreateOpManager"));
  if (create == nullptr) {
    error = path + ": has no entry point CreateOpManager";
    return false;
  }
  registry_.reset(create(services));
  if (registry_ == nullptr) error = path + ": built no registry";
  return registry_ != nullptr;
}

}  // namespace refhost
