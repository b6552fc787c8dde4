// JSON-RPC: which function handles a message, and what is answered.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace lsp {

using Json = nlohmann::json;

enum class ErrorCode : int {
  ParseError = -32700,
  InvalidRequest = -32600,
  MethodNotFound = -32601,
  InvalidParams = -32602,
  InternalError = -32603,
  NotInitialized = -32002,
  RequestFailed = -32803,
  RequestCancelled = -32800,
};

// Answers a request with an error.
class RequestError : public std::runtime_error {
 public:
  RequestError(ErrorCode errorCode, const std::string& message)
      : std::runtime_error(message), code(errorCode) {}

  ErrorCode code;
};

// Holds the messages that wait and has them handled in their order. A request that is cancelled
// while it waits is not handled.
class Rpc {
 public:
  using Request = std::function<Json(const Json& params)>;
  using Notification = std::function<void(const Json& params)>;
  using Send = std::function<void(const Json& message)>;
  using Log = std::function<void(const std::string& text)>;

  // `send` gets what is to be sent to the client, `log` the faults of notifications, which have no
  // answers.
  Rpc(Send send, Log log) : send_(std::move(send)), log_(std::move(log)) {}

  void onRequest(const char* method, Request handle) { requests_[method] = std::move(handle); }
  void onNotification(const char* method, Notification handle) {
    notifications_[method] = std::move(handle);
  }

  // Before `initialize` and behind `shutdown` requests are refused, and notifications are dropped
  // but for `exit`.
  enum class State { New, Ready, ShutDown };
  State state = State::New;

  // Takes the content of a message, and answers at once what is none.
  void take(const std::string& content);
  // Answers what is no message at all.
  void refuse(const std::string& fault) { fail(nullptr, ErrorCode::ParseError, fault); }
  bool waits() const { return !waiting_.empty(); }
  // Handles the first message that waits.
  void handleNext();

  // To the client. Its answers are dropped.
  void notify(const char* method, Json params);
  void request(const char* method, Json params);

 private:
  void enqueue(Json message);
  void cancel(const Json& id);
  void fail(const Json& id, ErrorCode code, const std::string& text);
  Json resultOf(const std::string& method, const Json& params);
  void handleNotification(const std::string& method, const Json& params);

  Send send_;
  Log log_;
  std::unordered_map<std::string, Request> requests_;
  std::unordered_map<std::string, Notification> notifications_;
  std::deque<Json> waiting_;
  std::size_t requestsSent_ = 0;
};

}  // namespace lsp
