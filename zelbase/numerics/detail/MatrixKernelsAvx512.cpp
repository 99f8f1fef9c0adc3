// The matrix kernels in registers of 512 bits. No fused multiplication: its result has other bits.

#if defined(__x86_64__) && defined(__GNUC__)
#define ZELBASE_KERNEL_TARGET __attribute__((target("avx512f,avx512vl,avx512dq")))

#include "zelbase/numerics/detail/DecompositionKernel.h"
#include "zelbase/numerics/detail/InverseKernel.h"
#include "zelbase/numerics/detail/MatrixKernels.h"
#include "zelbase/numerics/detail/ProductKernel.h"

namespace zelbase::detail {

const MatrixKernels* Avx512Kernels() noexcept {
  static constexpr MatrixKernels kKernels{&Multiply<8>, &MultiplyColumn<8>, &Invert<8>, &Decompose<8>};
  return &kKernels;
}

}  // namespace zelbase::detail

#else

#include "zelbase/numerics/detail/MatrixKernels.h"

const zelbase::detail::MatrixKernels* zelbase::detail::Avx512Kernels() noexcept { return nullptr; }

#endif
