#include "cli/ProgressBar.h"

#include <unistd.h>

#include <cstdio>

namespace {

const auto DELAY = std::chrono::seconds(1);
const auto REDRAW = std::chrono::milliseconds(100);
const size_t BAR_WIDTH = 30;

}  // namespace

ProgressBar::ProgressBar(std::string label)
    : m_label(std::move(label)), m_bTerminal(isatty(STDERR_FILENO) != 0), m_start(std::chrono::steady_clock::now()) {}

ProgressBar::~ProgressBar() {
  if (m_bDrawn) std::fputs("\r\033[K", stderr);
}

Progress ProgressBar::Callback() {
  if (!m_bTerminal) return Progress();
  return [this](size_t nDone, size_t nTotal) { Show(nDone, nTotal); };
}

void ProgressBar::Show(size_t nDone, size_t nTotal) {
  const auto now = std::chrono::steady_clock::now();
  if (now - m_start < DELAY || (m_bDrawn && now - m_lastDrawn < REDRAW)) return;
  if (nTotal == 0) {
    std::fprintf(stderr, "\r%s %zu", m_label.c_str(), nDone);
  } else {
    const size_t nFilled = BAR_WIDTH * nDone / nTotal;
    std::fprintf(stderr, "\r%s [%s%s] %3zu%%", m_label.c_str(), std::string(nFilled, '#').c_str(),
                 std::string(BAR_WIDTH - nFilled, '.').c_str(), 100 * nDone / nTotal);
  }
  std::fflush(stderr);
  m_bDrawn = true;
  m_lastDrawn = now;
}
