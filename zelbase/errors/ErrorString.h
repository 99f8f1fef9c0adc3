// The result of a function that answers with success or with the text of its failure. Neighbour: Error.h, for failures that
// are to be reported.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// A text that is empty for success.
//
//   ErrorString Save() { return disk.IsFull() ? ErrorString("The disk is full.") : ErrorString(true); }
//   if (!Save()) Show(ErrorString::LastError());
//
// Note that as a bool it is TRUE FOR SUCCESS, that is when the text is empty, and `!` is true for a failure.
//
// When an object that holds a text is destroyed, temporaries and copies included, its text becomes the last error; nothing
// else sets that. An empty one leaves it alone.
//
// Threads: each object belongs to one thread at a time; the last error is shared by all, and the last writer wins. It is an
// aid for diagnosis and stays readable until the process has ended.
class ZELBASE_API ErrorString : public std::string {
 public:
  // Success.
  ErrorString() = default;

  // The numbered text (NumberedTexts.h); empty, and so success, for an unknown number.
  ErrorString(int textId);

  // Empty when `ok`, otherwise "Unspecified Error" (text 12034).
  ErrorString(bool ok);

  // Null is empty.
  ErrorString(const char* const text);
  ErrorString(const std::string& text);
  ErrorString(const ErrorString& other) = default;

  ErrorString& operator=(const ErrorString& other) = default;
  ErrorString& operator=(const std::string& text);
  ErrorString& operator=(const char* text);

  // Hands the text to LastError, if there is one.
  ~ErrorString();

  // Each appends; null appends nothing.
  ErrorString& operator<<(const std::string& text);
  ErrorString& operator<<(const ErrorString& text);
  ErrorString& operator<<(const char* text);

  // Kept: true when the text is empty, as functions that give an ErrorString are asked whether they went well.
  operator bool() const noexcept { return empty(); }
  bool operator!() const noexcept { return !empty(); }

  // The text of the failure that went out of scope last; empty when there was none yet. A plain text, so that dropping it
  // does not set it again.
  static std::string LastError();
};
