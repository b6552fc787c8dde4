#include "lsp/test_runs.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "cli/excerpt.h"
#include "hostkit/encoding.h"
#include "lsp/disk.h"
#include "lsp/requests.h"
#include "refhost/editor/outline.h"
#include "refhost/syntax/source.h"

namespace lsp {

namespace {

namespace fs = std::filesystem;

constexpr const char* kRunTests = "velc.runTests";
constexpr const char* kResults = "velc/testResults";
constexpr int kSeverityError = 1, kMessageError = 1, kMessageInfo = 3;

// The failure in words: the assertion, its text and the values of its operands.
std::string textOf(const Json& failure) {
  std::string text = failure.value("assertion", "");
  const std::string said = failure.value("text", "");
  if (!said.empty()) text += (text.empty() ? "" : ": ") + said;
  for (const Json& value : failure.at("values")) {
    const std::string expression = value.at("expression");
    const std::string shown = value.at("value");
    text += '\n';
    if (expression != shown) text.append(expression).append(" = ");
    text += shown;
  }
  return text;
}

// Arguments of the command that begin with it are whole names of tests, the others filters.
constexpr char kWholeName = '=';

std::string argumentFor(const std::string& title) { return kWholeName + velc::asUtf8(title); }

Json lens(const Analysed& analysed, const refhost::SourceRange& range, const char* title,
          Json arguments) {
  return {
      {"range", analysed.range(range)},
      {"command", {{"title", title}, {"command", kRunTests}, {"arguments", std::move(arguments)}}}};
}

Json lenses(const Analysed& analysed, const Json& params) {
  const Json& uri = params.at("textDocument").at("uri");
  Json all = Json::array();
  for (const refhost::OutlineItem& item :
       refhost::outlineOf(analysed.session().view(), analysed.file())) {
    if (item.kind != refhost::SymbolKind::Test) continue;
    if (all.empty()) {
      all.push_back(lens(analysed, item.nameRange, "Run all tests", Json::array({uri})));
    }
    all.push_back(
        lens(analysed, item.nameRange, "Run test", Json::array({uri, argumentFor(item.name)})));
  }
  return all;
}

}  // namespace

void TestRuns::add(Json& capabilities) {
  capabilities["codeLensProvider"] = Json::object();
  onDocument(rpc_, workspace_, "textDocument/codeLens", lenses);
  capabilities["executeCommandProvider"] = {{"commands", {kRunTests}}};
  rpc_.onRequest("workspace/executeCommand", [this](const Json& params) {
    if (params.at("command") != kRunTests) {
      throw RequestError(ErrorCode::InvalidParams, "the command is " + std::string(kRunTests));
    }
    start(params.at("arguments"));
    return Json();
  });
}

void TestRuns::forgetFailures() {
  outdated_ = true;
  if (publisher_.hasFindings()) publisher_.setFindings({});
}

void TestRuns::start(const Json& arguments) {
  const std::string uri = arguments.at(0);
  const std::string path = pathIn({{"textDocument", {{"uri", uri}}}});
  const auto run = workspace_.programFor(path);
  if (!run) throw RequestError(ErrorCode::RequestFailed, path + " is not open");
  folder_ = run->folder;
  std::vector<std::string> command = {fs::read_symlink("/proc/self/exe"), "test", "--format",
                                      "json"};
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string text = arguments[i];
    const bool whole = !text.empty() && text.front() == kWholeName;
    // In one word, as names may begin with '-'.
    command.push_back(whole ? "--name=" + text.substr(1) : "--filter=" + text);
  }
  command.insert(command.end(), run->arguments.begin(), run->arguments.end());
  publisher_.setFindings({});
  outdated_ = false;
  if (!process_.start(command, folder_)) {
    throw RequestError(ErrorCode::RequestFailed, "velc test cannot be started");
  }
}

void TestRuns::takeOutput() {
  BackgroundProcess::Result result;
  if (process_.takeOutput(result)) show(result);
}

void TestRuns::show(const BackgroundProcess::Result& result) {
  Json report = Json::parse(result.output, nullptr, false);
  if (report.is_discarded()) {
    // The program has errors, or there is no test or no compiler.
    rpc_.notify(
        "window/showMessage",
        {{"type", kMessageError}, {"message", "The tests could not be run:\n" + result.errors}});
    rpc_.notify(kResults, {{"tests", Json::array()}, {"error", result.errors}});
    return;
  }
  Publisher::Findings findings;
  for (const Json& test : report.at("tests")) {
    for (const Json& failure : test.at("failures")) {
      const std::string path = (fs::path(folder_) / failure.at("file")).lexically_normal();
      if (!isShown(path)) continue;
      Json& list = findings.try_emplace(path, Json::array()).first->second;
      list.push_back(diagnosticOf(path, failure));
    }
  }
  if (!outdated_) publisher_.setFindings(std::move(findings));
  report["folder"] = folder_;
  rpc_.notify(kResults, report);
  const std::string text = fmt::format("{} tests passed, {} failed", report.at("passed").get<int>(),
                                       report.at("failed").get<int>());
  rpc_.notify("window/showMessage", {{"type", kMessageInfo}, {"message", text}});
}

bool TestRuns::isShown(const std::string& path) const {
  const Document* const document = documents_.find(path);
  if (document == nullptr) return workspace_.areOneProject(path, path);
  std::string text;
  refhost::SourceManager open;
  open.add(path, document->text);
  return Disk().read(path, text) && open.text(0) == text;
}

// From the place of the failure to the end of its line.
Json TestRuns::diagnosticOf(const std::string& path, const Json& failure) const {
  std::string text;
  Disk().read(path, text);
  refhost::SourceManager source;
  source.add(path, text);
  const std::uint32_t line = failure.at("line");
  std::string_view before = source.line(0, line);
  std::size_t column = failure.value("column", std::size_t{1}) - 1;
  const Lines whole(text, documents_.client.encoding);
  const std::size_t start = whole.offset({line - 1, 0});
  const std::size_t begin = start + std::min(hostkit::sizeOfFirst(column, before), before.size());
  return {{"range",
           {{"start", toJson(whole.position(begin))},
            {"end", toJson(whole.position(start + before.size()))}}},
          {"severity", kSeverityError},
          {"source", "velc test"},
          {"message", textOf(failure)}};
}

}  // namespace lsp
