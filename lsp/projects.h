// Which project a document belongs to.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "cli/project.h"
#include "lsp/disk.h"
#include "lsp/documents.h"

namespace lsp {

class Projects {
 public:
  Projects(const Documents& documents, Disk& disk) : documents_(documents), disk_(disk) {}

  // The project of a file, by the velops.json in its folder or above; null for none. A project that
  // has not changed is the same object.
  std::shared_ptr<const velc::Project> of(const std::string& file);
  // Has all projects and their sources looked for again.
  void forget() {
    folders_.clear();
    for (auto& [path, known] : known_) known.stale = true;
  }

 private:
  struct Known {
    bool stale = false;
    std::string text;
    std::shared_ptr<const velc::Project> project;
  };

  // Documents without a file.
  std::vector<std::string> unsaved() const;

  const Documents& documents_;
  Disk& disk_;
  std::map<std::string, std::string> folders_;  // the velops.json of each; empty for none
  std::map<std::string, Known> known_;          // by path of velops.json
};

}  // namespace lsp
