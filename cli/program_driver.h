// Generates the driver of a runnable program, which sets its variables, runs its scans and gives
// the harness access to its variables.
#pragma once

#include <string>
#include <vector>

#include "cli/places.h"
#include "refhost/session.h"

namespace velc {

// The variables of `session` that have a printable value, in order of declaration, followed by
// those of `places` that are not among them. Throws Failure for a place that there is not.
std::vector<refhost::ProgramVariable> printedVariables(const refhost::Session& session,
                                                       const std::vector<std::string>& places);

// The C statements for settings NAME=VALUE, where NAME denotes a place. Throws Failure when there
// is no such place, the value does not fit, or two settings share storage.
std::vector<std::string> settingStatements(const Places& places,
                                           const std::vector<std::string>& settings);

// False for a place that cannot be set: a constant, a pointer, or one that has parts.
bool isSettable(const refhost::ProgramVariable& place);

// What the harness reads and writes while the program runs.
struct WatchedVariables {
  std::vector<refhost::ProgramVariable> retained;
  std::vector<refhost::ProgramVariable> traced;
  std::vector<refhost::ProgramVariable> stimulated;  // elementary ones
};

// C source that includes the program "program.c" and implements velrun.h. With `traceIo`, the
// program prints each refresh of local I/O.
std::string driverText(const refhost::Session& session,
                       const std::vector<std::string>& settingStatements,
                       const std::vector<refhost::ProgramVariable>& printed, bool traceIo,
                       const WatchedVariables& watched = {});

}  // namespace velc
