// Runs unit tests for the client, and shows failures as diagnostics until the next edit.
#pragma once

#include <string>
#include <vector>

#include "lsp/documents.h"
#include "lsp/process.h"
#include "lsp/publisher.h"
#include "lsp/workspace.h"

namespace lsp {

class TestRuns {
 public:
  TestRuns(Rpc& rpc, const Documents& documents, Workspace& workspace, Publisher& publisher)
      : rpc_(rpc), documents_(documents), workspace_(workspace), publisher_(publisher) {}

  // Adds workspace/executeCommand with the command `velc.runTests`, and textDocument/codeLens,
  // which offers it at each TEST.
  void add(Json& capabilities);

  // To be called when a text is going to change. Failures of a run that goes on are not shown
  // either, since their places may be others by then.
  void forgetFailures();
  const BackgroundProcess& process() const { return process_; }
  // Takes what the run has printed.
  void takeOutput();

 private:
  // `arguments`: a URI, then filters of `velc test`, or whole names behind '='.
  void start(const Json& arguments);
  void show(const BackgroundProcess::Result& result);
  // True if failures have their places in the text that the client has, or in the file of a
  // project that is not open.
  bool isShown(const std::string& path) const;
  Json diagnosticOf(const std::string& path, const Json& failure) const;

  Rpc& rpc_;
  const Documents& documents_;
  Workspace& workspace_;
  Publisher& publisher_;
  BackgroundProcess process_;
  std::string folder_;     // of the run
  bool outdated_ = false;  // a text has changed since the run began
};

}  // namespace lsp
