// Tells where in the Structured Text a program crashed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "cli/termination_guard.h"
#include "refhost/session.h"

namespace velc {

struct SourcePlace {
  std::uint32_t file = 0;
  std::uint32_t line = 0;  // from 1
};

// The places of a program's end, inside out: where it was, and from where that was called. `report`
// is what harness/crash.h wrote, `program` was compiled with -g1 from C that names its lines. Calls
// outside of the sources are left out, and so are repetitions. Empty if there is no addr2line.
std::vector<SourcePlace> crashPlaces(const refhost::SourceManager& sources,
                                     const std::filesystem::path& program, std::string_view report,
                                     const TerminationGuard& guard);

// For the end of a message: " at a.st:7, in PROGRAM P", then the line, and the places of the calls.
// Empty for no places.
std::string crashText(const refhost::Session& session, const std::vector<SourcePlace>& places);

}  // namespace velc
