// The host's services, passed to the plugin when it starts and to every check.
#pragma once

#include <string>

#include "host/export.h"

namespace vel {

class CallTree;
class DeviceMemory;
class OpManagerAPI;
class SymbolManager;
struct ProjectSettings;

// The positions of the virtual operations are part of the contract. Comments give the slot
// numbers; the operations named reservedN belong to the host. The host owns every object that
// it returns. Host and plugin call each other on one thread.
class VEL_HOST_API InternalInterface {
 public:
  virtual SymbolManager* symbolManager() = 0;  // slot 1; never null
  virtual void reserved2() {}
  virtual void reserved3() {}
  virtual void reserved4() {}
  virtual void reserved5() {}
  virtual void reserved6() {}
  virtual void reserved7() {}
  virtual void reserved8() {}
  // Slot 9: the translation of an English message format, with the same placeholders. It may
  // be `format` itself. It has to stay valid only until the message is formatted.
  virtual const std::string& translate(const std::string& format) = 0;
  // Slot 10: null when the host has none. No operand is a device address then.
  virtual DeviceMemory* deviceMemory() = 0;
  virtual void reserved11() {}
  virtual void reserved12() {}
  virtual void reserved13() {}
  virtual void reserved14() {}
  virtual CallTree* callTree() = 0;  // slot 15; null when the host keeps none
  virtual void reserved16() {}
  virtual void reserved17() {}
  virtual void reserved18() {}
  virtual void reserved19() {}
  virtual void reserved20() {}
  virtual void reserved21() {}
  virtual void reserved22() {}
  virtual void reserved23() {}
  // Slot 24: the registry that CreateOpManager returned; null until it has returned.
  virtual OpManagerAPI* operatorManager() = 0;
  virtual void reserved25() {}
  virtual void reserved26() {}
  virtual void reserved27() {}
  virtual void reserved28() {}
  virtual void reserved29() {}
  virtual void reserved30() {}
  // Slot 31: 0 for IEC addresses (`%IX0.1`), 1 for device letters (`X1`); any other value
  // enforces neither notation.
  virtual int addressNotation() = 0;
  virtual void reserved32() {}
  virtual void reserved33() {}
  virtual void reserved34() {}
  virtual void reserved35() {}
  virtual ProjectSettings* projectSettings() = 0;  // slot 36; null when nothing is set
  virtual ~InternalInterface();
};

}  // namespace vel
