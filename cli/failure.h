// Exit codes, and the exception that ends a command.
#pragma once

#include <stdexcept>
#include <string>

namespace velc {

enum ExitCode : int {
  kSuccess = 0,
  kProgramErrors = 1,  // errors in the Structured Text, or the program did not run to its end
  kFailure = 2,        // bad usage, unreadable or unwritable files, a missing tool
};

// Ends the command with kFailure and this message on standard error.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace velc
