#include "zelbase/errors/ErrorString.h"

#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/Mutex.h"

namespace {

constexpr int kUnspecified = 12034;

struct LastErrorText {
  zelbase::detail::Mutex mutex;
  std::string text ZELBASE_GUARDED_BY(mutex);
};

// Never destroyed: an ErrorString in any static may still end after everything else.
LastErrorText& LastErrorStore() {
  static LastErrorText& store = *new LastErrorText;
  return store;
}

}  // namespace

ErrorString::ErrorString(int textId) : std::string(NumberedText(textId)) {}

ErrorString::ErrorString(bool ok) : std::string(ok ? std::string() : NumberedText(kUnspecified)) {}

ErrorString::ErrorString(const char* const text) : std::string(text != nullptr ? text : "") {}

ErrorString::ErrorString(const std::string& text) : std::string(text) {}

ErrorString& ErrorString::operator=(const std::string& text) {
  assign(text);
  return *this;
}

ErrorString& ErrorString::operator=(const char* text) {
  assign(text != nullptr ? text : "");
  return *this;
}

ErrorString::~ErrorString() {
  if (empty()) return;
  // Kept: the only place that sets the last error, for temporaries and copies as well; callers read it right after a failure.
  try {
    LastErrorText& last = LastErrorStore();
    const LockGuard guard(last.mutex);
    last.text.assign(*this);
  } catch (...) {
    // No memory for the text: the last error stays what it was.
  }
}

ErrorString& ErrorString::operator<<(const std::string& text) {
  append(text);
  return *this;
}

ErrorString& ErrorString::operator<<(const ErrorString& text) {
  append(text);
  return *this;
}

ErrorString& ErrorString::operator<<(const char* text) {
  if (text != nullptr) append(text);
  return *this;
}

std::string ErrorString::LastError() {
  LastErrorText& last = LastErrorStore();
  const LockGuard guard(last.mutex);
  return last.text;
}
