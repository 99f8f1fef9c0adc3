// The door of every fuzz target: gives an input to the target and ends the process when the run took more than a hostile input may
// make the library take. Linked into each target, as a fuzzer and in the replay of its corpus.

#include "fuzz/Target.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#if defined(__SANITIZE_ADDRESS__)
#define ZELBASE_FUZZ_COUNTS_BYTES 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZELBASE_FUZZ_COUNTS_BYTES 1
#endif
#endif

#ifdef ZELBASE_FUZZ_COUNTS_BYTES
// As the sanitizer's header has them, which g++ does not bring.
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void* place);
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*took)(const volatile void*, std::size_t),
                                                         void (*gaveBack)(const volatile void*));
#endif

namespace {

// Asked for and not yet given back, at most: so many times the input, and this besides. What the target keeps beside the library to
// compare it with counts as well.
constexpr long long kBytesAnInputByte = 64;
constexpr long long kBytesBesides = 1024 * 1024;

// Processor time of one run, at most: a second for each mebibyte of input, and this besides, which is what the start of a page of
// memory, a clock's grain and a first run's statics may take.
constexpr double kSecondsAnInputByte = 1.0 / (1024 * 1024);
constexpr double kSecondsBesides = 0.1;

// A replay is an ordinary test, and those do not judge by the clock.
#ifdef ZELBASE_FUZZER
constexpr bool kJudgesTime = true;
#else
constexpr bool kJudgesTime = false;
#endif

// Of the run under way; what lived before it began does not count.
std::atomic<long long> liveBytes{0};
std::atomic<long long> mostLiveBytes{0};

#ifdef ZELBASE_FUZZ_COUNTS_BYTES
void Took(const volatile void*, std::size_t size) {
  const long long live = liveBytes.fetch_add(static_cast<long long>(size), std::memory_order_relaxed) + static_cast<long long>(size);
  if (live > mostLiveBytes.load(std::memory_order_relaxed)) mostLiveBytes.store(live, std::memory_order_relaxed);
}

void GaveBack(const volatile void* place) {
  if (place == nullptr) return;
  const std::size_t size = __sanitizer_get_allocated_size(place);
  liveBytes.fetch_sub(static_cast<long long>(size), std::memory_order_relaxed);
}

// Only the sanitizer's allocator can be listened to: an ordinary build replays without counting bytes.
const int listening = __sanitizer_install_malloc_and_free_hooks(Took, GaveBack);
#endif

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void CheckLimits(std::size_t size, double seconds) {
  const long long bytes = mostLiveBytes.load(std::memory_order_relaxed);
  const long long mostBytes = kBytesAnInputByte * static_cast<long long>(size) + kBytesBesides;
  const double mostSeconds = kSecondsAnInputByte * static_cast<double>(size) + kSecondsBesides;
  if (bytes <= mostBytes && (seconds <= mostSeconds || !kJudgesTime)) return;
  std::fprintf(stderr, "beyond the limits of a run: %zu bytes of input took %lld bytes (at most %lld) and %.3f s (at most %.3f s)\n", size,
               bytes, mostBytes, seconds, mostSeconds);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
#ifdef ZELBASE_FUZZ_COUNTS_BYTES
  if (listening == 0) std::abort();
#endif
  liveBytes.store(0, std::memory_order_relaxed);
  mostLiveBytes.store(0, std::memory_order_relaxed);
  const double start = ProcessorSeconds();
  RunInput(data, size);
  CheckLimits(size, ProcessorSeconds() - start);
  return 0;
}
