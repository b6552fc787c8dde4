#include "refhost/emit/function_writer.h"

#include <fmt/format.h>

#include <algorithm>

#include "refhost/emit/declarations.h"

namespace refhost {

using vel::POUType;

namespace {

// True of a PROGRAM that no configuration instantiates: its functions take no pointer.
bool hasOneInstance(const UnitSymbol& unit) {
  return unit.type() == POUType::Program && !unit.instantiated;
}

}  // namespace

FunctionWriter::FunctionWriter(FileContext& file, const UnitSymbol* unit)
    : file_(file),
      body_(file.names, unit),
      expressions_(file, body_),
      statements_(file, body_, expressions_),
      initials_(file, body_, expressions_) {
  if (unit != nullptr) file.services.calls.currentUnit = unit->name();
}

std::string FunctionWriter::take(bool hasSelf, const std::string& end) {
  return body_.take(hasSelf, companionsText(), end);
}

void FunctionWriter::follow() {
  const UnitSymbol& unit = *body_.unit;
  if (file_.lines && !unit.standard) body_.follow(file_.sources, *unit.node);
}

std::string FunctionWriter::companionsText() {
  if (body_.unit == nullptr) return {};
  const bool function = body_.unit->type() == POUType::Function;
  std::string text;
  for (const auto& variable : body_.unit->variables()) {
    const vel::SymbolDataType* const type = variable->dataType();
    if (!variable->isBitParameter() || type == nullptr) continue;
    const std::string name = companion(*variable);
    if (body_.companions.count(variable.get()) == 0) {
      if (function && keepsCompanion(*variable)) text += fmt::format("  (void){};\n", name);
      continue;
    }
    const Place place = expressions_.places.of(*variable);
    const std::string data = isText(type->dataType()) ? place.load() : place.address("void*");
    const std::string own = fmt::format("{{{}, {}}}", data, bitCount(*type));
    if (variable->role == Role::InOut) {
      text += fmt::format("  vel_bit_param {} = {};\n", name, own);
      continue;
    }
    if (!function) text += fmt::format("  vel_bit_param {0} = self->{0};\n", name);
    text += fmt::format("  if ({0}.data == NULL) {0} = (vel_bit_param){1};\n", name, own);
  }
  return text;
}

void FunctionWriter::appendLocals(const UnitSymbol& unit, std::string& out) {
  const bool function = unit.type() == POUType::Function;
  for (const auto& variable : unit.variables()) {
    const bool result = variable.get() == unit.result;
    const bool local = function ? variable->role == Role::Local || variable->role == Role::Temp
                                : variable->role == Role::Temp;
    const vel::SymbolDataType* const type = variable->dataType();
    const bool copied =
        function && variable->role == Role::Input && isTextType(type) && !variable->indirect;
    if (variable->isLocated()) continue;
    if (function && variable->role == Role::EdgeState) {
      out += fmt::format("  static u8 {};\n", file_.names.of(*variable));
    }
    if (local || copied || (result && !isTextType(type))) {
      const bool parts = isTextType(type) || isComposite(type);
      const char* const zero = variable->indirect ? "NULL" : parts ? "{0}" : "0";
      out += fmt::format("  {} = {};\n", declaration(file_.names, *variable), zero);
    }
    const bool named = function ? !result : local;
    if (named && body_.used.count(variable.get()) == 0) {
      out += fmt::format("  (void){};\n", file_.names.of(*variable));
    }
  }
}

void FunctionWriter::appendFunction(std::string& out) {
  const UnitSymbol& function = *body_.unit;
  follow();
  prepare(function);
  statements_.statements(function.node->leaf(Unit::kBody));
  const std::string text =
      take(false, function.result != nullptr ? "  return vel_result;\n}\n" : "}\n");
  std::string head = functionHead(file_, function) + " {\n";
  appendLocals(function, head);
  out += body_.opening(head);
  out += text;
}

void FunctionWriter::prepare(const UnitSymbol& function) {
  if (function.isTest()) {
    const ConfiguredVariables::Root& root = file_.services.configured.roots[&function];
    if (!root.places.empty()) body_.line(placesTable(root));
  }
  for (const auto& variable : function.variables()) {
    const vel::SymbolDataType* const type = variable->dataType();
    const Role role = variable->role;
    if (role == Role::Input && isTextType(type) && !variable->indirect) {
      body_.statement(storeText(file_.names, type, expressions_.places.of(*variable),
                                "vel_" + file_.names.of(*variable), type->dataType()));
    } else if (role == Role::Result && isTextType(type)) {
      body_.line(file_.names.of(*variable) + "[0] = 0;");
    } else if (role == Role::Output) {
      const std::string place = expressions_.places.of(*variable).load();
      const std::string zero = isComposite(type) ? zeroText(file_.names, type) : "0";
      body_.statement(fmt::format("{}{} = {}", place, isTextType(type) ? "[0]" : "", zero));
    }
    if (role != Role::Input && role != Role::InOut && file_.startValues.differFromZero(*variable)) {
      const Place result{Place::Kind::Object, file_.names.of(*variable)};
      initials_.enter(*variable, nullptr);
      initials_.initialise(role == Role::Result ? result : expressions_.places.of(*variable),
                           *variable);
    }
  }
  body_.used.clear();  // the initial value is not a use
}

void FunctionWriter::appendInitialisation(std::string& out) {
  const UnitSymbol& unit = *body_.unit;
  body_.usesSelf = true;
  const UnitSymbol* const globals = file_.services.symbols.globals();
  const bool alone = hasOneInstance(unit);
  if (globals != nullptr && alone) body_.line(file_.names.of(*globals).init + "();");
  const bool large =
      std::any_of(unit.variables().begin(), unit.variables().end(),
                  [](const auto& member) { return isComposite(member->dataType()); });
  // A compound literal of a large type would take as much stack.
  body_.line(large ? "__builtin_memset(self, 0, sizeof *self);"
                   : fmt::format("*self = (struct {}){{0}};", file_.names.of(unit).name));
  const ConfiguredVariables::Root& root = file_.services.configured.roots[&unit];
  if (alone && !root.places.empty()) body_.line(placesTable(root));
  initials_.setPlaces(unit);
  initials_.initialiseAll(unit, true);
  if (alone) initials_.setConfigured(root, {Place::Kind::Pointed, "self"});
  const std::string text = take(true);
  if (alone) {
    out += "\n" + programHead(unit, file_.names.of(unit).init);
  } else {
    out += "\n" + initHead(file_, unit) + " {\n";
  }
  out += text;
}

void FunctionWriter::detectEdge(const VarSymbol& input) {
  const std::string given = "vel_given_" + file_.names.of(input);
  const std::string state = expressions_.places.of(*input.edgeState).load();
  const bool rising = input.edge == Edge::Rising;
  body_.statement(fmt::format("const u8 {} = {}", given, expressions_.places.of(input).load()));
  const std::string edge =
      fmt::format("({} & !{})", rising ? given : state, rising ? state : given);
  body_.statement(storeText(file_.names, input.dataType(), expressions_.places.of(input), edge,
                            BasicDataType::Bool));
  body_.statement(fmt::format("{} = {}", state, given));
  body_.closingStatement(storeText(file_.names, input.dataType(), expressions_.places.of(input),
                                   given, BasicDataType::Bool));
}

void FunctionWriter::appendBody(std::string& out) {
  const UnitSymbol& unit = *body_.unit;
  follow();
  initials_.initialiseAll(unit, false);
  for (const auto& variable : unit.variables()) {
    if (variable->edge != Edge::None) detectEdge(*variable);
  }
  statements_.statements(unit.node->leaf(Unit::kBody));
  std::string text = take(true);
  // Standard blocks are small, and their arguments are often constant, so inlining pays.
  std::string head = hasOneInstance(unit)
                         ? programHead(unit, file_.names.of(unit).scan)
                         : fmt::format("{}{}void {}(struct {}* self) {{\n", file_.linkage(unit),
                                       unit.standard ? "inline " : "", file_.names.of(unit).body,
                                       file_.names.of(unit).name);
  appendLocals(unit, head);
  out += body_.opening(head);
  join(out, std::move(text));
}

void FunctionWriter::appendGlobalsInitialisation(std::string& out) {
  const ConfiguredVariables::Root& root = file_.services.configured.roots[body_.unit];
  if (!root.places.empty()) body_.line(placesTable(root));
  initials_.initialiseAll(*body_.unit, true);
  initials_.setConfigured(root, {Place::Kind::Object, file_.names.of(*body_.unit).data});
  out += fmt::format(
      "\n{}void {}(void) {{\n  static u8 vel_done;\n  if (vel_done) return;\n"
      "  vel_done = 1;\n",
      file_.linkage(*body_.unit), file_.names.of(*body_.unit).init);
  out += take(false);
}

void FunctionWriter::appendInitialisation(const StructType& structure, std::string& out) {
  body_.usesSelf = true;
  for (const auto& member : structure.members()) {
    initials_.enter(*member, &structure);
    initials_.initialise({Place::Kind::Object, "self->" + file_.names.of(*member)}, *member);
  }
  out += "\n" + initHead(file_, structure) + " {\n" + take(true);
}

void FunctionWriter::appendInit(const ProgramInstance& instance, std::string& out) {
  const SymbolNames& names = file_.names;
  const ConfiguredVariables::Root& root = file_.services.configured.roots[&instance];
  const UnitSymbol* const globals = file_.services.symbols.globals();
  if (!root.places.empty()) body_.line(placesTable(root));
  if (globals != nullptr) body_.line(names.of(*globals).init + "();");
  body_.statement(fmt::format("{}(&{}{})", names.of(*instance.program).init,
                              names.of(instance).data, root.places.empty() ? "" : ", vel_places"));
  initials_.setConfigured(root, {Place::Kind::Object, names.of(instance).data});
  out += fmt::format("\nvoid {}(void) {{\n{}", names.of(instance).init, take(false));
}

void FunctionWriter::appendScan(const ProgramInstance& instance, std::string& out) {
  file_.services.calls.currentUnit = instance.name;
  const Place data{Place::Kind::Object, file_.names.of(instance).data};
  expressions_.calls.record(*instance.connections, *instance.program);
  statements_.runInstance(*instance.connections, *instance.program, data);
  out += fmt::format("\nvoid {}(void) {{\n{}", file_.names.of(instance).scan, take(false));
}

void FunctionWriter::appendCondition(const Task& task, const std::string& name, std::string& out) {
  file_.services.calls.currentUnit = task.name;
  body_.statement("return " + expressions_.expressionText(task.single));
  out += fmt::format("\nstatic u8 {}(void) {{\n{}", name, take(false));
}

std::string FunctionWriter::programHead(const UnitSymbol& program, const std::string& name) const {
  return fmt::format("void {}(void) {{\n  struct {}* const self = &{};\n", name,
                     file_.names.of(program).name, file_.names.of(program).data);
}

}  // namespace refhost
