// Writes the functions and the table by which a platform runs the instances of a configuration.
#pragma once

#include <string>

#include "refhost/emit/file_context.h"

namespace refhost {

class ConfigurationWriter {
 public:
  explicit ConfigurationWriter(FileContext& file) : file_(file) {}

  // Appends nothing when there are no instances.
  void append(std::string& out);

 private:
  void appendInits(std::string& out);
  // The functions of the tasks, and the table.
  void appendTasks(std::string& out);

  FileContext& file_;
};

}  // namespace refhost
