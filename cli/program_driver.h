// The part of a runnable program that knows its variables: sets them, scans, and
// hands out their values.
#pragma once

#include <string>
#include <vector>

#include "refhost/session.h"

namespace velc {

// The variables of `session` that have a value to print, in order of declaration, then
// the `places`: global variables and device addresses. Throws Failure for a text that is
// neither.
std::vector<refhost::ProgramVariable> printedVariables(const refhost::Session& session,
                                                       const std::vector<std::string>& places);

// The C statement of a setting NAME=VALUE, where NAME may be PROGRAM.NAME or a device
// address. Throws
// Failure when there is no such variable or the value does not fit.
std::string settingStatement(const refhost::Session& session, const std::string& setting);

// The C source that includes the program "program.c" and implements velrun.h. With
// `traceIo` it prints each refresh of local I/O.
std::string driverText(const refhost::Session& session,
                       const std::vector<std::string>& settingStatements,
                       const std::vector<refhost::ProgramVariable>& printed, bool traceIo);

// The lines `name = value`; `bytes` are what the driver handed out. Throws Failure
// when they are not the values of `printed`.
std::string valueLines(const refhost::Session& session,
                       const std::vector<refhost::ProgramVariable>& printed,
                       const std::string& bytes);

}  // namespace velc
