// An object of each thread's own that may be used until the very end of the process: what a reference to "no such item" leads
// to. Internal to the library; in the list types CZelString, FormatString and CDataInfoArray.
#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace zelbase::detail {

// The calling thread's T. It is there in functions called at exit and in destructors of statics, too, which run behind the
// destructors of what the main thread has of its own: when the thread ends, the object is made anew, so that it gives back its
// memory and goes on. T's constructor takes no memory.
template <class T>
T& ThreadSpare() {
  // Apart from the object that ends, as writing to what is within it is lost once its destructor is through.
  alignas(T) thread_local constinit std::byte place[sizeof(T)]{};
  struct Owner {
    explicit Owner(void* at) : object(new (at) T) {}
    ~Owner() {
      std::destroy_at(object);
      new (object) T;
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    T* object;
  };
  thread_local const Owner owner(place);
  return *std::launder(reinterpret_cast<T*>(place));
}

}  // namespace zelbase::detail
