// System calls that a signal may interrupt, called until none does. Neighbours: the files of this folder that call them.
#pragma once

#include <cerrno>

namespace zelbase::detail {

// What `call` gives in the end. It gives -1 with errno EINTR when it was interrupted.
template <class Call>
auto WithoutInterruption(Call call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

}  // namespace zelbase::detail
