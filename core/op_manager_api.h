// The registry as the host sees it.
#pragma once

#include <string>
#include <vector>

#include "host/export.h"

namespace vel {

class InternalInterface;
class STOperator;

// Names are compared regardless of letter case. The order of the operations is part of the
// contract with the host.
class OpManagerAPI {
 public:
  // Deletes every operator still registered.
  virtual ~OpManagerAPI() = default;

  // Registers `op` under its name and, unless it is a function-call operator, adds a
  // program unit of that name to the host's symbol table. On success the registry owns `op`.
  // Returns false for null, for a name that is already registered and for a unit that the
  // host refuses; the caller then keeps `op`.
  virtual bool registerOperator(STOperator* op) = 0;
  // Null for an unknown name. The registry remains the owner.
  virtual STOperator* findOperator(const std::string& name) = 0;
  // True for a function-call operator, which generates a call of a C function of its name;
  // false for the other operators and for unknown names.
  virtual bool isFCOperator(const std::string& name) = 0;
  virtual int operatorCount() = 0;
  // Appends every name as registered, sorted regardless of letter case.
  virtual void operatorNames(std::vector<std::string>& names) = 0;
  // Removes every operator without deleting it.
  virtual void clearOperators() = 0;
};

}  // namespace vel

// The only function that the plugin exports. Creates the registry for a host; the caller owns
// the result and deletes it. `ii` is not owned and must outlive the registry. Returns null
// when memory runs out or when the host throws an exception.
extern "C" VEL_PLUGIN_EXPORT vel::OpManagerAPI* CreateOpManager(vel::InternalInterface* ii);
