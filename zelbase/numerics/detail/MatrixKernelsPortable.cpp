// The matrix kernels for every processor.

#include "zelbase/numerics/detail/DecompositionKernel.h"
#include "zelbase/numerics/detail/InverseKernel.h"
#include "zelbase/numerics/detail/MatrixKernels.h"
#include "zelbase/numerics/detail/ProductKernel.h"

namespace zelbase::detail {

namespace {

#if defined(__GNUC__)
constexpr int kPortableLanes = 2;  // the compiler makes two of one where the processor has no registers for it
#else
constexpr int kPortableLanes = 1;
#endif

}  // namespace

const MatrixKernels* PortableKernels() noexcept {
  static constexpr MatrixKernels kKernels{&Multiply<kPortableLanes>, &MultiplyColumn<kPortableLanes>, &Invert<kPortableLanes>,
                                          &Decompose<kPortableLanes>};
  return &kKernels;
}

}  // namespace zelbase::detail
