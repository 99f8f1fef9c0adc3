#include "zelbase/concurrency/Processor.h"

#include "zelbase/platform/LockGuard.h"

namespace {

constinit Locker g_parentsLock;

}  // namespace

bool Processor::Initialize() {
  m_stopped = false;
  SetErrorMessage(std::string());
  ResetProgress();
  return true;
}

double Processor::GetProgress() const {
  const LockGuard guard(m_lock);
  double value = m_progress;
  for (auto part = m_progressParts.rbegin(); part != m_progressParts.rend(); ++part) {
    value = value * part->scale + part->base;
  }
  return ClampProgress(value);
}

void Processor::Stop() { m_stopped = true; }

std::string Processor::ErrorMessage() const {
  const LockGuard guard(m_lock);
  return m_errorMessage;
}

void Processor::SetErrorMessage(const std::string& message) {
  const LockGuard guard(m_lock);
  m_errorMessage = message;
}

void Processor::SetProgressParent(Processor* parent) {
  const LockGuard guard(g_parentsLock);
  for (const Processor* above = parent; above != nullptr; above = above->m_progressParent) {
    if (above == this) return;
  }
  m_progressParent = parent;
}

void Processor::SetProgress(double value) {
  Processor* topmost = this;
  while (Processor* const parent = topmost->m_progressParent) topmost = parent;
  const LockGuard guard(topmost->m_lock);
  topmost->m_progress = value;  // Kept: unclamped, and past the parts of all on the way
}

void Processor::PushProgressPart(double scale) {
  const LockGuard guard(m_lock);
  m_progressParts.push_back({m_progress, scale});
  m_progress = 0.0;
}

void Processor::PopProgressPart() {
  const LockGuard guard(m_lock);
  if (m_progressParts.empty()) return;
  const ProgressPart& part = m_progressParts.back();
  m_progress = part.scale + part.base;  // Kept: the end of the share, wherever the progress stood
  m_progressParts.pop_back();
}

void Processor::ResetProgress() {
  const LockGuard guard(m_lock);
  m_progressParts.clear();
  m_progress = 0.0;
}

double Processor::ClampProgress(double value) {
  if (!(value > 0.0)) return 0.0;
  return value > 1.0 ? 1.0 : value;
}
