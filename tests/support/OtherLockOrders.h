// For tests that take locks in contradicting orders on purpose. Neighbour: zelbase/platform/detail/LockOrder.h, which would tell
// of it.
#pragma once

#include "zelbase/platform/detail/LockOrder.h"

// While it lives, nobody is told of contradicting orders. Not copyable.
class OtherLockOrders {
 public:
  OtherLockOrders() : m_former(zelbase::detail::LockOrder::SetHook([](const void*, const void*) {})) {}
  ~OtherLockOrders() { zelbase::detail::LockOrder::SetHook(m_former); }
  OtherLockOrders(const OtherLockOrders&) = delete;
  OtherLockOrders& operator=(const OtherLockOrders&) = delete;

 private:
  const zelbase::detail::LockOrder::Hook m_former;
};
