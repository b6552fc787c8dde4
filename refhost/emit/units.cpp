#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "host/text.h"
#include "refhost/emit/c_generator.h"

namespace refhost {

using vel::POUType;

namespace {

// Appends `text` to `out`; what is moved in memory is the shorter of the two.
void join(std::string& out, std::string text) {
  if (text.size() <= out.size()) {
    out += text;
  } else {
    text.insert(0, out);
    out = std::move(text);
  }
}

// Comparisons that are always true, variables that nobody reads, and BOOL operators that
// evaluate both sides, are the program's own.
constexpr std::string_view kHead =
    "#include \"velrt.h\"\n"
    "#pragma GCC diagnostic ignored \"-Wtype-limits\"\n"
    "#pragma GCC diagnostic ignored \"-Wunused-but-set-variable\"\n"
    "#ifdef __clang__\n"
    "#pragma clang diagnostic ignored \"-Wunknown-warning-option\"\n"
    "#pragma clang diagnostic ignored \"-Wbitwise-instead-of-logical\"\n"
    "#endif\n";

// What the runtime's header must know of device memory: sizes other than its own.
std::string memoryDefinitions(const DeviceMap& memory) {
  const DeviceMap::Sizes usual;
  std::string text;
  const auto define = [&text](const char* name, std::uint32_t size, std::uint32_t usualSize) {
    if (size != usualSize) text += fmt::format("#define VEL_MEMORY_{} {}\n", name, size);
  };
  define("M", memory.sizes().m, usual.m);
  define("I", memory.sizes().i, usual.i);
  define("Q", memory.sizes().q, usual.q);
  define("STATE", memory.stateBytes(), 0);
  return text;
}

// An input is a copy, so that what it was given is reached through a companion that
// the caller fills in; an in-out parameter is a pointer already.
bool keepsCompanion(const VarSymbol& variable) {
  return variable.isBitParameter() && variable.role == Role::Input;
}

// Kept between scans, as a member of the unit's structure.
bool isMember(const VarSymbol& variable) {
  return variable.role != Role::Temp && variable.iecAddress().area == 0 && !variable.inMemory;
}

}  // namespace

CGenerator::CGenerator(Services& services, std::vector<vel::VELMessage>& messages)
    : Generator(&services), services_(services), messages_(messages), effects_(services.symbols) {}

std::string CGenerator::program() {
  nameUnits();
  nameTypes();
  std::string bodies;
  appendGlobals(bodies);
  for (const POUType type : {POUType::Function, POUType::FunctionBlock, POUType::Program}) {
    for (UnitSymbol* const unit : services_.symbols.units()) {
      if (unit->type() != type) continue;
      if (type == POUType::Function) {
        appendFunction(*unit, bodies);
      } else {
        appendStateful(*unit, bodies);
      }
    }
  }
  std::string out = "// Translated from Structured Text by velc.\n";
  out += memoryDefinitions(services_.memory);
  out += kHead;
  std::vector<std::string_view> written;
  for (const std::string& text : staticTexts_) {
    if (text.empty() || std::find(written.begin(), written.end(), text) != written.end()) continue;
    written.push_back(text);
    out += '\n';
    out += text;
    if (text.back() != '\n') out += '\n';
  }
  out += structures();
  out += prototypes();
  out += structureInits();
  join(out, std::move(bodies));
  return out;
}

// The plugin's name of it, which no variable of the program can have in C.
std::string CGenerator::companion(const VarSymbol& parameter) {
  return "offsetParam_" + stringToUpper(parameter.name());
}

std::string CGenerator::initName(const UnitSymbol& unit) { return unit.cInit; }
std::string CGenerator::scanName(const UnitSymbol& unit) { return unit.cScan; }

Place CGenerator::globalPlace(const VarSymbol& variable) {
  const vel::HeapAddress address = variable.iecAddress();
  if (address.area == 0) {
    return {Place::Kind::Object, variable.owner->cData + "." + variable.cName};
  }
  return Place::ofAddress(address, variable.backendAddress(),
                          cType(variable.dataType()->dataType()));
}

// C calls operators by their names, which no variable may hide.
std::string CGenerator::unoperated(const std::string& name) const {
  const vel::STOperator* const op = services_.operators->findOperator(name);
  return op != nullptr && op->name == name ? name + "_" : name;
}

void CGenerator::nameUnits() {
  const auto& units = services_.symbols.units();
  for (UnitSymbol* const unit : units) unit->cName = fileNames_.allocate(unoperated(unit->name()));
  nameGlobals();
  for (UnitSymbol* const unit : units) {
    nameVariables(*unit);
    if (unit->type() == POUType::Function) continue;
    unit->cInit = fileNames_.allocate(unit->cName + "_init");
    unit->cBody = fileNames_.allocate(unit->cName + "_body");
    if (unit->type() == POUType::Program) {
      unit->cScan = fileNames_.allocate(unit->cName + "_scan");
      unit->cData = fileNames_.allocate(unit->cName + "_data");
    }
  }
}

void CGenerator::nameVariables(UnitSymbol& unit) {
  CNames names(CNames::Scope::Block);
  // Inside a function its own name stays that of the C function.
  if (unit.type() == POUType::Function) names.allocate(unit.cName);
  for (const auto& variable : unit.variables()) {
    const bool edge = variable->role == Role::EdgeState;
    variable->cName = variable.get() == unit.result
                          ? "vel_result"
                          : names.allocate((edge ? "edge_" : "") + unoperated(variable->name()));
  }
}

void CGenerator::appendStructure(const UnitSymbol& unit, std::string& out) const {
  out += fmt::format("\nstruct {} {{\n", unit.cName);
  bool empty = true;
  for (const auto& variable : unit.variables()) {
    if (!isMember(*variable)) continue;
    empty = false;
    const bool pointer = variable->role == Role::InOut;
    if (pointer && isTextType(variable->dataType())) {
      const bool narrow = variable->dataType()->dataType() == BasicDataType::String;
      out += fmt::format("  {}* {};\n", narrow ? "char" : "u16", variable->cName);
    } else {
      out += fmt::format("  {};\n",
                         declaration(variable->dataType(), (pointer ? "*" : "") + variable->cName));
    }
  }
  for (const auto& variable : unit.variables()) {
    if (keepsCompanion(*variable))
      out += fmt::format("  vel_bit_param {};\n", companion(*variable));
  }
  if (empty) out += "  u8 vel_empty;\n";
  out += "};\n";
  if (unit.type() == POUType::Program) {
    // Nothing needs to use what only the platform sets or shows.
    out += fmt::format("static struct {} {} __attribute__((unused));\n", unit.cName, unit.cData);
  }
}

std::string CGenerator::functionHead(const UnitSymbol& function) {
  std::string parameters;
  const auto add = [&parameters](const std::string& text) {
    if (!parameters.empty()) parameters += ", ";
    parameters += text;
  };
  for (int i = 0; i < function.paramsCount(); ++i) {
    const auto& parameter = *static_cast<const VarSymbol*>(function.param(i));
    const Type* const type = parameter.dataType();
    const bool input = parameter.role == Role::Input;
    if (isTextType(type)) {
      const char* const unit = type->dataType() == BasicDataType::String ? "char" : "u16";
      add(input ? fmt::format("const {}* vel_{}", unit, parameter.cName)
                : fmt::format("{}* {}", unit, parameter.cName));
    } else {
      add(declaration(type, (input ? "" : "*") + parameter.cName));
    }
    if (keepsCompanion(parameter)) add("vel_bit_param " + companion(parameter));
  }
  const Type* const result = function.result != nullptr ? function.result->dataType() : nullptr;
  std::string resultText = result != nullptr ? typeText(const_cast<Type*>(result)) : "void";
  if (isTextType(result)) {
    resultText = result->dataType() == BasicDataType::String ? "char*" : "u16*";
    add(resultText + " vel_result");
  }
  return fmt::format("static {} {}({})", resultText, function.cName,
                     parameters.empty() ? "void" : parameters);
}

std::string CGenerator::prototypes() {
  std::string out;
  for (const auto& owned : services_.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure == nullptr || !startValues_.differFromZero(structure)) continue;
    out += fmt::format("static void {}(struct {}* self) __attribute__((unused));\n",
                       structure->cInit, structure->cName);
  }
  if (const UnitSymbol* const globals = services_.symbols.globals()) {
    out += fmt::format("static void {}(void);\n", globals->cInit);
  }
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() == POUType::Function) {
      out += functionHead(*unit) + " __attribute__((unused));\n";
    } else if (unit->type() == POUType::FunctionBlock) {
      for (const std::string& name : {unit->cInit, unit->cBody}) {
        out += fmt::format("static void {}(struct {}* self) __attribute__((unused));\n", name,
                           unit->cName);
      }
    } else {
      out += fmt::format("void {}(void);\nvoid {}(void);\n", unit->cInit, unit->cScan);
    }
  }
  return out.empty() ? out : "\n" + out;
}

