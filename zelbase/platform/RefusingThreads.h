// The stand-in for threads that a system makes no more of: it refuses the n-th one, or all, and notes what was asked for.
// Neighbour: PlatformThreads.h, the interface it fills.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "zelbase/platform/PlatformThreads.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/Mutex.h"

// Passes on to the system what it does not refuse. May be called from any thread.
class ZELBASE_API RefusingThreads : public PlatformThreads {
 public:
  // What one call of CreateSuspended asked for.
  struct Request {
    int priority = 0;
    std::size_t stackSize = 0;
    bool refused = false;
  };

  // What one call of NameThread said.
  struct Naming {
    unsigned long id = 0;
    std::string name;
  };

  // As made, it refuses nothing. From now on, counted from 1 with the next creation: refuse the n-th one alone (0: none),
  // refuse all, or refuse none.
  void RefuseNumber(std::size_t n);
  void RefuseAll();
  void RefuseNone();

  // What was asked so far, in order.
  std::vector<Request> Requests() const;
  std::vector<Naming> Namings() const;

  std::unique_ptr<PlatformThread> CreateSuspended(std::function<void()> function, int priority, std::size_t stackSize) override;
  unsigned long CurrentId() override;
  void NameThread(unsigned long id, const std::string& name) override;

 private:
  mutable zelbase::detail::Mutex m_mutex;
  bool m_refuseAll ZELBASE_GUARDED_BY(m_mutex) = false;
  std::size_t m_untilRefusal ZELBASE_GUARDED_BY(m_mutex) = 0;  // creations up to and with the one to refuse; 0: none
  std::vector<Request> m_requests ZELBASE_GUARDED_BY(m_mutex);
  std::vector<Naming> m_namings ZELBASE_GUARDED_BY(m_mutex);
};
