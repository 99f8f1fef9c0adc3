#include "zelbase/numerics/detail/MatrixKernels.h"

#include <atomic>

namespace zelbase::detail {

namespace {

// A way that is compiled in may still be one that this processor has not.
#if defined(__x86_64__) && defined(__GNUC__)
bool HasAvx2() noexcept {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") != 0;
}

bool HasAvx512() noexcept {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512vl") != 0 && __builtin_cpu_supports("avx512dq") != 0;
}
#else
bool HasAvx2() noexcept { return false; }
bool HasAvx512() noexcept { return false; }
#endif

// Set by the first call, which may come from the initialiser of any static.
constinit std::atomic<const MatrixKernels*> g_kernels{nullptr};

const MatrixKernels& Choose() noexcept {
  const MatrixKernels* kernels = KernelsOf(MatrixWay::Avx512);
  if (kernels == nullptr) kernels = KernelsOf(MatrixWay::Avx2);
  if (kernels == nullptr) kernels = PortableKernels();
  g_kernels.store(kernels, std::memory_order_release);
  return *kernels;
}

}  // namespace

const MatrixKernels& Kernels() noexcept {
  const MatrixKernels* const kernels = g_kernels.load(std::memory_order_acquire);
  return kernels != nullptr ? *kernels : Choose();
}

const MatrixKernels* KernelsOf(MatrixWay way) noexcept {
  if (way == MatrixWay::Avx512) return HasAvx512() ? Avx512Kernels() : nullptr;
  if (way == MatrixWay::Avx2) return HasAvx2() ? Avx2Kernels() : nullptr;
  return way == MatrixWay::Portable ? PortableKernels() : nullptr;
}

}  // namespace zelbase::detail
