// Compiles the C of programs.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/process.h"

namespace velc {

struct Compilation {
  std::string compiler;
  std::vector<std::string> flags;  // beside those that all programs need
  std::chrono::seconds timeout;
};

// Makes `program` from the C file `source` with the harness and the runtime. Throws Failure when
// the compiler does.
void compileProgram(const std::filesystem::path& source, const std::filesystem::path& program,
                    const Compilation& compilation, const TerminationGuard& guard);

// The same of several C files, which are compiled at once. Returns their object files.
std::vector<std::filesystem::path> compileParts(const std::vector<std::filesystem::path>& sources,
                                                const std::filesystem::path& program,
                                                const Compilation& compilation,
                                                const TerminationGuard& guard);

// Tells by its name, or by that of the file that it is a link to, as `cc` may be.
bool isClang(const std::string& compiler);

// "signal 11 (Segmentation fault)".
std::string signalText(int signal);
// What a program printed, for the end of a message: on lines of its own, if it is any.
std::string quotedOutput(const std::string& output);

}  // namespace velc
