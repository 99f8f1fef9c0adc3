// The look-up of a ColorTable: the stated search, and the index that answers in its place.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <new>

#include "zelbase/colour/ColorTable.h"

using zelbase::detail::ColorLookup;

namespace {

constexpr int kBelowAll = -1;  // the place of the low colour and its name

// An index is made after so many look-ups and as many as there are entries: by then, what it costs has been spent on
// searching anyway.
constexpr std::size_t kFewLookups = 1000;

// Doubles and whole numbers in the same order; infinities count, what is not a number does not.
constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

std::uint64_t OrderOf(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

double InOrder(std::uint64_t order) { return std::bit_cast<double>((order & kSign) != 0 ? order & ~kSign : ~order); }

}  // namespace

// --- Look-up -------------------------------------------------------------------------------------------------------

double ColorTable::Span() const { return m_values.back() - m_values.front(); }

double ColorTable::Guess(double value) const { return (value - m_values.front()) * (NumEntries() - 1) / Span(); }

// The guess stays a double until it is known to be an index.
int ColorTable::GuessedIndex(double guess) const {
  const int last = NumEntries() - 1;
  if (!(guess >= 0)) return kBelowAll;
  return guess >= last ? last : static_cast<int>(guess);
}

int ColorTable::ColorIndex(double value) const {
  if (m_values.empty() || value < m_values.front()) return kBelowAll;
  const int last = NumEntries() - 1;
  if (last == 0) return last;
  // Kept: with a span of 0 the search begins behind the first entry, and gives the last colour.
  const int i = GuessedIndex(Span() == 0 ? 0 : Guess(value));
  if (i < 0 || i == last) return i;
  return value >= m_values[Place(i + 1)] ? FindColorIndex(value, i + 1, last) : FindColorIndex(value, 0, i);
}

int ColorTable::NameIndex(double value) const {
  if (m_values.empty() || value < m_values.front()) return kBelowAll;
  const int last = NumEntries() - 1;
  if (last == 0) return last;
  // Kept: a span of 0 is not looked for, so that 0 / 0 gives the low colour's name where GetColor gives the last
  // colour.
  const int i = GuessedIndex(Guess(value));
  if (i < 0 || i == last) return i;
  return value >= m_values[Place(i + 1)] ? FindNameIndex(value, i + 1, last) : FindNameIndex(value, 0, i);
}

int ColorTable::FindColorIndex(double value, int low, int high) const {
  if (!HasEntry(low) || !HasEntry(high)) return kBelowAll;
  while (high >= 0) {
    if (m_values[Place(high)] <= value) return high;
    const int mid = low + (high - low) / 2;
    // Kept: an entry equal to `value` that is met here is passed by, and the one before it gives the colour.
    if (m_values[Place(mid)] >= value) {
      if (mid - 1 == high) return kBelowAll;  // would go round for ever, among values that are not numbers
      high = mid - 1;
    } else {
      low = mid;
      --high;
    }
  }
  return kBelowAll;
}

int ColorTable::FindNameIndex(double value, int low, int high) const {
  if (!HasEntry(low) || !HasEntry(high)) return kBelowAll;
  while (high >= 0) {
    if (value >= m_values[Place(high)]) return high;
    const int mid = low + (high - low) / 2;
    // Kept: strictly below, so that a name begins at its value where a colour may not.
    if (value < m_values[Place(mid)]) {
      if (mid - 1 == high) return kBelowAll;  // as above
      high = mid - 1;
    } else {
      low = mid;
      --high;
    }
  }
  return kBelowAll;
}

COLORREF ColorTable::ColorAt(int index) const { return index < 0 ? m_lowColor : m_colors[Place(index)]; }

std::string ColorTable::NameAt(int index) const { return index < 0 ? m_lowColorName : m_names[Place(index)]; }

COLORREF ColorTable::FindColor(double value, int low, int high) const { return ColorAt(FindColorIndex(value, low, high)); }

std::string ColorTable::FindName(double value, int low, int high) const { return NameAt(FindNameIndex(value, low, high)); }

COLORREF ColorTable::GetColor(double value) const {
  const ColorLookup* const lookup = LookupFor(1);
  return lookup != nullptr ? lookup->ColorOf(value) : ColorAt(ColorIndex(value));
}

void ColorTable::GetColors(std::span<const double> values, std::span<COLORREF> colors) const {
  const std::size_t count = std::min(values.size(), colors.size());
  if (const ColorLookup* const lookup = LookupFor(count)) return lookup->ColorsOf(values.first(count), colors.data());
  for (std::size_t i = 0; i < count; ++i) colors[i] = ColorAt(ColorIndex(values[i]));
}

std::string ColorTable::GetName(double value) const { return NameAt(NameIndex(value)); }

// --- Index ---------------------------------------------------------------------------------------------------------

// Null while there is none, or none can be made.
const ColorLookup* ColorTable::LookupFor(std::size_t numLookups) const {
  if (const ColorLookup* const lookup = m_lookup.Get()) return lookup;
  const std::size_t bound = kFewLookups + m_values.size();
  return m_lookup.CountsPast(bound, numLookups) ? m_lookup.Keep(MakeLookup()) : nullptr;
}

// Whether an index can stand for the search: in strict order, and with a guess that is a number, since the product in
// it stays finite. Then
// (1) the guess never falls while numbers rise, so that there is a first number which it takes for the last entry's: by
//     rounding, this may lie a little below that entry. From it on all have the last colour;
// (2) below it, a number between two entries has the colour of the lower one, whatever the guess is;
// (3) an entry itself has its own colour or that of the one before.
bool ColorTable::HasPlainSteps() const {
  if (m_values.size() < 2 || m_values.size() > ColorLookup::kMostStarts) return false;
  if (!std::isfinite(Span() * (NumEntries() - 1))) return false;
  return std::adjacent_find(m_values.begin(), m_values.end(), [](double a, double b) { return !(a < b); }) == m_values.end();
}

// The number of (1), or the last entry if it is not below that: by halving the doubles between the ends, of which the
// first one has the guess 0.
double ColorTable::FirstOfLastColor() const {
  std::uint64_t below = OrderOf(m_values.front());
  std::uint64_t first = OrderOf(m_values.back());
  while (first - below > 1) {
    const std::uint64_t mid = below + (first - below) / 2;
    (Guess(InOrder(mid)) >= NumEntries() - 1 ? first : below) = mid;
  }
  return InOrder(first);
}

// The steps as the search has them: each begins at its entry or at the number after it, as the search answers for the
// entry itself.
std::unique_ptr<const ColorLookup> ColorTable::MakeLookup() const {
  if (!HasPlainSteps()) return nullptr;
  try {
    std::vector<COLORREF> colors = {m_lowColor};
    colors.insert(colors.end(), m_colors.begin(), m_colors.end());
    const double firstOfLast = FirstOfLastColor();
    std::vector<double> starts(m_values.size(), firstOfLast);
    for (int i = 0; i < NumEntries() - 1 && m_values[Place(i)] < firstOfLast; ++i) {
      const double value = m_values[Place(i)];
      starts[Place(i)] = ColorIndex(value) == i ? value : std::nextafter(value, firstOfLast);
    }
    return std::make_unique<const ColorLookup>(starts, colors);
  } catch (const std::bad_alloc&) {
    return nullptr;  // the search needs no memory
  }
}
