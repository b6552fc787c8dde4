// A program that runs beside the server.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace lsp {

class BackgroundProcess {
 public:
  struct Result {
    int code = -1;  // exit status; -1 if a signal ended it
    std::string output;
    std::string errors;
  };

  BackgroundProcess() = default;
  ~BackgroundProcess() { stop(); }
  BackgroundProcess(const BackgroundProcess&) = delete;
  BackgroundProcess& operator=(const BackgroundProcess&) = delete;

  // Starts `arguments[0]` in a folder, with empty standard input; ends the one that still runs.
  // False if it cannot be started.
  bool start(const std::vector<std::string>& arguments, const std::string& folder);
  bool runs() const { return process_ > 0; }
  void stop();

  // What to wait for: readable when there is output; -1 for none.
  int outputDescriptor() const { return output_; }
  int errorDescriptor() const { return errors_; }
  // Takes what has come. True when the process has ended; then `result` is set.
  bool takeOutput(Result& result);

 private:
  pid_t process_ = -1;
  int output_ = -1;
  int errors_ = -1;
  Result result_;
};

}  // namespace lsp
