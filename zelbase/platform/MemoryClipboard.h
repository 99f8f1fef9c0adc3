// A clipboard inside the process: what one window puts there another one finds, and no other program does. Neighbour:
// PlatformClipboard.h, the interface it fills.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "zelbase/platform/PlatformClipboard.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/platform/detail/Mutex.h"

// Begins empty and without names; numbers are given in ascending order from 0xC000. Any thread.
class ZELBASE_API MemoryClipboard : public PlatformClipboard {
 public:
  MemoryClipboard();
  ~MemoryClipboard() override;

  unsigned int RegisterFormat(const std::string& name) override;
  bool Put(std::shared_ptr<const ClipboardContent> content) override;
  std::shared_ptr<const ClipboardContent> Get() override;

 private:
  zelbase::detail::Mutex m_mutex;
  std::map<std::string, unsigned int> m_numbers ZELBASE_GUARDED_BY(m_mutex);  // by the name in small letters
  std::shared_ptr<const ClipboardContent> m_content ZELBASE_GUARDED_BY(m_mutex);
};