void CGenerator::enter(UnitSymbol& unit) {
  unit_ = &unit;
  services_.calls.currentUnit = unit.name();
  // More than C takes for a statement. What is not written to takes no memory.
  constexpr std::size_t kGrowth = 3;
  body_.clear();
  body_.reserve(kGrowth * vel::TreeBuilder::source(*unit.node).size());
  declarations_.clear();
  closing_.clear();
  initialised_.clear();
  used_.clear();
  companions_.clear();
  indent_ = 1;
  temporaries_ = 0;
  usesSelf_ = false;
  returns_ = false;
}

std::string CGenerator::leave(bool hasSelf) {
  const std::string companions = companionsText();
  std::string front = hasSelf && !usesSelf_ ? "  (void)self;\n" : "";
  front += declarations_;
  front += companions;
  std::string text = std::move(body_);
  text.insert(0, front);
  if (returns_) text += "vel_return:;\n";
  text += closing_;
  return text;
}

// The companions of the bit parameters that the body names.
std::string CGenerator::companionsText() {
  const bool function = unit_->type() == POUType::Function;
  std::string text;
  for (const auto& variable : unit_->variables()) {
    const Type* const type = variable->dataType();
    if (!variable->isBitParameter() || type == nullptr) continue;
    const std::string name = companion(*variable);
    if (companions_.count(variable.get()) == 0) {
      if (function && keepsCompanion(*variable)) text += fmt::format("  (void){};\n", name);
      continue;
    }
    const Place place = placeOf(*variable);
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

// Gives every variable its initial value; those that already hold zero are left out
// unless the program names another.
void CGenerator::appendInitials(const UnitSymbol& unit, bool members) {
  for (const auto& variable : unit.variables()) {
    const bool kept = variable->role != Role::Temp;
    if (kept != members || variable->role == Role::InOut) continue;
    initialiseOnce(*variable);
  }
}

// Locals of a C function: all start from zero.
void CGenerator::appendLocals(const UnitSymbol& unit, std::string& out) {
  const bool function = unit.type() == POUType::Function;
  for (const auto& variable : unit.variables()) {
    const bool result = variable.get() == unit.result;
    const bool local = function ? variable->role == Role::Local || variable->role == Role::Temp
                                : variable->role == Role::Temp;
    const Type* const type = variable->dataType();
    const bool copied = function && variable->role == Role::Input && isTextType(type);
    if (variable->iecAddress().area != 0) continue;
    if (function && variable->role == Role::EdgeState) {
      out += fmt::format("  static u8 {};\n", variable->cName);
    }
    if (local || copied || (result && !isTextType(type))) {
      const char* const zero = isTextType(type) || isComposite(type) ? "{0}" : "0";
      out += fmt::format("  {} = {};\n", declaration(type, variable->cName), zero);
    }
    const bool named = function ? !result : local;
    if (named && used_.count(variable.get()) == 0) {
      out += fmt::format("  (void){};\n", variable->cName);
    }
  }
}

void CGenerator::appendFunction(UnitSymbol& function, std::string& out) {
  enter(function);
  for (const auto& variable : function.variables()) {
    const Type* const type = variable->dataType();
    const Role role = variable->role;
    if (role == Role::Input && isTextType(type)) {
      line(storeText(type, placeOf(*variable), "vel_" + variable->cName, type->dataType()) + ";");
    } else if (role == Role::Result && isTextType(type)) {
      line(variable->cName + "[0] = 0;");
    } else if (role == Role::Output) {
      const std::string place = placeOf(*variable).load();
      const std::string zero =
          isComposite(type) ? fmt::format("({}){{0}}", declaration(type, "")) : "0";
      line(fmt::format("{}{} = {};", place, isTextType(type) ? "[0]" : "", zero));
    }
    if (role != Role::Input && role != Role::InOut && startValues_.differFromZero(*variable)) {
      const Place result{Place::Kind::Object, variable->cName};
      initialise(role == Role::Result ? result : placeOf(*variable), *variable);
    }
  }
  used_.clear();  // a variable that is only set is not used
  statements(function.node->leaf(Unit::kBody));
  const std::string text = leave(false);
  out += "\n" + functionHead(function) + " {\n";
  appendLocals(function, out);
  out += text;
  if (function.result != nullptr) out += "  return vel_result;\n";
  out += "}\n";
}

void CGenerator::appendInit(UnitSymbol& unit, std::string& out) {
  enter(unit);
  usesSelf_ = true;
  const UnitSymbol* const globals = services_.symbols.globals();
  if (globals != nullptr && unit.type() == POUType::Program) line(globals->cInit + "();");
  const bool large =
      std::any_of(unit.variables().begin(), unit.variables().end(),
                  [](const auto& member) { return isComposite(member->dataType()); });
  // Nothing large goes over the stack.
  line(large ? "__builtin_memset(self, 0, sizeof *self);"
             : fmt::format("*self = (struct {}){{0}};", unit.cName));
  appendInitials(unit, true);
  const std::string text = leave(true);
  if (unit.type() == POUType::Program) {
    out += fmt::format("\nvoid {}(void) {{\n  struct {}* const self = &{};\n", unit.cInit,
                       unit.cName, unit.cData);
  } else {
    out += fmt::format("\nstatic void {}(struct {}* self) {{\n", unit.cInit, unit.cName);
  }
  out += text + "}\n";
}

void CGenerator::detectEdge(const VarSymbol& input) {
  const std::string given = "vel_given_" + input.cName;
  const std::string state = placeOf(*input.edgeState).load();
  const bool rising = input.edge == Edge::Rising;
  line(fmt::format("const u8 {} = {};", given, placeOf(input).load()));
  const std::string edge = fmt::format(rising ? "({} & !{})" : "(!{} & {})", given, state);
  line(storeText(input.dataType(), placeOf(input), edge, BasicDataType::Bool) + ";");
  line(fmt::format("{} = {};", state, given));
  closing_ +=
      "  " + storeText(input.dataType(), placeOf(input), given, BasicDataType::Bool) + ";\n";
}

void CGenerator::appendStateful(UnitSymbol& unit, std::string& out) {
  appendInit(unit, out);
  enter(unit);
  appendInitials(unit, false);
  for (const auto& variable : unit.variables()) {
    if (variable->edge != Edge::None) detectEdge(*variable);
  }
  statements(unit.node->leaf(Unit::kBody));
  std::string text = leave(true);
  text += "}\n";
  if (unit.type() == POUType::Program) {
    out += fmt::format("\nvoid {}(void) {{\n  struct {}* const self = &{};\n", unit.cScan,
                       unit.cName, unit.cData);
  } else {
    // A block of the standard is small, and its inputs are often known where it is called.
    out += fmt::format("\nstatic {}void {}(struct {}* self) {{\n", unit.standard ? "inline " : "",
                       unit.cBody, unit.cName);
  }
  appendLocals(unit, out);
  join(out, std::move(text));
}

}  // namespace refhost
