// A Structured Text program through plugin, reference host, C compiler and runtime.
#pragma once

#include <string>
#include <vector>

#include "refhost/session.h"

namespace generated {

using Words = std::vector<std::string>;

// What a command says when it fails, else an empty text.
std::string failure(const Words& command);

struct Execution {
  // Loads the plugin; throws std::runtime_error when it cannot.
  explicit Execution(refhost::Options options = {});

  // Lists the variables of the programs except pointers, then the `places`. Returns what is wrong
  // with the source, an empty text for nothing; so does run().
  std::string translate(const std::string& source, const Words& places = {});
  // Compiles the translation with `compiler`, a command with its flags, and what it is linked with
  // at its end. The C statements `stores` run before the first scan.
  std::string run(const Words& compiler, const Words& stores, int scans);

  const std::string& c() const { return c_; }

  refhost::Session session;
  std::vector<refhost::ProgramVariable> variables;
  std::string values;  // the bytes of all variables after the scans
  std::string trace;   // the refreshes of local I/O

 private:
  std::string c_;
};

}  // namespace generated
