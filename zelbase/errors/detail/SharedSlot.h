// A place that holds one shared object, or none, for any thread to read or change. Internal to the library.
#pragma once

#include <memory>
#include <utility>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/Mutex.h"

namespace zelbase::detail {

// Get() keeps the object alive for its caller, so that it may be exchanged while it is in use.
template <class T>
class SharedSlot {
 public:
  std::shared_ptr<T> Get() const {
    const LockGuard guard(m_mutex);
    return m_object;
  }

  // Puts `object` in and gives what was there. The former object is not destroyed under the lock.
  std::shared_ptr<T> Exchange(std::shared_ptr<T> object) {
    const LockGuard guard(m_mutex);
    std::swap(m_object, object);
    return object;
  }

 private:
  mutable Mutex m_mutex;
  std::shared_ptr<T> m_object ZELBASE_GUARDED_BY(m_mutex);
};

}  // namespace zelbase::detail
