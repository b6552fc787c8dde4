// The plugin and its add-ons as the system's dynamic loader gives them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/op_manager_api.h"
#include "hostkit/operator_descriptions.h"

namespace hostkit {

class Services;

// The operations return false, with the reason in `error`, when a library cannot be loaded, is
// of the other sort, is refused, or throws. Nothing else may be called then.
class PluginLibrary {
 public:
  PluginLibrary() = default;
  ~PluginLibrary();
  PluginLibrary(const PluginLibrary&) = delete;
  PluginLibrary& operator=(const PluginLibrary&) = delete;

  // All that a host does before the first call: loads the plugin and then the add-ons, hands
  // the registry to `services`, and declares the function-call operators there.
  bool start(Services& services, const std::string& plugin, const std::vector<std::string>& addOns,
             std::string& error);

  // The steps of it. Loads the plugin at `path` and builds its registry for `services`.
  bool load(const std::string& path, vel::InternalInterface* services, std::string& error);
  // Adds the operators of the add-on at `path` to the registry, and what it tells of them to
  // the descriptions. After load() only.
  bool extend(const std::string& path, std::string& error);

  // Null before load().
  vel::OpManagerAPI* registry() const { return registry_.get(); }
  const OperatorDescriptions& descriptions() const { return descriptions_; }

 private:
  // The function `name` of the library at `path`, null when there is none.
  void* entry(const std::string& path, const char* name, std::string& error);
  // Asks the library loaded last what it tells of its operators `names`.
  bool describe(const std::vector<std::string>& names, std::string& fault);

  std::vector<void*> handles_;
  std::unique_ptr<vel::OpManagerAPI> registry_;
  OperatorDescriptions descriptions_;
};

}  // namespace hostkit
