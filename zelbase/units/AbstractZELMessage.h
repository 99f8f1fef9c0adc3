// What an application shows messages with, as far as this library calls it. Neighbour: Translator.h, which tells the texts
// that were asked for and not found.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Implemented in the applications, which know what the numbers mean. Called on whatever thread has something to tell, also
// on several at once.
class ZELBASE_API AbstractZELMessage {
 public:
  virtual ~AbstractZELMessage() = default;

  // Not called by this library; they keep ShowMessage in its place.
  virtual void Reserved1() {}
  virtual void Reserved2() {}

  // The Translator passes 3 (the class of its messages), the message, 1, an empty text and 1.
  virtual void ShowMessage(int messageClass, const std::string& text, int second, const std::string& detail, int third) = 0;
};
