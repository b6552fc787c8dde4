// What check, translate and run have in common: sources in, diagnostics out.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "refhost/session.h"

namespace velc {

// A session with its plugin loaded; throws Failure.
std::unique_ptr<refhost::Session> startSession(const CommonOptions& common);

// Reads and checks the files and prints the diagnostics. False when there are
// errors; throws Failure for a file that cannot be read.
bool analyse(refhost::Session& session, const CommonOptions& common,
             const std::vector<std::string>& files);

// The C text of what analyse() has accepted; prints what else is to be said. Nothing
// when there are errors.
std::optional<std::string> translateToC(refhost::Session& session, const CommonOptions& common);

}  // namespace velc
