// Progress line on a terminal.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace velc {

// While the object lives, standard error shows `phase` and the seconds since velc started, if it
// is a terminal and after the first second. The destructor clears the line.
class Progress {
 public:
  explicit Progress(std::string phase);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

 private:
  void show();

  std::string phase_;
  std::mutex mutex_;
  std::condition_variable ended_;
  bool done_ = false;
  std::thread thread_;
};

}  // namespace velc
