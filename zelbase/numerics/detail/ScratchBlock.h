// Scratch memory for one call of a matrix kernel. Internal to the library; the kernels cut it into their work arrays.
#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace zelbase::detail {

// Elements at the start of a cache line, not initialised: on the stack when they are few, otherwise allocated. Take gives
// them out front to back; what was asked for in the constructor must be enough for the sum, each rounded up by RoundUp.
template <class Element>
class ScratchBlock {
 public:
  explicit ScratchBlock(std::size_t count)
      : m_many(count > kFew ? Allocate(count) : nullptr), m_next(m_many != nullptr ? m_many.get() : m_few) {}
  ScratchBlock(const ScratchBlock&) = delete;
  ScratchBlock& operator=(const ScratchBlock&) = delete;

  Element* Take(std::size_t count) noexcept {
    Element* const taken = m_next;
    m_next += RoundUp(count);
    return taken;
  }

  // To whole cache lines.
  static constexpr std::size_t RoundUp(std::size_t count) noexcept {
    constexpr std::size_t kLine = kLineBytes / sizeof(Element);
    return (count + kLine - 1) / kLine * kLine;
  }

 private:
  static constexpr std::size_t kLineBytes = 64;
  static constexpr std::size_t kFew = 4096 / sizeof(Element);
  static constexpr std::align_val_t kAlignment{kLineBytes};

  struct Release {
    void operator()(Element* block) const noexcept { ::operator delete[](block, kAlignment); }
  };
  using Block = std::unique_ptr<Element[], Release>;

  static Block Allocate(std::size_t count) { return Block(static_cast<Element*>(::operator new[](count * sizeof(Element), kAlignment))); }

  alignas(kLineBytes) Element m_few[kFew];
  Block m_many;
  Element* m_next;
};

}  // namespace zelbase::detail
