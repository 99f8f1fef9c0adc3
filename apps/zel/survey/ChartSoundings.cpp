#include "survey/ChartSoundings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace zel {
namespace {

constexpr std::size_t kBlock = 4096;
constexpr double kNone = -std::numeric_limits<double>::infinity();
constexpr int kParts = sheet::kFineParts;
constexpr int kPool = sheet::kFineParts / sheet::kPngParts;  // fine pixels to a coarse one, either way
static_assert(kPool == 2 && kPool * sheet::kPngParts == sheet::kFineParts);
constexpr int kMapWidth = (sheet::kMapRight - sheet::kMapLeft) * kParts;
constexpr int kMapHeight = (sheet::kMapBottom - sheet::kMapTop) * kParts;
constexpr int kMapLeft = sheet::kMapLeft * kParts, kMapTop = sheet::kMapTop * kParts;

bool IsInMap(int x, int y) { return x >= 0 && x < kMapWidth && y >= 0 && y < kMapHeight; }

// Calls `use` for blocks of soundings with their pixels and the number of the first; ends early when it gives false.
template <typename Use>
void ForBlocks(const std::vector<Point>& soundings, const CoordinateSystem& system, Use use) {
  std::array<CPoint, kBlock> pixels;
  for (std::size_t from = 0; from < soundings.size(); from += kBlock) {
    const std::span<const Point> block = std::span(soundings).subspan(from, std::min(kBlock, soundings.size() - from));
    system.WorldToPixel(block, pixels.data());
    if (!use(block, std::span<const CPoint>(pixels.data(), block.size()), from)) return;
  }
}

std::uint32_t Opaque(COLORREF color) {
  const std::uint32_t red = color & 0xFFu, green = color >> 8 & 0xFFu, blue = color >> 16 & 0xFFu;
  return 0xFF000000u | red << 16 | green << 8 | blue;
}

// Colours a row: the table is asked for all its heights at once.
class RowColours {
 public:
  explicit RowColours(const ColorTable& colours) : m_colours(colours) {}

  void Paint(std::span<const double> heights, std::uint32_t* pixels) {
    m_places.clear();
    m_depths.clear();
    for (std::size_t i = 0; i < heights.size(); ++i) {
      if (heights[i] == kNone) continue;
      m_places.push_back(i);
      m_depths.push_back(-heights[i]);
    }
    m_found.resize(m_depths.size());
    m_colours.GetColors(m_depths, m_found);
    for (std::size_t i = 0; i < m_places.size(); ++i) pixels[m_places[i]] = Opaque(m_found[i]);
  }

 private:
  const ColorTable& m_colours;
  std::vector<std::size_t> m_places;
  std::vector<double> m_depths;
  std::vector<COLORREF> m_found;
};

// The least box of a grid that holds all its heights; empty when it has none.
struct Bounds {
  int left = std::numeric_limits<int>::max(), top = 0, right = 0, bottom = 0;  // right and bottom excluded

  void Take(int y, std::span<const double> row) {
    const auto first = std::ranges::find_if(row, [](double z) { return z != kNone; });
    if (first == row.end()) return;
    int last = static_cast<int>(row.size());
    while (row[static_cast<std::size_t>(last) - 1] == kNone) --last;
    if (bottom == 0) top = y;
    bottom = y + 1;
    left = std::min(left, static_cast<int>(first - row.begin()));
    right = std::max(right, last);
  }
};

}  // namespace

ChartSoundings::ChartSoundings(const std::vector<Point>& soundings, const MapView& view, const Visit& visit, const Progress& progress) {
  if (soundings.empty()) return;
  const CoordinateSystem system = view.System(kParts);
  m_grid = {kMapWidth, kMapHeight, std::vector<double>(static_cast<std::size_t>(kMapWidth) * kMapHeight, kNone)};
  ChooseDiameter(soundings, system);
  ForBlocks(soundings, system, [&](std::span<const Point> block, std::span<const CPoint> pixels, std::size_t from) {
    for (std::size_t i = 0; i < block.size(); ++i) {
      const int x = pixels[i].x - kMapLeft, y = pixels[i].y - kMapTop;
      if (!IsInMap(x, y)) continue;
      DrawDot(x, y, block[i].z);
      if (visit) visit((pixels[i].x + 0.5) / kParts, (pixels[i].y + 0.5) / kParts, block[i].z, from + i);
    }
    return !progress || progress(static_cast<double>(from + block.size()) / static_cast<double>(soundings.size()));
  });
}

