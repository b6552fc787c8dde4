// Loads the plugin and its add-ons as shared libraries.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/op_manager_api.h"
#include "hostkit/operator_descriptions.h"

namespace hostkit {

class Services;

// The operations return false, with the path of the library and the reason in `error`, when a
// library cannot be loaded, is an add-on instead of a plugin or the reverse, is refused, or throws.
// Do not use the object then.
class PluginLibrary {
 public:
  PluginLibrary() = default;
  ~PluginLibrary();
  PluginLibrary(const PluginLibrary&) = delete;
  PluginLibrary& operator=(const PluginLibrary&) = delete;

  // Does all that a host has to do before the first call: loads the plugin and then the add-ons,
  // sets the registry in `services`, and declares the function-call operators there.
  bool start(Services& services, const std::string& plugin, const std::vector<std::string>& addOns,
             std::string& error);

  // Loads the plugin at `path` and creates its registry for `services`. A step of start().
  bool load(const std::string& path, vel::InternalInterface* services, std::string& error);
  // Adds the operators of the add-on at `path` to the registry, and its descriptions to
  // descriptions(). A step of start(), after load().
  bool extend(const std::string& path, std::string& error);

  // Null before load().
  vel::OpManagerAPI* registry() const { return registry_.get(); }
  const OperatorDescriptions& descriptions() const { return descriptions_; }

 private:
  // The function `name` of the library at `path`; null when there is none.
  void* entry(const std::string& path, const char* name, std::string& error);
  // Asks the library loaded last for the descriptions of its operators `names`.
  bool describe(const std::vector<std::string>& names, std::string& fault);

  std::vector<void*> handles_;
  std::unique_ptr<vel::OpManagerAPI> registry_;
  OperatorDescriptions descriptions_;
};

}  // namespace hostkit
