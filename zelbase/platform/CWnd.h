// The framework's window, here the receiver of messages: on a system without windows a message is a callback. Neighbour:
// zelbase/units/HelpProvider.h, which finds the help on a window by the name of its class.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "zelbase/platform/CObject.h"

// A receiver of posted messages. Deriving classes override PostMessageA, or the object is made with a callback. Whoever
// posts calls it on its own thread, so it must be quick and safe against several callers. The receiver outlives every
// object that was told to notify it.
class ZELBASE_API CWnd : public CObject {
 public:
  using MessageCallback = std::function<void(unsigned int message, unsigned long long first, long long second)>;

  CWnd() = default;
  explicit CWnd(MessageCallback callback) : m_callback(std::move(callback)) {}

  // Hands one message with its two words to the callback. False when there is none.
  virtual bool PostMessageA(unsigned int message, unsigned long long first, long long second) {
    if (!m_callback) return false;
    m_callback(message, first, second);
    return true;
  }

  // The name of the object's own class, with "class " in front whatever was declared, and with its namespaces:
  // "class CDepthView". A host may give its windows another text.
  virtual std::string RuntimeClassName() const;

 private:
  MessageCallback m_callback;
};

// The first message number that applications may use as they like.
inline constexpr unsigned int WM_APP = 0x8000;
