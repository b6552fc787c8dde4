// The places that users name on the command line and in files: variables, their parts and device
// addresses.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/session.h"

namespace velc {

class Places {
 public:
  // After Session::translate().
  explicit Places(const refhost::Session& session);

  // The place that `name` denotes: a variable, PROGRAM.VARIABLE, or a part of one such as
  // `timer.ET` or `table[2,0].x`, or else a device address. The name alone of a global variable
  // denotes that, whatever other variables have this name. Returns false and says why in `error`
  // when there is no such place or there are several.
  bool find(std::string_view text, refhost::ProgramVariable& place, std::string& error) const;
  // The same; throws Failure with a message that begins with `option`.
  refhost::ProgramVariable named(std::string_view option, std::string_view name) const;

  // All places that `pattern` stands for: `*` for the variables of all programs and the global
  // ones, `PROGRAM.*` for those of one, without constants and pointers; any other name for itself.
  // Throws Failure like named().
  std::vector<refhost::ProgramVariable> matching(std::string_view option,
                                                 std::string_view pattern) const;

  // The name of `place` for printing. If several programs run, it begins with the program's.
  std::string displayName(const refhost::ProgramVariable& place) const;
  bool severalPrograms() const { return qualified_; }

 private:
  using Found = std::vector<const refhost::ProgramVariable*>;

  std::string unknown(std::string_view name) const;

  const refhost::Session& session_;
  std::vector<refhost::ProgramVariable> variables_;
  std::vector<std::string> qualifiedNames_;
  hostkit::FoldedMap<Found> byName_;
  bool qualified_;
};

// The elementary values and enumerations that `place` consists of, in the order in which they lie
// in memory, each with its name as a path.
std::vector<refhost::ProgramVariable> elementaryParts(const refhost::ProgramVariable& place);

}  // namespace velc
