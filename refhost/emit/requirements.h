// The declarations that a C file or a header must contain or include before its own text.
#pragma once

#include <map>
#include <set>
#include <string>
#include <unordered_set>

#include "refhost/emit/split_names.h"

namespace refhost {

class Requirements {
 public:
  // `own` is the file itself, without its extension.
  Requirements(const FileContext& file, const SplitNames& files, std::string own)
      : file_(file), files_(files), own_(std::move(own)) {}

  // A type whose size or members the text uses, also through pointers, and one to which it only has
  // pointers. Both may be null.
  void complete(const vel::SymbolDataType* type);
  void pointed(const vel::SymbolDataType* type);
  // The variables of a structure, or the parameters and the result of a FUNCTION.
  template <typename Variables>
  void variables(const Variables& variables) {
    for (const auto& variable : variables) {
      if (variable->indirect && asOpenArray(variable->dataType()) == nullptr) {
        pointed(variable->dataType());
      } else {
        complete(variable->dataType());
      }
    }
  }
  void include(const std::string& file);
  // All that a text names: what pointers and arrays of them lead to is complete then.
  void named(const NamedSymbols& symbols);

  // The inclusions, without that of the file itself.
  std::string inclusions() const;
  // The declarations that stand in the file: of structures behind pointers, and of arrays, which
  // have no header, since each is the same wherever it stands.
  std::string declarations() const;

 private:
  void add(const vel::SymbolDataType* type, bool isComplete);

  const FileContext& file_;
  const SplitNames& files_;
  const std::string own_;
  std::set<std::string> includes_;
  std::map<std::string, std::string> pointed_;  // the file of a structure, empty for an array
  std::unordered_set<std::string> arrays_;
  std::string structures_;  // of the arrays
};

}  // namespace refhost
