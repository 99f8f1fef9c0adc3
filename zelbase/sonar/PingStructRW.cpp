#include "zelbase/sonar/PingStructRW.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "zelbase/sonar/PingStruct.h"
#include "zelbase/sonar/detail/NadirSearch.h"

namespace {

// Where the next array begins in the block of all arrays. Each begins where wide loads and stores like it.
class Layout {
 public:
  template <class Element>
  std::size_t Place(int count) {
    const std::size_t place = m_size;
    const std::size_t bytes = static_cast<std::size_t>(std::max(count, 0)) * sizeof(Element);
    m_size += (bytes + kStep - 1) / kStep * kStep;
    return place;
  }
  std::size_t Size() const { return m_size; }

 private:
  static constexpr std::size_t kStep = 16;
  std::size_t m_size = 0;
};

// Both may be the same array.
template <class Element>
void CopyElements(Element* target, const Element* source, int count) {
  if (target == nullptr || source == nullptr || count <= 0) return;
  std::memmove(target, source, static_cast<std::size_t>(count) * sizeof(Element));
}

}  // namespace

PingStructRW::PingStructRW() = default;

PingStructRW::~PingStructRW() { Delete(); }

PingStructRW::PingStructRW(const PingStructRW& other) { *this = other; }

PingStructRW& PingStructRW::operator=(const PingStructRW& other) {
  if (this == &other) return *this;
  CopyFrom(other, std::min(other.numBeams, other.beamCapacity), std::min(other.numSamples, other.sampleCapacity));
  return *this;
}

PingStructRW& PingStructRW::operator=(const PingStruct& other) {
  CopyFrom(other, other.numBeams, other.numSamples);
  return *this;
}

void PingStructRW::Delete() {
#define ZELBASE_PING_FORGET(type, name) name = nullptr;
  ZELBASE_PING_ARRAYS(ZELBASE_PING_FORGET, ZELBASE_PING_FORGET, ZELBASE_PING_FORGET)
#undef ZELBASE_PING_FORGET
  beamCapacity = 0;
  sampleCapacity = 0;
  m_arrays.reset();
}

void PingStructRW::Init() {
  Delete();
#define ZELBASE_PING_RESET(type, name, value) name = value;
  ZELBASE_PING_SCALARS(ZELBASE_PING_RESET)
#undef ZELBASE_PING_RESET
}

int PingStructRW::CompNadirBeam() { return zelbase::detail::NadirSearch<PingStructRW>(*this).Run(); }

double PingStructRW::CompNadirDepth() {
  CompNadirBeam();
  return nadirDepth;
}

float PingStructRW::Nadir3D(int beam) const { return zelbase::detail::AngleOffVertical(beamX[beam], beamY[beam], beamZ[beam]); }

void PingStructRW::Allocate(int beams, int samples) {
  Delete();
  Layout sizes;
#define ZELBASE_PING_BEAM_SIZE(type, name) sizes.Place<type>(beams);
#define ZELBASE_PING_SAMPLE_SIZE(type, name) sizes.Place<type>(samples);
  ZELBASE_PING_ARRAYS(ZELBASE_PING_BEAM_SIZE, ZELBASE_PING_SAMPLE_SIZE, ZELBASE_PING_BEAM_SIZE)
#undef ZELBASE_PING_BEAM_SIZE
#undef ZELBASE_PING_SAMPLE_SIZE
  m_arrays = std::make_unique<std::byte[]>(sizes.Size());
  Layout places;
#define ZELBASE_PING_PLACE(type, name, count) \
  if (count > 0) name = reinterpret_cast<type*>(m_arrays.get() + places.Place<type>(count));
#define ZELBASE_PING_BEAM_PLACE(type, name) ZELBASE_PING_PLACE(type, name, beams)
#define ZELBASE_PING_SAMPLE_PLACE(type, name) ZELBASE_PING_PLACE(type, name, samples)
  ZELBASE_PING_ARRAYS(ZELBASE_PING_BEAM_PLACE, ZELBASE_PING_SAMPLE_PLACE, ZELBASE_PING_BEAM_PLACE)
#undef ZELBASE_PING_SAMPLE_PLACE
#undef ZELBASE_PING_BEAM_PLACE
#undef ZELBASE_PING_PLACE
  beamCapacity = std::max(beams, 0);
  sampleCapacity = std::max(samples, 0);
}

// Of an owner's arrays no more is read than it has: its counts are for everybody to change.
template <class Source>
void PingStructRW::CopyFrom(const Source& source, int sourceBeams, int sourceSamples) {
  const int beams = source.numBeams;
  const int samples = source.numSamples;
#define ZELBASE_PING_COPY_SCALAR(type, name, value) name = source.name;
  ZELBASE_PING_SCALARS(ZELBASE_PING_COPY_SCALAR)
#undef ZELBASE_PING_COPY_SCALAR
  numBeams = 0;
  numSamples = 0;
  // The old arrays live until the end: the source may look at them.
  std::unique_ptr<std::byte[]> former;
  if (beamCapacity < beams || sampleCapacity < samples) {
    former = std::move(m_arrays);
    // Kept: both counts of the source become the capacities, also where that is less than before.
    Allocate(beams, samples);
  }
  numBeams = beams;
  numSamples = samples;
  // Kept: a null array of the source leaves the one here as it is, and so does a ping without hasShortArray.
#define ZELBASE_PING_COPY_BEAMS(type, name) CopyElements(name, source.name, sourceBeams);
#define ZELBASE_PING_COPY_SAMPLES(type, name) CopyElements(name, source.name, sourceSamples);
#define ZELBASE_PING_COPY_OPTIONAL(type, name) \
  if (source.hasShortArray != 0) CopyElements(name, source.name, sourceBeams);
  ZELBASE_PING_ARRAYS(ZELBASE_PING_COPY_BEAMS, ZELBASE_PING_COPY_SAMPLES, ZELBASE_PING_COPY_OPTIONAL)
#undef ZELBASE_PING_COPY_OPTIONAL
#undef ZELBASE_PING_COPY_SAMPLES
#undef ZELBASE_PING_COPY_BEAMS
}
