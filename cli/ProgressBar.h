#ifndef CLI_PROGRESSBAR_H_
#define CLI_PROGRESSBAR_H_

#include <chrono>
#include <string>

#include "io/Progress.h"

// A progress bar on standard error for work that takes longer than a
// second, drawn only when standard error is a terminal; it clears its line
// when it goes. While the units in all are not known, it shows the count
// done. One bar per piece of work.
class ProgressBar {
 public:
  explicit ProgressBar(std::string label);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  // The callback the conversions report to; valid while the bar lives.
  Progress Callback();

 private:
  void Show(size_t nDone, size_t nTotal);

  std::string m_label;
  bool m_bTerminal;
  bool m_bDrawn = false;
  std::chrono::steady_clock::time_point m_start;
  std::chrono::steady_clock::time_point m_lastDrawn;
};

#endif  // CLI_PROGRESSBAR_H_
