// The host of examples/host, with what only the tests ask of it: several units, constants and type
// specifications.
#pragma once

#include <iostream>

#include "examples/host/host.h"
#include "hostkit/hosttest/host_under_test.h"
#include "hostkit/plugin_library.h"

class ExampleHost : public hosttest::HostUnderTest, public Host {
 public:
  // Loads the plugin; false when it cannot be loaded.
  bool start() {
    std::string error;
    const bool started = library_.start(Host::services, VELOPS_PLUGIN, {}, error);
    if (!started) std::cerr << error << '\n';
    return started;
  }

  vel::InternalInterface& services() override { return Host::services; }
  vel::Generator& generator() override { return generator_; }
  vel::ASTNode* parse(const std::vector<hosttest::Unit>& units,
                      const std::string& statement) override {
    program_ = std::make_unique<hostkit::SymbolTable>();
    messages.clear();
    for (const hosttest::Unit& unit : units) declare(unit);
    unit_ = static_cast<hostkit::Unit*>(find(units[0].name.c_str(), "", vel::Symbol::Pou));
    if (statement == "SIZEOF(STRING[20])") return sizeOf("STRING[20]");
    const Line line(statement, 1, tree_.emplace());
    analyse(line);
    return line.call;
  }
  bool setNotation(int notation) override {
    Host::services.notation = notation;
    return true;
  }
  bool setLocalIo(const std::string& ranges) override {
    Host::services.settings.localIoAddress = ranges;
    return true;
  }

  // The example knows the operators, and the states of edges.
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override {
    vel::Symbol* const found = program_ != nullptr ? program_->find(name, unit, kind) : nullptr;
    return found != nullptr ? found : Host::find(name, unit, kind);
  }
  bool isWritable(vel::ASTNode& call, const std::string& text, const std::string& unit,
                  std::vector<vel::VELMessage>& told) override {
    const auto* const found = variable(text, unit);
    if (found == nullptr || found->varKind() != static_cast<int>(hosttest::Section::Constant))
      return true;
    told.push_back(hostkit::errorAt(call.pos(), "'" + text + "' is a constant"));
    return false;
  }
  // STRING, whatever the length.
  vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& /*unit*/) override {
    const std::string text = AstNodeHelper::astText(&typeSpec);
    return program_->type(text.substr(0, text.find('[')));
  }

 private:
  void declare(const hosttest::Unit& unit) {
    auto* const symbol = new hostkit::Unit(&services(), unit.name, unit.type);
    program_->addUnit(symbol);
    for (const auto& [name, type, section] : unit.variables) {
      auto made = std::make_unique<vel::SymbolVar>(name, program_->type(type),
                                                   static_cast<std::int32_t>(section));
      if (section == hosttest::Section::Local || section == hosttest::Section::Constant) {
        program_->addVariable(unit.name, std::move(made));
      } else {
        symbol->addParameter(std::move(made));
      }
    }
  }

  vel::ASTNode* sizeOf(std::string_view specification) {
    hostkit::Tree& tree = tree_.emplace();
    auto* const type = tree.make<vel::ASTNode>({specification}, {}, vel::ASTType::StringTypeSpec);
    auto* const call =
        tree.make<Invocation>({"SIZEOF"}, {tree.word({"SIZEOF"}), type}, hostkit::kInvocationNode);
    tree.unit(unit_->name(), unit_->type(), {call});
    return call;
  }

  std::unique_ptr<hostkit::SymbolTable> program_;  // of the units parsed last
  hostkit::PluginLibrary library_;
};
