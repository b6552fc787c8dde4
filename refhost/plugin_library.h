// The plugin as the system's dynamic loader gives it.
#pragma once

#include <memory>
#include <string>

#include "core/op_manager_api.h"

namespace refhost {

class PluginLibrary {
 public:
  PluginLibrary() = default;
  ~PluginLibrary();
  PluginLibrary(const PluginLibrary&) = delete;
  PluginLibrary& operator=(const PluginLibrary&) = delete;

  // Loads the library at `path` and builds its registry for `services`. False, with
  // the loader's reason in `error`, when it cannot be loaded or has no entry point.
  bool load(const std::string& path, vel::InternalInterface* services, std::string& error);

  // Null before load().
  vel::OpManagerAPI* registry() const { return registry_.get(); }

 private:
  void* handle_ = nullptr;
  std::unique_ptr<vel::OpManagerAPI> registry_;
};

}  // namespace refhost
