// Reads files of comma-separated values, by RFC 4180. Blanks around fields are left out.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace velc {

class CsvReader {
 public:
  // Throws Failure, like read(), for a file that cannot be read.
  explicit CsvReader(const std::string& path);

  struct Field {
    std::string text;
    std::size_t line = 0;    // of its first character, from 1
    std::size_t column = 0;  // in characters, from 1
  };
  // Sets `fields` to those of the next row that is not blank. Returns false at the end of the file.
  bool read(std::vector<Field>& fields);

  // Throws Failure with this place of the file before `message`.
  [[noreturn]] void refuse(const Field& field, const std::string& message) const;

 private:
  int take();
  void readQuoted(Field& field);

  std::string path_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  int ahead_ = 0;  // the character behind what has been read; EOF at the end
  std::size_t line_ = 1;
  std::size_t column_ = 1;
};

}  // namespace velc
