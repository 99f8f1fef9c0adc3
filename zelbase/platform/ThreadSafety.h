// Words by which a declaration says which lock guards it, for clang's -Wthread-safety to check; empty for other compilers.
// Neighbours: LockGuard.h, the guard that the check understands; detail/Mutex.h, the platform's own annotated mutex.
//
// | word                         | stands at        | says                                                             |
// |------------------------------|------------------|------------------------------------------------------------------|
// | ZELBASE_CAPABILITY(kind)     | a class          | it is a lock; kind is the word for it in messages                |
// | ZELBASE_SCOPED_CAPABILITY    | a class          | it holds a lock from its constructor to its destructor           |
// | ZELBASE_GUARDED_BY(lock)     | a field          | read and written with the lock held only                         |
// | ZELBASE_PT_GUARDED_BY(lock)  | a pointer field  | the same for what it points to                                   |
// | ZELBASE_REQUIRES(lock)       | a function       | to be called with the lock held                                  |
// | ZELBASE_ACQUIRE(lock...)     | a function       | takes the lock; of its own object when none is named             |
// | ZELBASE_ACQUIRE_SHARED(...)  | a function       | the same, to read                                                |
// | ZELBASE_RELEASE(...)         | a function       | gives the lock back, however it was taken                        |
// | ZELBASE_RELEASE_SHARED(...)  | a function       | gives back what was taken to read                                |
// | ZELBASE_TRY_ACQUIRE(result)  | a function       | has taken the lock when it returns `result`                      |
// | ZELBASE_RETURN_CAPABILITY(l) | a function       | returns a reference to the lock                                  |
// | ZELBASE_NO_THREAD_CHECK      | a function       | is not checked; the reason stands beside it                      |
#pragma once

#if defined(__clang__)
#define ZELBASE_THREAD_ATTRIBUTE(words) __attribute__((words))
#else
#define ZELBASE_THREAD_ATTRIBUTE(words)
#endif

#define ZELBASE_CAPABILITY(kind) ZELBASE_THREAD_ATTRIBUTE(capability(kind))
#define ZELBASE_SCOPED_CAPABILITY ZELBASE_THREAD_ATTRIBUTE(scoped_lockable)
#define ZELBASE_GUARDED_BY(...) ZELBASE_THREAD_ATTRIBUTE(guarded_by(__VA_ARGS__))
#define ZELBASE_PT_GUARDED_BY(...) ZELBASE_THREAD_ATTRIBUTE(pt_guarded_by(__VA_ARGS__))
#define ZELBASE_REQUIRES(...) ZELBASE_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define ZELBASE_ACQUIRE(...) ZELBASE_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define ZELBASE_ACQUIRE_SHARED(...) ZELBASE_THREAD_ATTRIBUTE(acquire_shared_capability(__VA_ARGS__))
#define ZELBASE_RELEASE(...) ZELBASE_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define ZELBASE_RELEASE_SHARED(...) ZELBASE_THREAD_ATTRIBUTE(release_shared_capability(__VA_ARGS__))
#define ZELBASE_TRY_ACQUIRE(...) ZELBASE_THREAD_ATTRIBUTE(try_acquire_capability(__VA_ARGS__))
#define ZELBASE_RETURN_CAPABILITY(lock) ZELBASE_THREAD_ATTRIBUTE(lock_returned(lock))
#define ZELBASE_NO_THREAD_CHECK ZELBASE_THREAD_ATTRIBUTE(no_thread_safety_analysis)
