// Describes the shapes of variables in C, for the harness.
#pragma once

#include <string>
#include <unordered_map>

#include "refhost/value_shape.h"

namespace velc {

// Each shape has one table, however many variables and other shapes contain it.
class ShapeTables {
 public:
  // The name of the `vel_run_shape` that describes `shape`.
  const std::string& nameOf(const refhost::ValueShape& shape);
  // The definitions of all that have been asked for.
  const std::string& text() const { return text_; }

 private:
  std::unordered_map<const refhost::ValueShape*, std::string> names_;
  std::string text_;
};

}  // namespace velc
