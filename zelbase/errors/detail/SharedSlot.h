// A place that holds one shared object, or none, for any thread to read or change. Internal to the library.
#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace zelbase::detail {

// Get() keeps the object alive for its caller, so that it may be exchanged while it is in use.
template <class T>
class SharedSlot {
 public:
  std::shared_ptr<T> Get() const {
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_object;
  }

  // Puts `object` in and gives what was there. The former object is not destroyed under the lock.
  std::shared_ptr<T> Exchange(std::shared_ptr<T> object) {
    const std::lock_guard<std::mutex> guard(m_mutex);
    std::swap(m_object, object);
    return object;
  }

 private:
  mutable std::mutex m_mutex;
  std::shared_ptr<T> m_object;
};

}  // namespace zelbase::detail
