// The names of the files of a program that is written as several.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "refhost/emit/file_context.h"

namespace refhost {

// Names of files without their extensions. They are those of the declarations in C, but differ in
// more than letter case, and are no names of headers of the C library or of devices.
class SplitNames {
 public:
  explicit SplitNames(const FileContext& file);

  const std::string& of(const UnitSymbol& unit) const { return names_.at(&unit); }
  const std::string& of(const StructType& structure) const { return names_.at(&structure); }
  // Empty without program instances.
  const std::string& configuration() const { return configuration_; }

  // Files that belong to no declaration.
  static constexpr std::string_view kProgram = "vel_program";  // the inclusion of the runtime
  static constexpr std::string_view kTypes = "vel_types";      // initial values of structures
  static constexpr std::string_view kAll = "vel_all";          // all headers

 private:
  std::string allocate(const std::string& wanted);

  std::unordered_set<std::string> taken_;  // in small letters
  std::unordered_map<const vel::Symbol*, std::string> names_;
  std::string configuration_;
};

}  // namespace refhost
