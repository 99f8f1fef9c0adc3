#include "zelbase/errors/ErrorWording.h"

#include <utility>

#include "zelbase/errors/detail/SharedSlot.h"

namespace {

using Slot = zelbase::detail::SharedSlot<const ErrorWording>;

// Never destroyed: the destructor of any static may still format an error.
Slot& Installed() {
  static Slot& slot = *new Slot;
  return slot;
}

}  // namespace

bool ErrorWording::Find(const std::string& section, const std::string& key, std::string& text) {
  const std::shared_ptr<const ErrorWording> wording = Installed().Get();
  if (wording == nullptr) return false;
  std::string found;
  if (!wording->Get(section, key, found)) return false;
  text = std::move(found);
  return true;
}

std::shared_ptr<const ErrorWording> ErrorWording::Install(std::shared_ptr<const ErrorWording> wording) {
  return Installed().Exchange(std::move(wording));
}
