// The local time zone for the length of a scope, for tests whose expected values hang on it.
#pragma once

#include <optional>
#include <string>

// Sets TZ to `zone`, which is best a rule written out in full ("CET-1CEST,M3.5.0,M10.5.0/3"), so that no installed zone
// file decides, and restores the former zone at its end. Nobody else may read the zone meanwhile: not for tests with
// running threads that ask for local time.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const std::string& zone);
  ~ScopedTimeZone();
  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  std::optional<std::string> m_former;
};
