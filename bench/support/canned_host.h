// A host that costs next to nothing: every answer is ready before it is asked for.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/device_memory.h"
#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/project_settings.h"
#include "host/symbol.h"

// What the host answers, whatever it is asked.
struct CannedAnswers {
  vel::Symbol* dataType = nullptr;  // to a lookup of that kind; not owned
  vel::Symbol* variable = nullptr;
  vel::Symbol* unit = nullptr;
  vel::Symbol* any = nullptr;
  vel::HeapAddress address;  // the empty one for texts that are no addresses
};

class CannedHost final : public vel::InternalInterface {
 public:
  CannedHost();
  ~CannedHost() override;

  CannedAnswers answers;
  vel::OpManagerAPI* registry = nullptr;
  vel::ProjectSettings settings;
  std::vector<std::string>* units = nullptr;  // gets the names of those added; not owned

  // A digest of the requests so far, in their order, those of nodes left out. The host's
  // library has it once: static operations have no host at hand.
  static std::uint64_t& trace();

  vel::SymbolManager* symbolManager() override;
  // Keeps the last format.
  const std::string& translate(const std::string& format) override;
  vel::DeviceMemory* deviceMemory() override;
  vel::CallTree* callTree() override;
  vel::OpManagerAPI* operatorManager() override;
  int addressNotation() override;
  vel::ProjectSettings* projectSettings() override;

  struct Services;  // the objects behind the operations above

 private:
  std::unique_ptr<Services> services_;
  std::string format_;
};

// The C text of an expression is its source.
class CannedGenerator final : public vel::Generator {
 public:
  using Generator::Generator;

  const char* optionText(const char* name) override;
  std::string typeText(vel::SymbolDataType* type) override;
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& pouName) override;
  std::string expressionText(vel::ASTNode* expression) override;
  std::string prepareConstant(const std::string& text, vel::BasicDataType type) override;
};
