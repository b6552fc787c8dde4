// What `velc` is at, for who waits for it.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace velc {

// While it lives, standard error shows `phase` and the seconds since velc began, where that
// is a terminal and as soon as it is longer than one. Clears what it has shown.
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
