// VAR_CONFIG: places of variables AT %Q*, and initial values of single instances.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "refhost/semantics/part.h"
#include "refhost/services/open_places.h"

namespace refhost {

class ConfiguredPlaces : public Part {
 public:
  using Part::Part;

  // Checks a declaration AT an address with `*`.
  void declareOpen(VarSymbol& variable, const ASTNode& address);
  // Enters what VAR_CONFIG says in the services, and reports variables to which it gives no place.
  // All variables must have been declared.
  // `complete` is false after syntax errors, which may have cost declarations and entries.
  void analyse(bool complete);
  // Gives the variables AT %Q* of the instances in a part of a test memory of their own, since
  // VAR_CONFIG does not know these.
  void placeInstances(const UnitSymbol& test);

 private:
  static constexpr std::uint64_t kMostPlacesInTest = 100'000;
  using Step = ConfiguredVariables::Step;
  // The variable that the path of an entry names.
  struct Target {
    const void* root = nullptr;
    UnitSymbol* unit = nullptr;  // in which the next name is; null when it is in `type`
    Type* type = nullptr;
    VarSymbol* variable = nullptr;
    std::uint64_t number = 0;  // of its place
    std::vector<Step> path;
  };

  void analyseEntry(VarDecl& entry);
  // Null, or the first name that leads nowhere.
  const Expr* follow(const std::vector<Expr*>& names, Target& target);
  void suggest(Remarks& said, const Expr& lost, const Target& target) const;
  std::size_t findRoot(const std::vector<Expr*>& names, Target& target) const;
  bool enterMember(std::string_view name, Target& target);
  bool enterElement(Expr& element, Target& target);
  const ASTNode*& entryOf(const Target& target);
  void place(const ASTNode& path, const ASTNode& address, Target& target);
  void allocate(const Type* type, std::map<std::uint64_t, std::uint32_t>& places);
  void refuseTemporaries(const UnitSymbol& unit);
  bool isLost(const VarSymbol& variable) const;
  bool reportMissing(const void* root, const UnitSymbol& unit, const std::string& path,
                     std::uint64_t number);
  bool reportMissing(const void* root, const Type* type, const std::string& path,
                     std::uint64_t number);

  bool complete_ = true;
  std::vector<std::string_view> lost_;            // last names of the paths that lead nowhere
  std::unordered_set<const VarSymbol*> refused_;  // those at invalid open addresses
  std::unordered_set<const VarSymbol*> reported_;
  std::unordered_map<const void*, std::unordered_map<std::uint64_t, const ASTNode*>> entries_;
};

}  // namespace refhost
