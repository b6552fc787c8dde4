#include "refhost/emit/file_names.h"

#include <fmt/format.h>

#include <cctype>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "host/ast_node_helper.h"
#include "refhost/emit/type_text.h"

namespace refhost {

using vel::POUType;

void FileNames::nameAll() {
  nameUnits();
  nameConfiguration();
  nameTypes();
  nameArrays();
  for (const UnitSymbol* const unit : services_.symbols.units()) nameVariables(*unit);
  if (services_.symbols.globals() != nullptr) nameVariables(*services_.symbols.globals());
}

std::string FileNames::derive(const std::string& wanted) {
  return *derived_.insert(file_.allocate(wanted)).first;
}

std::string FileNames::avoidOperatorName(const std::string& name) const {
  const vel::STOperator* const op = services_.operators->findOperator(name);
  return op != nullptr && op->name == name ? name + "_" : name;
}

namespace {

// `TEST#3` becomes `test_3`.
std::string testName(const UnitSymbol& part) {
  std::string name = part.name();
  for (char& c : name) c = c == '#' ? '_' : toLower(c);
  return name;
}

}  // namespace

void FileNames::nameUnits() {
  const auto& units = services_.symbols.units();
  for (const UnitSymbol* const unit : units) {
    if (unit->isTest()) continue;
    const std::string name = file_.allocate(avoidOperatorName(unit->name()));
    if (name != unit->name()) derived_.insert(name);
    names_[*unit].name = name;
  }
  for (const UnitSymbol* const unit : units) {
    if (unit->isTest()) names_[*unit].name = derive(testName(*unit));
  }
  nameGlobals();
  for (const UnitSymbol* const unit : units) {
    if (unit->type() == POUType::Function) continue;
    UnitNames& own = names_[*unit];
    own.init = derive(own.name + "_init");
    own.body = derive(own.name + "_body");
    if (unit->type() == POUType::Program && (!unit->instantiated || unit->isTest())) {
      own.scan = derive(own.name + "_scan");
      own.data = derive(own.name + "_data");
    }
  }
}

void FileNames::nameConfiguration() {
  const Configuration& configuration = services_.configuration;
  if (configuration.instances.empty()) return;
  for (const ProgramInstance& instance : configuration.instances) {
    UnitNames& own = names_[instance];
    own.name = instance.name;
    own.init = derive(own.name + "_init");
    own.scan = derive(own.name + "_scan");
    own.data = derive(own.name + "_data");
  }
  for (const TaskRow& row : configuration.schedule()) {
    std::string name = row.resource.empty() ? configuration.name : row.resource;
    if (row.task != nullptr) name = row.task->name;
    const bool edges = row.task != nullptr && row.task->single != nullptr;
    names_.configuration.rows.push_back(
        {derive(name + "_run"), edges ? derive(name + "_single") : ""});
  }
  names_.configuration.init = derive(configuration.name + "_init");
  names_.configuration.tasks = derive(configuration.name + "_tasks");
}

void FileNames::nameVariables(const UnitSymbol& unit) {
  CNames block(CNames::Scope::Block, avoided_.get());
  // The result of a function must not hide the C function, which may be called recursively.
  if (unit.type() == POUType::Function) block.allocate(names_[unit].name);
  for (const auto& variable : unit.variables()) {
    const bool edge = variable->role == Role::EdgeState;
    if (variable.get() == unit.result) {
      names_[*variable] = "vel_result";
      continue;
    }
    std::string name = block.allocate((edge ? "edge_" : "") + avoidOperatorName(variable->name()));
    const bool local = unit.type() == POUType::Function || !variable->isKept();
    while (local && derived_.count(name) != 0) name = block.allocate(name + '_');
    names_[*variable] = std::move(name);
  }
}

void FileNames::nameGlobals() {
  const UnitSymbol* const globals = services_.symbols.globals();
  if (globals == nullptr) return;
  UnitNames& own = names_[*globals];
  own.name = file_.allocate("globals");
  own.init = derive("globals_init");
  own.data = derive("globals_data");
}

// A structure without a name is called STRUCT. The names of several are told apart by their order,
// so that a shared one also gets the name of what declares it.
std::string FileNames::nameOf(const StructType& structure) const {
  if (!isAnonymous(structure)) return structure.name();
  std::string name = structure.name().substr(0, structure.name().find('#'));
  if (avoided_ == nullptr) return name;
  for (const ASTNode* node = &structure.declared; node != nullptr; node = node->parent()) {
    if (kindOf(*node) == NodeKind::TypeDecl) {
      return static_cast<const Text*>(node->leaf(0))->text() + ('_' + name);
    }
    const UnitSymbol* const globals = services_.symbols.globals();
    if (kindOf(*node) == NodeKind::Unit && (globals == nullptr || globals->node != node)) {
      return static_cast<const Unit*>(node)->name() + ('_' + name);
    }
  }
  return "globals_" + name;
}

void FileNames::nameTypes() {
  for (const auto& owned : services_.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure == nullptr) continue;
    TypeNames& own = names_[*structure];
    own.name = file_.allocate(avoidOperatorName(nameOf(*structure)));
    own.init = derive(own.name + "_init");
    CNames block(CNames::Scope::Block, avoided_.get());
    for (const auto& member : structure->members()) {
      names_[*member] = block.allocate(avoidOperatorName(member->name()));
    }
  }
}

// Arrays with the same element type and count in C share one C type.
void FileNames::nameArrays() {
  std::unordered_map<std::string, std::string> arrays;
  // The element type of an array has been added, and thus named, before the array.
  for (const auto& owned : services_.symbols.ownedTypes()) {
    const auto* const array = dynamic_cast<const ArrayType*>(owned.get());
    const OpenArrayType* const open = asOpenArray(owned.get());
    if (array == nullptr && open == nullptr) continue;
    const vel::SymbolDataType* const type = array != nullptr ? array->element : open->element;
    std::string element = declaration(names_, type, "of");
    for (char& c : element) {
      const bool letter = std::isalnum(static_cast<unsigned char>(c)) != 0;
      if (!letter) c = c == '*' ? 'p' : '_';
    }
    const std::string kind = array != nullptr ? fmt::format("array_{}", array->count())
                                              : fmt::format("open_{}", open->dimensions);
    const std::string text = kind + declaration(names_, type, " a");
    std::string& name = arrays[text];
    if (name.empty()) {
      constexpr std::string_view kStruct = "struct_";
      if (element.compare(0, kStruct.size(), kStruct) == 0) element.erase(0, kStruct.size());
      element.erase(element.rfind("_of"), 3);
      // Lest a chain of n nested arrays have names of n * n characters.
      constexpr std::size_t kLongest = 100;
      if (element.size() > kLongest) {
        element = avoided_ != nullptr ? "nested_" + AstNodeHelper::opExpTextToMd5HexText("", text)
                                      : fmt::format("nested_{}", arrays.size());
      }
      name = file_.allocate(fmt::format("{}_{}", kind, element));
    }
    names_[*owned].name = name;
  }
}

}  // namespace refhost
