// Global variables: the members of one structure; and the order of initial values.
#include <fmt/format.h>

#include "refhost/emit/c_generator.h"

namespace refhost {

void CGenerator::nameGlobals() {
  UnitSymbol* const globals = services_.symbols.globals();
  if (globals == nullptr) return;
  globals->cName = fileNames_.allocate("globals");
  globals->cInit = fileNames_.allocate("globals_init");
  globals->cData = fileNames_.allocate("globals_data");
  nameVariables(*globals);
}

// Whichever program is initialised first initialises them.
void CGenerator::appendGlobals(std::string& out) {
  UnitSymbol* const globals = services_.symbols.globals();
  if (globals == nullptr) return;
  enter(*globals);
  appendInitials(*globals, true);
  out += fmt::format(
      "\nstatic void {}(void) {{\n  static u8 vel_done;\n  if (vel_done) return;\n"
      "  vel_done = 1;\n",
      globals->cInit);
  out += leave(false) + "}\n";
}

void CGenerator::initialiseOnce(const VarSymbol& variable) {
  if (!startValues_.differFromZero(variable) || !initialised_.insert(&variable).second) return;
  if (variable.initial != nullptr) initialiseConstants(*variable.initial, variable);
  initialise(placeOf(variable), variable);
}

void CGenerator::initialiseConstants(const vel::ASTNode& value, const VarSymbol& of) {
  anyNode(value, [&](const vel::ASTNode& node) {
    if (node.type() != vel::ASTType::Expression) return false;
    const auto* const named = asVariable(static_cast<const Expr&>(node).symbol);
    const bool before =
        named != nullptr && named->constant && named->owner == of.owner && named->role == of.role;
    if (before) initialiseOnce(*named);
    return false;
  });
}

}  // namespace refhost
