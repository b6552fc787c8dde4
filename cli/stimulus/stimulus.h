// The values that variables are to have from certain scans on.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/places.h"
#include "cli/shared_storage.h"
#include "cli/stimulus/csv_reader.h"

namespace velc {

class Stimulus {
 public:
  // Reads the header of a file of comma-separated values: a column `time` or `scan`, and places
  // that can be set. Throws Failure with file, line and column for anything else. `cycle` is the
  // time between scans in milliseconds.
  Stimulus(const std::string& path, const Places& places, std::uint64_t cycle);

  // In the order of the columns.
  const std::vector<refhost::ProgramVariable>& variables() const { return variables_; }

  // Writes all rows in the form of harness/stimulus.h to the file `target`, and returns the number
  // of scans after which all of them hold. Throws Failure.
  std::uint64_t writeRows(const std::string& target);

 private:
  using Field = CsvReader::Field;

  void findStart(const std::vector<Field>& header);
  // The number, from 0, of the first scan at which the row holds.
  std::uint64_t scanOf(const Field& field);
  std::string rowBytes(const std::vector<Field>& fields);
  // Refuses a row from which on two columns hold different values of the same storage.
  void checkShared(const std::vector<Field>& fields) const;
  const Field& fieldOf(std::size_t variable, const std::vector<Field>& row) const {
    return row[variable + (variable < start_ ? 0 : 1)];
  }

  CsvReader reader_;
  std::uint64_t cycle_;
  std::size_t columns_ = 0;
  std::size_t start_ = 0;  // the column that tells when a row holds
  bool byTime_ = true;
  bool first_ = true;
  std::uint64_t before_ = 0;  // the time in nanoseconds or the scan of the row before
  std::vector<refhost::ProgramVariable> variables_;
  std::vector<std::string> names_;  // as the header has them
  std::vector<SharedStorage> shared_;
  std::vector<std::string> held_;  // their values so far; empty before the first
};

}  // namespace velc
