// The registry as the host sees it.
#pragma once

#include <string>
#include <vector>

#include "host/export.h"

namespace vel {

class InternalInterface;
class STOperator;

// Names match in any letter case. The order of the operations is part of the
// contract with the host.
class OpManagerAPI {
 public:
  // Deletes every operator still registered.
  virtual ~OpManagerAPI() = default;

  // Enters `op` under its name and, unless it is a function-call operator, adds a
  // program unit of that name to the host's symbol table. Takes `op` on success;
  // on false (null, a name that is taken, a unit that the host refuses) the caller
  // keeps it.
  virtual bool registerOperator(STOperator* op) = 0;
  // Null for an unknown name; the registry keeps the operator.
  virtual STOperator* findOperator(const std::string& name) = 0;
  // True for operators whose C text is a call of a C function; false for others
  // and for unknown names.
  virtual bool isFCOperator(const std::string& name) = 0;
  virtual int operatorCount() = 0;
  // Appends every name as registered, ordered regardless of letter case.
  virtual void operatorNames(std::vector<std::string>& names) = 0;
  // Forgets every operator without deleting it.
  virtual void clearOperators() = 0;
};

}  // namespace vel

// The plugin's only export: builds the registry for a host. The caller owns the
// result and deletes it. `ii` is not owned and must outlive the registry. Null
// when memory runs out, or when the host throws.
extern "C" VEL_PLUGIN_EXPORT vel::OpManagerAPI* CreateOpManager(vel::InternalInterface* ii);
