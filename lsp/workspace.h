// The programs of the open documents, and their analyses.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "lsp/analysed.h"
#include "lsp/client_folders.h"
#include "lsp/disk.h"
#include "lsp/documents.h"
#include "lsp/projects.h"
#include "lsp/publisher.h"
#include "refhost/neighbours.h"

namespace lsp {

class Workspace {
 public:
  using Log = std::function<void(const std::string& text)>;

  // `libraries` go before those of projects; none for the plugin that is installed.
  Workspace(const Documents& documents, std::vector<std::string> libraries, Publisher& publisher,
            Log log);

  const Documents& documents() const { return documents_; }

  // The document has another text.
  void changed(const std::string& path);
  // Documents were opened, closed or saved, or files have changed.
  void refresh();

  // Programs wait to be analysed.
  bool waits() const;
  // Analyses one that waits, and publishes its diagnostics.
  void analyseNext();

  // The program of a document, analysed as the document is now; nothing if it is not open or cannot
  // be analysed.
  std::optional<Analysed> analysed(const std::string& path);

  // Passes the programs of all documents, each analysed as it is now.
  void forEachProgram(const std::function<void(const Analysed& analysed)>& use);

  // The files whose programs may have this file, too, that of `document` among them.
  std::vector<std::string> filesAround(const std::string& document, const std::string& path);
  // Passes the programs of those whose texts are `chosen`, but for the program of `document`. Each
  // is analysed for the call only.
  using Choose = std::function<bool(const std::string& path, const std::string& text)>;
  void forEachOther(const std::string& document, const std::string& path, const Choose& chosen,
                    const std::function<void(const Analysed& analysed)>& use);
  // True if the file declares the name for other files.
  bool declares(const std::string& path, std::string_view name) {
    return neighbours_.declares(path, name);
  }
  // True if both are sources of one project.
  bool areOneProject(const std::string& one, const std::string& other);

  // What the files beside a document declare that its program would get if it named it; nothing for
  // a source of a project. Valid, as the following, until a document or a file changes.
  std::vector<const refhost::FileDeclaration*> declaredBeside(const std::string& document);
  // The declarations of files that no program of a document has: in the folders of the documents
  // and of their projects, and the sources of projects in the client's folders.
  std::vector<const refhost::FileDeclaration*> declaredElsewhere();
  // Those that the client has open.
  ClientFolders folders;

  // The text of a document or a file. False if it cannot be read.
  bool readText(const std::string& path, std::string& text);

  // How `velc` is called with the program of a document.
  struct Invocation {
    std::string folder;
    std::vector<std::string> arguments;  // its settings and files, as far as no project has them
  };
  // Nothing if the document is not open.
  std::optional<Invocation> programFor(const std::string& path);

 private:
  struct Program {
    std::string path;  // of the project's velops.json, or of the document
    std::shared_ptr<const velc::Project> project;  // null for none
    bool whole = false;                            // it is the project; otherwise a document
    bool waits = true;
    std::vector<std::string> files;  // of the last analysis
  };
  // One for each project, and one for documents without.
  struct Engine {
    std::shared_ptr<const velc::Project> project;
    std::unique_ptr<refhost::Session> session;  // null when it could not be started
    // A library that velops.json names and that cannot be used.
    std::optional<refhost::Diagnostic> libraryFault;
    const Program* analysed = nullptr;
  };

  std::optional<Analysed> analysed(Program& program, const std::string& path);
  Program describe(const std::string& path);
  Program& programOf(const std::string& path);
  Engine& engineOf(const Program& program);
  // Starts the session. What fails is logged if velops.json is not to blame.
  void start(Engine& engine);
  // Null if the program cannot be analysed.
  refhost::Session* analyse(Program& program);
  void analyseProject(Program& program, refhost::Session& session);
  std::vector<std::string> candidatesFor(const Program& program);
  // The sources in a folder, or in it and below; open documents count.
  enum class Depth : bool { Folder, Below };
  std::vector<std::string> sourcesIn(const std::string& folder, Depth depth);
  void publish(Program& program);
  // True if the diagnostics of a file are those of this program, not of another that has it as
  // well.
  bool decides(const Program& program, const std::string& path);
  // Shows the faults of a velops.json in it.
  void publishFaults(const Engine& engine);

  const Documents& documents_;
  std::vector<std::string> libraries_;
  Publisher& publisher_;
  Log log_;
  Disk disk_;
  Projects projects_;
  refhost::Neighbours neighbours_;
  std::map<std::string, std::unique_ptr<Program>> programs_;  // by path
  std::map<std::string, Engine> engines_;                     // by path of velops.json, or ""
  std::map<std::string, std::vector<std::string>> folders_;   // their *.st
  std::map<std::string, std::vector<std::string>> trees_;     // the same with folders below
  std::set<std::string> faulty_;                              // each velops.json with faults
};

}  // namespace lsp
