// The diagnostics that the client has.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "lsp/documents.h"

namespace lsp {

class Publisher {
 public:
  using Publish = std::function<void(Json params)>;

  Publisher(const Documents& documents, Publish publish)
      : documents_(documents), publish_(std::move(publish)) {}

  // Those of one file, which `owner` found: a program. Sent if they, or the document, are new.
  void set(const std::string& owner, const std::string& path, Json diagnostics);
  // Clears those of `owner` that stand in files for which `keeps` is false.
  void withdraw(const std::string& owner,
                const std::function<bool(const std::string& path)>& keeps = nullptr);

  // Diagnostics by path beside those of the analysis, in place of earlier ones.
  using Findings = std::map<std::string, Json>;
  void setFindings(Findings findings);
  bool hasFindings() const { return !findings_.empty(); }

 private:
  struct File {
    std::string owner;
    Json diagnostics = Json::array();
    std::int64_t version = -1;  // of the document that the client was told of; -1 for none
  };

  void send(const std::string& path, File& file);
  std::int64_t versionOf(const std::string& path) const;

  const Documents& documents_;
  Publish publish_;
  std::map<std::string, File> files_;
  Findings findings_;
};

}  // namespace lsp
