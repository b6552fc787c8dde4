// The names that can stand at the cursor.
#pragma once

#include <string_view>

#include "refhost/editor/other_names.h"
#include "refhost/editor/proposals.h"

namespace refhost {

class CompletionParts {
 public:
  // All must outlive the object.
  CompletionParts(const NamesAt& names, const std::vector<const FileDeclaration*>& others,
                  Proposals& proposals)
      : names_(names),
        context_(names.context()),
        others_(names, others, proposals),
        proposals_(proposals) {}

  void addOperands() const;
  void addStatements() const;
  void addLabels() const;
  void addMembers() const;
  void addValuesOf(std::string_view type) const;
  void addTypes() const;
  void addGlobals() const;
  void addConfigured() const;  // with which the paths in a VAR_CONFIG begin
  void addPrograms() const;
  void addOfKind(SymbolKind kind) const;

 private:
  void addVariables(bool targets) const;
  void addInstanceCall(const NamedPart& part) const;
  void addCallables(bool statement) const;
  void addCallable(std::string_view name, Rank rank, bool statement) const;
  void addOperators(bool statement) const;
  void addWantedValues() const;
  bool isUsedLabel(std::string_view value) const;
  // Named ones. True if nothing else can stand here.
  bool addArguments() const;
  void addPathParts() const;
  Rank rankOf(const NamedPart& part) const;

  const NamesAt& names_;
  const CursorContext& context_;
  const OtherNames others_;
  Proposals& proposals_;
};

}  // namespace refhost
