#include "lsp/server.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <exception>
#include <optional>
#include <stdexcept>

#include "lsp/documents.h"
#include "lsp/frames.h"
#include "lsp/publisher.h"
#include "lsp/requests.h"
#include "lsp/rpc.h"
#include "lsp/test_runs.h"
#include "lsp/workspace.h"

namespace lsp {

namespace {

constexpr int kLogError = 1, kIncremental = 2;

// A client that has gone.
class Hangup : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Server {
 public:
  explicit Server(const ServerOptions& options)
      : options_(options),
        rpc_([this](const Json& message) { send(message); },
             [this](const std::string& text) { log(text); }),
        publisher_(documents_,
                   [this](Json params) {
                     rpc_.notify("textDocument/publishDiagnostics", std::move(params));
                   }),
        workspace_(documents_, options.libraries, publisher_,
                   [this](const std::string& text) { log(text); }),
        testRuns_(rpc_, documents_, workspace_, publisher_) {
    addLifecycle();
    addSynchronization();
    addFeatures();
  }

  int run() {
    while (!exitCode_) {
      const bool busy = rpc_.waits() || workspace_.waits();
      // All that has come is taken first, so that edits are analysed together and requests can be
      // cancelled.
      if (!inputEnded_ && read(busy)) continue;
      if (rpc_.waits()) {
        rpc_.handleNext();
      } else if (workspace_.waits()) {
        analyse();
      } else if (inputEnded_) {
        return 1;
      }
    }
    return *exitCode_;
  }

 private:
  void addLifecycle();
  void addSynchronization();
  void addFeatures();
  Json initialize(const Json& params);
  void watchFiles();

  bool read(bool busy);
  void takeInput();
  void analyse();
  void send(const Json& message);
  void log(const std::string& text) {
    rpc_.notify("window/logMessage", {{"type", kLogError}, {"message", text}});
  }

  ServerOptions options_;
  FrameReader frames_;
  Rpc rpc_;
  Documents documents_;
  Publisher publisher_;
  Workspace workspace_;
  TestRuns testRuns_;
  Json capabilities_ = Json::object();
  bool inputEnded_ = false;
  std::optional<int> exitCode_;
};

void Server::addLifecycle() {
  rpc_.onRequest("initialize", [this](const Json& params) { return initialize(params); });
  rpc_.onNotification("initialized", [this](const Json&) { watchFiles(); });
  rpc_.onRequest("shutdown", [this](const Json&) {
    rpc_.state = Rpc::State::ShutDown;
    return Json();
  });
  rpc_.onNotification(
      "exit", [this](const Json&) { exitCode_ = rpc_.state == Rpc::State::ShutDown ? 0 : 1; });
}

Json Server::initialize(const Json& params) {
  const Client& client = documents_.client = clientFrom(params);
  capabilities_["positionEncoding"] = client.encoding == Encoding::Utf8 ? "utf-8" : "utf-16";
  // Clients that do not ask for the range take no options.
  if (!client.preparesRenaming) capabilities_["renameProvider"] = true;
  capabilities_["textDocumentSync"] = {
      {"openClose", true}, {"change", kIncremental}, {"save", {{"includeText", false}}}};
  workspace_.folders.initialize(params);
  rpc_.state = Rpc::State::Ready;
  return {{"capabilities", capabilities_},
          {"serverInfo", {{"name", "velc"}, {"version", VELC_VERSION}}}};
}

void Server::watchFiles() {
  if (!documents_.client.watchesFiles) return;
  const Json watchers = {{{"globPattern", "**/*.{st,ST}"}}, {{"globPattern", "**/velops.json"}}};
  rpc_.request("client/registerCapability", {{"registrations",
                                              {{{"id", "velc-files"},
                                                {"method", "workspace/didChangeWatchedFiles"},
                                                {"registerOptions", {{"watchers", watchers}}}}}}});
}

void Server::addSynchronization() {
  rpc_.onNotification("textDocument/didOpen", [this](const Json& params) {
    documents_.didOpen(params);
    workspace_.refresh();
  });
  rpc_.onNotification("textDocument/didChange", [this](const Json& params) {
    testRuns_.forgetFailures();
    const Document* const document = documents_.didChange(params);
    if (document == nullptr) throw std::runtime_error("the document is not open");
    workspace_.changed(document->path);
  });
  rpc_.onNotification("textDocument/didClose", [this](const Json& params) {
    documents_.didClose(params);
    workspace_.refresh();
  });
  for (const char* method : {"textDocument/didSave", "workspace/didChangeWatchedFiles"}) {
    rpc_.onNotification(method, [this](const Json&) { workspace_.refresh(); });
  }
}

void Server::addFeatures() {
  for (const auto add : {addCodeActions, addCompletion, addFormatting, addHover, addNavigation,
                         addOutline, addRename, addSemanticTokens, addSignatureHelp}) {
    add(rpc_, workspace_, capabilities_);
  }
  testRuns_.add(capabilities_);
}

// Waits for input, unless there is other work. True if there was some.
bool Server::read(bool busy) {
  const BackgroundProcess& tests = testRuns_.process();
  // Descriptors below 0 are ignored.
  std::array<pollfd, 3> waited{{{options_.input, POLLIN, 0},
                                {tests.outputDescriptor(), POLLIN, 0},
                                {tests.errorDescriptor(), POLLIN, 0}}};
  if (poll(waited.data(), waited.size(), busy ? 0 : -1) <= 0) return false;
  if (waited[1].revents != 0 || waited[2].revents != 0) testRuns_.takeOutput();
  if (waited[0].revents == 0) return false;
  takeInput();
  return true;
}

void Server::takeInput() {
  std::array<char, 65536> buffer;
  const ssize_t count = ::read(options_.input, buffer.data(), buffer.size());
  if (count < 0 && errno == EINTR) return;
  inputEnded_ = count <= 0;
  if (inputEnded_) return;
  frames_.take({buffer.data(), static_cast<std::size_t>(count)});
  while (const auto frame = frames_.next()) {
    if (frame->broken) {
      rpc_.refuse(frame->text);
    } else {
      rpc_.take(frame->text);
    }
  }
}

void Server::analyse() {
  try {
    workspace_.analyseNext();
  } catch (const Hangup&) {
    throw;
  } catch (const std::exception& error) {
    log(error.what());
  }
}

void Server::send(const Json& message) {
  // Sources may contain what is not UTF-8, which JSON must not.
  const std::string text = framed(message.dump(-1, ' ', false, Json::error_handler_t::replace));
  for (std::size_t sent = 0; sent < text.size();) {
    const ssize_t count = write(options_.output, text.data() + sent, text.size() - sent);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw Hangup("the client has gone");
    sent += static_cast<std::size_t>(count);
  }
}

}  // namespace

int serve(const ServerOptions& options) {
  try {
    return Server(options).run();
  } catch (const Hangup&) {
    return 1;
  }
}

}  // namespace lsp
