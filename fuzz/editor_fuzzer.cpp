// Any text as a document of an editor, which changes it and asks everything at many places.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "lsp/frames.h"
#include "lsp/server.h"
#include "refhost/session.h"

namespace {

using Json = nlohmann::json;

// All take these parameters, and some of them others' too.
constexpr std::array kRequests = {"textDocument/codeAction",
                                  "textDocument/codeLens",
                                  "textDocument/completion",
                                  "textDocument/definition",
                                  "textDocument/documentHighlight",
                                  "textDocument/documentSymbol",
                                  "textDocument/foldingRange",
                                  "textDocument/formatting",
                                  "textDocument/hover",
                                  "textDocument/prepareRename",
                                  "textDocument/rangeFormatting",
                                  "textDocument/references",
                                  "textDocument/rename",
                                  "textDocument/semanticTokens/full",
                                  "textDocument/semanticTokens/range",
                                  "textDocument/signatureHelp",
                                  "textDocument/typeDefinition",
                                  "workspace/symbol"};
constexpr std::array kPieces = {"",   ".",   "(",      ";",     "END_IF", "(*",   "'",
                                "\n", ":= ", "VAR x ", "IF a ", "😀",      "\r\n", "END_VAR\n"};

// A file in memory, through which a whole conversation goes.
class Channel {
 public:
  Channel() : descriptor_(memfd_create("channel", 0)) {
    if (descriptor_ < 0) std::abort();
  }
  ~Channel() { close(descriptor_); }
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;

  int descriptor() const { return descriptor_; }
  void rewind() const { lseek(descriptor_, 0, SEEK_SET); }
  void send(const std::string& bytes) const {
    if (write(descriptor_, bytes.data(), bytes.size()) < 0) std::abort();
  }
  std::string contents() const {
    std::string text(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
    if (pread(descriptor_, text.data(), text.size(), 0) < 0) std::abort();
    return text;
  }

 private:
  int descriptor_;
};

// The capabilities of a client that takes all there is.
Json everything() {
  const Json formats = {"markdown", "plaintext"};
  return {{"textDocument",
           {{"completion",
             {{"completionItem",
               {{"snippetSupport", true},
                {"insertReplaceSupport", true},
                {"documentationFormat", formats}}}}},
            {"documentSymbol", {{"hierarchicalDocumentSymbolSupport", true}}},
            {"publishDiagnostics",
             {{"relatedInformation", true},
              {"codeDescriptionSupport", true},
              {"tagSupport", {{"valueSet", {1}}}}}},
            {"signatureHelp",
             {{"signatureInformation",
               {{"documentationFormat", formats},
                {"parameterInformation", {{"labelOffsetSupport", true}}}}}}}}}};
}

class Client {
 public:
  explicit Client(std::string text) : random_(std::hash<std::string>()(text)) {
    lines_ = 1 + static_cast<unsigned>(std::count(text.begin(), text.end(), '\n'));
    request("initialize", {{"capabilities", below(2) == 0 ? Json::object() : everything()}});
    notify("textDocument/didOpen",
           {{"textDocument", {{"uri", kUri}, {"version", 1}, {"text", text}}}});
  }

  void edit(int version) {
    notify(
        "textDocument/didChange",
        {{"textDocument", {{"uri", kUri}, {"version", version}}},
         {"contentChanges", {{{"range", range()}, {"text", kPieces.at(below(kPieces.size()))}}}}});
  }

  void ask() {
    Json params = {{"textDocument", {{"uri", kUri}}},
                   {"position", place()},
                   {"range", range()},
                   {"newName", below(2) == 0 ? "other" : "x"},
                   {"query", "a"},
                   {"options", {{"tabSize", 4}, {"insertSpaces", true}}},
                   {"context", {{"diagnostics", Json::array()}, {"includeDeclaration", true}}}};
    for (const char* method : kRequests) request(method, params);
  }

  // Returns what the server has said.
  std::string serve() {
    request("shutdown", nullptr);
    notify("exit", nullptr);
    input_.rewind();
    if (lsp::serve({{VELOPS_PLUGIN}, input_.descriptor(), output_.descriptor()}) != 0) std::abort();
    return output_.contents();
  }

  int requests() const { return requests_; }

 private:
  static constexpr const char* kUri = "untitled:fuzz";

  unsigned below(std::size_t limit) { return static_cast<unsigned>(random_() % limit); }
  Json place() { return {{"line", below(lines_)}, {"character", below(40)}}; }
  Json range() {
    const unsigned line = below(lines_), character = below(40);
    return {{"start", {{"line", line}, {"character", character}}},
            {"end", {{"line", line + below(2)}, {"character", character + below(9)}}}};
  }

  void request(const char* method, Json params) {
    send({{"id", ++requests_}, {"method", method}, {"params", std::move(params)}});
  }
  void notify(const char* method, Json params) {
    send({{"method", method}, {"params", std::move(params)}});
  }
  void send(const Json& message) {
    input_.send(lsp::framed(message.dump(-1, ' ', false, Json::error_handler_t::replace)));
  }

  std::minstd_rand random_;
  unsigned lines_ = 1;
  int requests_ = 0;
  Channel input_;
  Channel output_;
};

// Aborts unless each request is answered, and none fails for a reason that is the server's own.
void check(const std::string& said, int requests) {
  lsp::FrameReader frames;
  frames.take(said);
  while (const auto frame = frames.next()) {
    const Json message = Json::parse(frame->text);
    if (message.count("id") == 0 || message.count("method") != 0) continue;
    --requests;
    const int code = message.value(Json::json_pointer("/error/code"), 0);
    constexpr int kRequestFailed = -32803;
    if (code != 0 && code != kRequestFailed) std::abort();
  }
  if (requests != 0) std::abort();
}

std::unique_ptr<refhost::Session> started() {
  refhost::Options options;
  options.pluginPath = VELOPS_PLUGIN;
  auto session = std::make_unique<refhost::Session>(options);
  std::string error;
  if (!session->start(error)) std::abort();
  return session;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // Keeps the plugin in memory, since the fuzzer counts coverage there.
  static const std::unique_ptr<refhost::Session> keeper = started();
  Client client(std::string(reinterpret_cast<const char*>(bytes), size));
  client.ask();
  for (int version = 2; version < 6; ++version) client.edit(version);
  client.ask();
  const std::string said = client.serve();
  check(said, client.requests());
  return 0;
}
