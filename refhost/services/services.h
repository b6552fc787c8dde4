// The services object that the reference host hands to the plugin.
#pragma once

#include <string>

#include "host/internal_interface.h"
#include "host/project_settings.h"
#include "refhost/services/calls.h"
#include "refhost/services/memory.h"
#include "refhost/services/symbol_table.h"

namespace refhost {

class Services final : public vel::InternalInterface {
 public:
  explicit Services(int notation, Memory::Sizes sizes) : memory(sizes), notation_(notation) {}

  vel::SymbolManager* symbolManager() override { return &symbols; }
  // Messages are shown in English.
  const std::string& translate(const std::string& format) override;
  vel::DeviceMemory* deviceMemory() override { return &memory; }
  vel::CallTree* callTree() override { return &calls; }
  vel::OpManagerAPI* operatorManager() override { return operators; }
  int addressNotation() override { return notation_; }
  bool usesDeviceLetters() const { return notation_ == 1; }
  vel::ProjectSettings* projectSettings() override { return &settings; }

  SymbolTable symbols;
  Memory memory;
  Calls calls;
  vel::ProjectSettings settings;
  vel::OpManagerAPI* operators = nullptr;  // not owned

 private:
  int notation_;
  std::unordered_set<std::string> formats_;
};

}  // namespace refhost
