// Threads: tasks on a pool, and a counter under a lock that many read and few write.
#include <atomic>
#include <cstdio>

#include "zelbase/concurrency/ReadWriteLocker.h"
#include "zelbase/concurrency/ThreadPool.h"

int main() {
  ReadWriteLocker lock;
  int total = 0;
  std::atomic<int> looks{0};

  ThreadPool pool(4);
  for (int i = 1; i <= 100; ++i) {
    pool.Dispatch([&, i] {
      lock.LockWrite();
      total += i;
      lock.UnlockWrite();
    });
    pool.Dispatch([&] {
      lock.LockRead();
      if (total >= 0) ++looks;
      lock.UnlockRead();
    });
  }
  pool.Close();
  pool.Wait();
  std::printf("total %d, looked at %d times\n", total, looks.load());
  return 0;
}

// Prints:
//   total 5050, looked at 100 times
