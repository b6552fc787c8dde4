// The columns of a trace: one for each elementary value.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "cli/places.h"

namespace velc {

struct Column {
  std::string name;     // for printing
  std::string program;  // empty for global variables and device addresses
  std::string path;     // the name without the program
  std::shared_ptr<const refhost::ValueShape> shape;
  std::size_t offset = 0;  // in a record of the harness
};

struct TracedPlaces {
  std::vector<refhost::ProgramVariable> places;
  std::vector<Column> columns;  // without the pointers in arrays and structures
  std::size_t recordSize = 0;   // in bytes
};

// The places that the names and patterns denote, each once. Throws Failure for one that there is
// not, and for too many columns.
TracedPlaces tracedPlaces(const Places& places, const std::vector<std::string>& names);

}  // namespace velc
