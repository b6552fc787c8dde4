#include "lsp/rpc.h"

#include <algorithm>
#include <exception>

namespace lsp {

namespace {

// Without the name of the exception in brackets.
std::string reasonOf(const Json::exception& error) {
  const std::string text = error.what();
  const std::size_t begin = text.find("] ");
  return begin != std::string::npos ? text.substr(begin + 2) : text;
}

bool isId(const Json& id) { return id.is_string() || id.is_number_integer(); }

Json idOf(const Json& message) {
  const auto id = message.find("id");
  return id != message.end() && isId(*id) ? *id : Json();
}

// True of JSON whose levels would exhaust the stack when a value is copied.
bool isDeep(const std::string& json) {
  constexpr int kDeepest = 256;
  int depth = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < json.size(); ++i) {
    const char c = json[i];
    if (c == '"') {
      quoted = !quoted;
    } else if (quoted) {
      if (c == '\\') ++i;
    } else if (c == '[' || c == '{') {
      if (++depth > kDeepest) return true;
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
  return false;
}

}  // namespace

void Rpc::take(const std::string& content) {
  if (isDeep(content)) return fail(nullptr, ErrorCode::ParseError, "this is nested too deeply");
  Json message = Json::parse(content, nullptr, false);
  if (message.is_discarded()) return fail(nullptr, ErrorCode::ParseError, "this is not JSON");
  enqueue(std::move(message));
}

void Rpc::enqueue(Json message) {
  if (!message.is_object()) {
    return fail(nullptr, ErrorCode::InvalidRequest, "a message is an object");
  }
  const auto method = message.find("method");
  const bool hasId = message.count("id") != 0;
  if (method == message.end()) {
    const bool answer = hasId && (message.count("result") != 0 || message.count("error") != 0);
    if (!answer) fail(idOf(message), ErrorCode::InvalidRequest, "a message needs a method");
    return;
  }
  if (!method->is_string() || (hasId && !isId(message["id"]))) {
    return fail(idOf(message), ErrorCode::InvalidRequest, "'method' or 'id' has a wrong type");
  }
  if (*method == "$/cancelRequest") {
    const auto params = message.find("params");
    if (params != message.end() && params->is_object()) cancel(params->value("id", Json()));
    return;
  }
  waiting_.push_back(std::move(message));
}

void Rpc::cancel(const Json& id) {
  const auto found = std::find_if(waiting_.begin(), waiting_.end(), [&id](const Json& message) {
    return message.count("id") != 0 && message["id"] == id;
  });
  if (found == waiting_.end()) return;
  waiting_.erase(found);
  fail(id, ErrorCode::RequestCancelled, "cancelled");
}

void Rpc::handleNext() {
  const Json message = std::move(waiting_.front());
  waiting_.pop_front();
  const std::string method = message["method"];
  const auto given = message.find("params");
  const Json params = given != message.end() ? *given : Json();
  if (message.count("id") == 0) return handleNotification(method, params);
  const Json& id = message["id"];
  try {
    send_({{"jsonrpc", "2.0"}, {"id", id}, {"result", resultOf(method, params)}});
  } catch (const RequestError& error) {
    fail(id, error.code, error.what());
  } catch (const Json::exception& error) {
    fail(id, ErrorCode::InvalidParams, "wrong parameters: " + reasonOf(error));
  } catch (const std::exception& error) {
    fail(id, ErrorCode::InternalError, error.what());
  }
}

Json Rpc::resultOf(const std::string& method, const Json& params) {
  if (state == State::New && method != "initialize") {
    throw RequestError(ErrorCode::NotInitialized, "the server is not initialized");
  }
  if (state == State::ShutDown || (state == State::Ready && method == "initialize")) {
    throw RequestError(ErrorCode::InvalidRequest, "the server does not take this any more");
  }
  const auto handler = requests_.find(method);
  if (handler == requests_.end()) {
    throw RequestError(ErrorCode::MethodNotFound, "unknown method " + method);
  }
  return handler->second(params);
}

void Rpc::handleNotification(const std::string& method, const Json& params) {
  if (state != State::Ready && method != "exit") return;
  const auto handler = notifications_.find(method);
  // Those that begin with `$/` may be ignored.
  if (handler == notifications_.end()) {
    if (method.compare(0, 2, "$/") != 0) log_("unknown notification " + method);
    return;
  }
  try {
    handler->second(params);
  } catch (const std::exception& error) {
    log_(method + ": " + error.what());
  }
}

void Rpc::fail(const Json& id, ErrorCode code, const std::string& text) {
  const Json error = {{"code", static_cast<int>(code)}, {"message", text}};
  send_({{"jsonrpc", "2.0"}, {"id", id}, {"error", error}});
}

void Rpc::notify(const char* method, Json params) {
  send_({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}});
}

void Rpc::request(const char* method, Json params) {
  send_({{"jsonrpc", "2.0"},
         {"id", "velc-" + std::to_string(++requestsSent_)},
         {"method", method},
         {"params", std::move(params)}});
}

}  // namespace lsp