// Dots grow with the room that each sounding has, so that dense soundings make a surface and sparse ones stay dots.
void ChartSoundings::ChooseDiameter(const std::vector<Point>& soundings, const CoordinateSystem& system) {
  constexpr int kCell = 16;              // pixels; the room is counted in such cells with soundings
  constexpr double kOverlap = 2.2;       // of neighbours, so that irregular ones leave few holes
  constexpr int kLeast = 3, kMost = 13;  // 0.26 to 1.1 mm
  constexpr int kColumns = kMapWidth / kCell + 1, kRows = kMapHeight / kCell + 1;
  std::vector<char> cells(static_cast<std::size_t>(kColumns) * kRows, 0);
  double shown = 0.0;
  ForBlocks(soundings, system, [&](std::span<const Point>, std::span<const CPoint> pixels, std::size_t) {
    for (const CPoint& pixel : pixels) {
      const int x = pixel.x - kMapLeft, y = pixel.y - kMapTop;
      if (!IsInMap(x, y)) continue;
      cells[static_cast<std::size_t>(y / kCell) * kColumns + static_cast<std::size_t>(x / kCell)] = 1;
      shown += 1.0;
    }
    return true;
  });
  const auto used = static_cast<double>(std::ranges::count(cells, 1));
  const double room = shown > 0.0 ? std::sqrt(used * kCell * kCell / shown) : 0.0;
  m_diameter = std::clamp(static_cast<int>(room * kOverlap), kLeast, kMost) | 1;
  const int radius = m_diameter / 2;
  const double square = (m_diameter / 2.0) * (m_diameter / 2.0);
  for (int y = -radius; y <= radius; ++y) m_reach.push_back(static_cast<int>(std::sqrt(square - y * y)));
}

void ChartSoundings::DrawDot(int x, int y, double z) {
  const int radius = m_diameter / 2;
  const int top = std::max(y - radius, 0), bottom = std::min(y + radius, m_grid.height - 1);
  for (int row = top; row <= bottom; ++row) {
    const int reach = m_reach[static_cast<std::size_t>(row - y + radius)];
    double* const heights = m_grid.Row(row);
    const int right = std::min(x + reach, m_grid.width - 1);
    for (int column = std::max(x - reach, 0); column <= right; ++column) heights[column] = std::max(heights[column], z);
  }
}

ChartSoundings::Grid ChartSoundings::Pooled() const {
  Grid pooled{m_grid.width / kPool, m_grid.height / kPool, {}};
  pooled.heights.resize(static_cast<std::size_t>(pooled.width) * static_cast<std::size_t>(pooled.height));
  for (int y = 0; y < pooled.height; ++y) {
    const double* const upper = m_grid.Row(y * kPool);
    const double* const lower = m_grid.Row(y * kPool + 1);
    double* const row = pooled.Row(y);
    for (int x = 0; x < pooled.width; ++x)
      row[x] = std::max({upper[kPool * x], upper[kPool * x + 1], lower[kPool * x], lower[kPool * x + 1]});
  }
  return pooled;
}

PixelImage ChartSoundings::ImageOf(const Grid& grid, const ColorTable& colours) {
  const auto rowOf = [&grid](int y) { return std::span(grid.Row(y), static_cast<std::size_t>(grid.width)); };
  Bounds bounds;
  for (int y = 0; y < grid.height; ++y) bounds.Take(y, rowOf(y));
  PixelImage image;
  if (bounds.bottom == 0) return image;
  image = {bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top, {}};
  const auto width = static_cast<std::size_t>(image.width);
  image.pixels.resize(width * static_cast<std::size_t>(image.height), 0u);
  RowColours row(colours);
  for (int y = 0; y < image.height; ++y) {
    row.Paint(rowOf(image.top + y).subspan(static_cast<std::size_t>(image.left), width),
              image.pixels.data() + static_cast<std::size_t>(y) * width);
  }
  return image;
}

PixelImage ChartSoundings::Fine(const ColorTable& colours) const {
  PixelImage image = ImageOf(m_grid, colours);
  image.left += kMapLeft;
  image.top += kMapTop;
  return image;
}

PixelImage ChartSoundings::Coarse(const ColorTable& colours) const {
  PixelImage image = ImageOf(Pooled(), colours);
  image.left += sheet::kMapLeft * sheet::kPngParts;
  image.top += sheet::kMapTop * sheet::kPngParts;
  return image;
}

}  // namespace zel
