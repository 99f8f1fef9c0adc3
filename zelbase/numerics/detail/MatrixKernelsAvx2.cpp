// The matrix kernels in registers of 256 bits. No fused multiplication: its result has other bits.

#if defined(__x86_64__) && defined(__GNUC__)
#define ZELBASE_KERNEL_TARGET __attribute__((target("avx2")))

#include "zelbase/numerics/detail/DecompositionKernel.h"
#include "zelbase/numerics/detail/InverseKernel.h"
#include "zelbase/numerics/detail/MatrixKernels.h"
#include "zelbase/numerics/detail/ProductKernel.h"

namespace zelbase::detail {

const MatrixKernels* Avx2Kernels() noexcept {
  static constexpr MatrixKernels kKernels{&Multiply<4>, &MultiplyColumn<4>, &Invert<4>, &Decompose<4>};
  return &kKernels;
}

}  // namespace zelbase::detail

#else

#include "zelbase/numerics/detail/MatrixKernels.h"

const zelbase::detail::MatrixKernels* zelbase::detail::Avx2Kernels() noexcept { return nullptr; }

#endif
