// A source without a project, and the files beside it that it needs.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/file_declarations.h"
#include "refhost/session.h"

namespace refhost {

// Completes a program: it starts with one file, and while names of units, types and global
// variables are unknown that another file declares, adds that file.
class Neighbours {
 public:
  // Gets the text of a file. False if it cannot be read.
  using Read = std::function<bool(const std::string& path, std::string& text)>;

  explicit Neighbours(Read read) : read_(std::move(read)) {}

  // Restarts the session, loads `path` and those of the `candidates` that it lacks, analyses them
  // with their unit tests, and returns the files in the order in which the session has them; none
  // if `path` cannot be read. Of several candidates that declare a name the first one is taken. One
  // that declares again what another file of the program declares is not.
  std::vector<std::string> analyse(Session& session, const std::string& path,
                                   const std::vector<std::string>& candidates);

  // True if the file declares the name for others.
  bool declares(const std::string& path, std::string_view name);

  // The declarations of a file; null if it cannot be read. They are valid, as are those of
  // declaredBeside(), until its text has changed and is read again.
  const std::vector<FileDeclaration>* declarationsIn(const std::string& path);
  // The declarations for others in those candidates that can be added to a program of these files.
  // Where several have a name, the first of them would be added.
  std::vector<const FileDeclaration*> declaredBeside(const std::vector<std::string>& program,
                                                     const std::vector<std::string>& candidates);

 private:
  // In lower case.
  using Names = std::set<std::string>;
  struct File {
    std::size_t digest = 0;  // of the text whose declarations are known
    bool known = false;
    std::vector<FileDeclaration> declarations;
    Names names;  // of those for others
  };

  struct Program {
    void add(const std::string& path, const Names& names) {
      paths.insert(path);
      declared.insert(names.begin(), names.end());
    }

    std::set<std::string> paths;
    Names declared;
  };

  const File& declaredIn(const std::string& path, const std::string& text);
  // Adds the candidates that declare the names, and returns them.
  std::vector<std::string> filesFor(Names missing, Program& program,
                                    const std::vector<std::string>& candidates);

  Read read_;
  std::map<std::string, File> known_;  // by path
};

}  // namespace refhost
