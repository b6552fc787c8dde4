// Generates the driver of a runnable program, which sets its variables, runs its scans and writes
// the values of its variables.
#pragma once

#include <string>
#include <vector>

#include "refhost/session.h"

namespace velc {

// The variables of `session` that have a printable value, in order of declaration, followed by
// `places`, which are global variables and device addresses. Throws Failure for a place that is
// neither.
std::vector<refhost::ProgramVariable> printedVariables(const refhost::Session& session,
                                                       const std::vector<std::string>& places);

// The C statement for a setting NAME=VALUE, where NAME may be PROGRAM.NAME or a device address.
// Throws Failure when there is no such variable or the value does not fit.
std::string settingStatement(const refhost::Session& session, const std::string& setting);

// C source that includes the program "program.c" and implements velrun.h. `retained` are variables
// that are loaded and stored. With `traceIo`, the
// program prints each refresh of local I/O.
std::string driverText(const refhost::Session& session,
                       const std::vector<std::string>& settingStatements,
                       const std::vector<refhost::ProgramVariable>& printed, bool traceIo,
                       const std::vector<refhost::ProgramVariable>& retained = {});

// The lines `name = value`. `bytes` is the output of the driver. Throws Failure when it does not
// have the size of the values of `printed`.
std::string valueLines(const refhost::Session& session,
                       const std::vector<refhost::ProgramVariable>& printed,
                       const std::string& bytes);

}  // namespace velc
