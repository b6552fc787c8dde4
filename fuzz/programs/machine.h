// Runs a random program on its syntax tree.
#pragma once

#include <map>

#include "fuzz/programs/tree.h"

namespace generated {

constexpr int kScans = 3;

// At a statement that C does not define, or that does not end.
struct Stuck : Undefined {
  Stuck(const Undefined& reason, const Statement* where) : Undefined(reason), statement(where) {}
  const Statement* statement;
};

// What the variables of the PROGRAM hold after all scans, by name. Throws Stuck.
std::map<std::string, Value> evaluated(const Units& units);

}  // namespace generated
