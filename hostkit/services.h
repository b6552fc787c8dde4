// The services and the generator of the contract, implemented with a hostkit::Answers.
#pragma once

#include <string>

#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/project_settings.h"
#include "host/symbol_manager.h"
#include "hostkit/answers.h"
#include "hostkit/operator_descriptions.h"

namespace hostkit {

// All services in one object. It must outlive the registry that the plugin creates for it, and
// the answers must outlive both. The kit requires every InternalInterface to be a Services.
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
  const OperatorDescriptions* descriptions = nullptr;  // set by a host that loads add-ons
  int notation = 0;                                    // of device addresses: 0 IEC, 1 letters
  vel::ProjectSettings settings;
  // The static code that has to precede the program generated so far, without duplicates.
  // generateCall adds to it, and the host clears it before the next program.
  std::vector<std::string> staticCode;
};

// The generator that is passed to generate. Hosts that need more than a C text for each node
// derive from vel::Generator themselves.
class TextGenerator : public vel::Generator {
 public:
  explicit TextGenerator(Services& services) : Generator(&services), services_(services) {}

  // Knows one option, the local I/O ranges of the project.
  const char* optionText(const char* name) override;
  // These return an empty string for null.
  std::string typeText(vel::SymbolDataType* type) override;
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& unit) override;
  std::string expressionText(vel::ASTNode* expression) override;
  // Does nothing, because a literal needs no preparation.
  std::string prepareConstant(const std::string& text, vel::BasicDataType type) override;

 private:
  Services& services_;
};

}  // namespace hostkit
