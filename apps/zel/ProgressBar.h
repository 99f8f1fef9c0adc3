// A bar that grows on a terminal while a job runs; nothing at all anywhere else.
#pragma once

#include <chrono>
#include <string>

namespace zel {

class ProgressBar {
 public:
  // `what` stands in front of the bar.
  explicit ProgressBar(std::string what);
  ~ProgressBar() { Clear(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  // Shows `progress`, 0 to 1; at most ten times a second, so it may be called often.
  void Show(double progress);

  // Takes the bar off the terminal.
  void Clear();

 private:
  std::string m_what;
  bool m_onTerminal;
  bool m_shown = false;
  std::chrono::steady_clock::time_point m_next;
};

// From here on Ctrl-C no longer ends the process: IsInterrupted tells of it. Also when a parent had it blocked. The same goes
// for a request to end, and for the end of the terminal.
void CatchInterrupt();

// Whether one of them has come since CatchInterrupt.
bool IsInterrupted();

}  // namespace zel
