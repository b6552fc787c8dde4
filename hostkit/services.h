// The contract's services and generator, answered by one hostkit::Answers.
#pragma once

#include <string>

#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/project_settings.h"
#include "host/symbol_manager.h"
#include "hostkit/answers.h"
#include "hostkit/operator_descriptions.h"

namespace hostkit {

// All services in one object. It must outlive the registry that the plugin makes for it, and
// the answers must outlive both. With the kit every InternalInterface is one of these.
class Services : public vel::InternalInterface,
                 public vel::SymbolManager,
                 public vel::DeviceMemory,
                 public vel::CallTree {
 public:
  // `compiler` is not owned and never null.
  explicit Services(Answers* compiler) : answers(*compiler) {}

  vel::SymbolManager* symbolManager() override { return this; }
  const std::string& translate(const std::string& format) override {
    return answers.translate(format);
  }
  vel::DeviceMemory* deviceMemory() override { return this; }
  vel::CallTree* callTree() override { return this; }
  vel::OpManagerAPI* operatorManager() override { return operators; }
  int addressNotation() override { return notation; }
  vel::ProjectSettings* projectSettings() override { return &settings; }

  Answers& answers;
  vel::OpManagerAPI* operators = nullptr;              // set by the host once it has the registry
  const OperatorDescriptions* descriptions = nullptr;  // set by a host that takes add-ons
  int notation = 0;                                    // of device addresses: 0 IEC, 1 letters
  vel::ProjectSettings settings;
  // The static code that the program generated so far needs in front, each text once:
  // generateCall adds to it. A host clears it for the next program.
  std::vector<std::string> staticCode;
};

// What generate is handed. Hosts whose C is more than a text for each node derive from
// vel::Generator themselves.
class TextGenerator : public vel::Generator {
 public:
  explicit TextGenerator(Services& services) : Generator(&services), services_(services) {}

  // Of the options, the local I/O ranges of the project are known.
  const char* optionText(const char* name) override;
  // Empty for null, as are the other texts.
  std::string typeText(vel::SymbolDataType* type) override;
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& unit) override;
  std::string expressionText(vel::ASTNode* expression) override;
  // A literal needs no preparation.
  std::string prepareConstant(const std::string& text, vel::BasicDataType type) override;

 private:
  Services& services_;
};

}  // namespace hostkit
