#include "ProgressBar.h"

#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

namespace zel {
namespace {

constexpr int kCells = 40;
constexpr std::chrono::milliseconds kPause(100);

volatile sig_atomic_t g_interrupted = 0;

void NoteInterrupt(int) { g_interrupted = 1; }

void Catch(int signal) {
  struct sigaction action = {};
  action.sa_handler = NoteInterrupt;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
  sigset_t caught;
  sigemptyset(&caught);
  sigaddset(&caught, signal);
  sigprocmask(SIG_UNBLOCK, &caught, nullptr);
}

}  // namespace

ProgressBar::ProgressBar(std::string what) : m_what(std::move(what)), m_onTerminal(isatty(STDERR_FILENO) == 1) {}

void ProgressBar::Show(double progress) {
  if (!m_onTerminal) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < m_next) return;
  m_next = now + kPause;
  m_shown = true;
  const int full = static_cast<int>(progress * kCells);
  std::fprintf(stderr, "\r%s [%s%s] %3.0f %%", m_what.c_str(), std::string(static_cast<std::size_t>(full), '#').c_str(),
               std::string(static_cast<std::size_t>(kCells - full), '.').c_str(), progress * 100);
  std::fflush(stderr);
}

void ProgressBar::Clear() {
  if (!m_shown) return;
  std::fputs("\r\033[K", stderr);
  std::fflush(stderr);
  m_shown = false;
}

void CatchInterrupt() {
  Catch(SIGINT);
  Catch(SIGTERM);
  // Who started it with "nohup" wants it to go on without the terminal.
  struct sigaction present = {};
  sigaction(SIGHUP, nullptr, &present);
  if (present.sa_handler != SIG_IGN) Catch(SIGHUP);
}

bool IsInterrupted() { return g_interrupted != 0; }

}  // namespace zel
