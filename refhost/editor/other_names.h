// The names of other files that can stand at the cursor: naming one adds its file to the program.
#pragma once

#include <string_view>
#include <vector>

#include "refhost/editor/file_declarations.h"
#include "refhost/editor/proposals.h"

namespace refhost {

class OtherNames {
 public:
  // Of several declarations of a name the first counts. All must outlive the object.
  OtherNames(const NamesAt& names, const std::vector<const FileDeclaration*>& declarations,
             Proposals& proposals)
      : names_(names), declarations_(declarations), proposals_(proposals) {}

  void addTypes() const;
  void addOperands() const;
  void addTargets() const;  // variables to be written
  void addCalls() const;    // as statements
  void addGlobals() const;  // to be declared as VAR_EXTERNAL
  void addPrograms() const;
  void addValuesOf(std::string_view type) const;  // of an enumeration

 private:
  // Passes those that suit the word at the cursor and whose names the program does not know.
  template <typename Use>
  void forEach(Use use) const;
  bool isKnown(std::string_view name) const;
  static Proposal proposalOf(const FileDeclaration& declaration);
  void add(const FileDeclaration& declaration, Fit fit = Fit::Possible) const;
  void addCall(const FileDeclaration& declaration, bool statement) const;
  Fit fitOf(const FileDeclaration& declaration) const;

  const NamesAt& names_;
  const std::vector<const FileDeclaration*>& declarations_;
  Proposals& proposals_;
};

}  // namespace refhost
