#include "hostkit/hosttest/duties.h"

#include "core/case_folding.h"
#include "core/op_manager_api.h"
#include "core/operator.h"

namespace hosttest {

using vel::BasicDataType;

const std::vector<ElementaryType>& elementaryTypes() {
  // clang-format off
  static const std::vector<ElementaryType> types = {
      {"BOOL",    BasicDataType::Bool,        "BOOL",    0},
      {"BYTE",    BasicDataType::USInt,       "USINT",   1},
      {"WORD",    BasicDataType::UInt,        "UINT",    2},
      {"DWORD",   BasicDataType::UDInt,       "UDINT",   4},
      {"LWORD",   BasicDataType::ULInt,       "ULINT",   8},
      {"SINT",    BasicDataType::SInt,        "SINT",    1},
      {"USINT",   BasicDataType::USInt,       "USINT",   1},
      {"INT",     BasicDataType::Int,         "INT",     2},
      {"UINT",    BasicDataType::UInt,        "UINT",    2},
      {"DINT",    BasicDataType::DInt,        "DINT",    4},
      {"UDINT",   BasicDataType::UDInt,       "UDINT",   4},
      {"LINT",    BasicDataType::LInt,        "LINT",    8},
      {"ULINT",   BasicDataType::ULInt,       "ULINT",   8},
      {"REAL",    BasicDataType::Real,        "REAL",    4},
      {"LREAL",   BasicDataType::LReal,       "LREAL",   8},
      {"TIME",    BasicDataType::Time,        "TIME",    0},
      {"LTIME",   BasicDataType::LTime,       "LTIME",   0},
      {"DATE",    BasicDataType::Date,        "DATE",    0},
      {"TOD",     BasicDataType::TimeOfDay,   "TOD",     0},
      {"DT",      BasicDataType::DateAndTime, "DT",      0},
      {"STRING",  BasicDataType::String,      "STRING",  0},
      {"WSTRING", BasicDataType::WString,     "WSTRING", 0},
  };
  // clang-format on
  return types;
}

std::string toLower(std::string text) {
  for (char& c : text) c = static_cast<char>(vel::foldCase(c));
  return text;
}

vel::Symbol* find(HostUnderTest& host, const std::string& name, const std::string& scope,
                  vel::Symbol::Type kind) {
  return host.services().symbolManager()->symbol(name.c_str(), scope.c_str(), kind);
}

Unit mainUnit() {
  return {"Main",
          vel::POUType::Program,
          {{"b", "BOOL"},
           {"c", "BOOL"},
           {"i", "INT"},
           {"j", "INT"},
           {"y", "INT"},
           {"w", "WORD"},
           {"r", "REAL"},
           {"s", "STRING"}}};
}

Call::Call(HostUnderTest& host, std::vector<Unit> units, const std::string& statement)
    : host_(host), unit_(units.front().name), invocation_(host.parse(units, statement)) {
  if (invocation_ == nullptr || invocation_->leavesCount() < 2) return;
  if (invocation_->leaf(0) == nullptr || invocation_->leaf(1) == nullptr) return;
  list_ = invocation_->leaf(1);
}

vel::ASTNode* Call::parameter(int i) const { return i < parameters() ? list_->leaf(i) : nullptr; }

DataTypeInfo Call::typeOf(int i) {
  return AstNodeHelper::dataType(&host_.services(), parameter(i), unit_, messages);
}

bool Call::check() {
  vel::OpManagerAPI* const registry = host_.services().operatorManager();
  const std::string name = AstNodeHelper::astText(invocation_->leaf(0));
  vel::STOperator* const op = registry != nullptr ? registry->findOperator(name) : nullptr;
  return op != nullptr && op->check(&host_.services(), invocation_, messages, resultType, unit_);
}

std::string Call::generate() {
  const std::string name = AstNodeHelper::astText(invocation_->leaf(0));
  vel::STOperator* const op = host_.services().operatorManager()->findOperator(name);
  return op->generate(&host_.generator(), invocation_);
}

}  // namespace hosttest
