// How often a long test repeats: in full as it is, less often under a sanitizer, which makes each round ten times as slow.
//
// A suite whose tests take more than a second in all has a name that ends in Long (SegmentPairsLong, say): the quick run
// leaves those out.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZELBASE_TESTS_IN_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZELBASE_TESTS_IN_SANITIZER 1
#endif
#endif

// A build that is as slow as under a sanitizer without being one gives this name itself.
#if defined(ZELBASE_TESTS_IN_SANITIZER) && !defined(ZELBASE_TESTS_SANITIZED)
#define ZELBASE_TESTS_SANITIZED 1
#endif

#ifdef ZELBASE_TESTS_SANITIZED
inline constexpr bool runsSanitized = true;
#else
inline constexpr bool runsSanitized = false;
#endif

// The rounds of this build: the first number, or the second under the address or thread sanitizer.
constexpr long long Effort(long long full, long long sanitized) { return runsSanitized ? sanitized : full; }
