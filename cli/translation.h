// The steps that check, translate and run share: reading sources and printing diagnostics.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/common_options.h"
#include "refhost/session.h"

namespace velc {

// A session with its plugin loaded; throws Failure.
std::unique_ptr<refhost::Session> startSession(const CommonOptions& common);

class Report;

// Throws Failure if one of the files `outputs` is among the inputs or given twice. Empty names, "-"
// and devices are no files.
void refuseClashes(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);

// Reads and checks the files, with their unit tests if `tests` says so, and prints the diagnostics.
// False when there are errors; throws Failure for a file that cannot be read.
bool analyse(refhost::Session& session, const CommonOptions& common,
             const std::vector<std::string>& files, bool tests = false);
// The same for one of several programs, whose report the caller finishes.
bool analyse(refhost::Session& session, Report& report, const std::vector<std::string>& files,
             bool tests = false);

// Translates the files that analyse() has accepted, and prints further diagnostics. Returns
// nullopt when there are errors.
std::optional<std::string> translateToC(refhost::Session& session, const CommonOptions& common,
                                        const refhost::TranslationOptions& options = {});
// The same into several files, with `#line` if `lines`. Returns none when there are errors.
std::vector<refhost::TranslatedFile> translateToFiles(refhost::Session& session,
                                                      const CommonOptions& common, bool lines);

}  // namespace velc
