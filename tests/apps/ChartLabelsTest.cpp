// Labels that do not overlap, and the shoalest soundings among them.

#include "survey/ChartLabels.h"

#include <cmath>
#include <random>

#include "survey/ChartDepths.h"
#include "survey/ChartLayout.h"
#include "tests/apps/ChartFixture.h"

using namespace zel;

namespace {

// A pen on a scratch surface, for measuring.
class ScratchPen {
 public:
  ScratchPen()
      : m_surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1)),
        m_context(cairo_create(m_surface)),
        m_pen(std::make_unique<SheetPen>(m_context, 6.0)) {}
  ~ScratchPen() {
    m_pen.reset();
    cairo_destroy(m_context);
    cairo_surface_destroy(m_surface);
  }
  ScratchPen(const ScratchPen&) = delete;
  ScratchPen& operator=(const ScratchPen&) = delete;
  const SheetPen& operator*() const { return *m_pen; }

 private:
  cairo_surface_t* m_surface;
  cairo_t* m_context;
  std::unique_ptr<SheetPen> m_pen;
};

struct Random {
  std::mt19937 engine;
  double operator()(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine); }
};

constexpr Page kArea(0, 0, 100, 80);

// Soundings anywhere on the area, some of them on one another.
std::vector<LabelCandidate> RandomSoundings(unsigned seed, std::size_t count) {
  Random random{std::mt19937(seed)};
  std::vector<LabelCandidate> soundings;
  for (std::size_t i = 0; i < count; ++i) soundings.push_back({random(0, 100), random(0, 80), std::round(random(-30, 2) * 10) / 10, i});
  return soundings;
}

std::vector<LabelCandidate> CandidatesOf(const std::vector<LabelCandidate>& soundings) {
  LabelCandidates cells(kArea, depths::kCell, depths::kCell);
  for (const LabelCandidate& each : soundings) cells.Offer(each.x, each.y, each.z, each.index);
  return cells.ByShoalest();
}

}  // namespace

TEST(BoxIndex, AgreesWithAskingEachBox) {
  Random random{std::mt19937(3)};
  BoxIndex index(kArea, 5, 3);
  std::vector<Page> boxes;
  for (int i = 0; i < 3000; ++i) {
    const double x = random(-20, 120), y = random(-20, 100);
    const Page box(x, y, x + random(0.1, i % 50 == 0 ? 60 : 6), y + random(0.1, 4));
    bool isFree = true;
    for (const Page& other : boxes)
      isFree = isFree && !(box.left < other.right && other.left < box.right && box.bottom < other.top && other.bottom < box.top);
    ASSERT_EQ(index.IsFree(box), isFree) << i;
    if (!isFree) continue;
    index.Add(box);
    boxes.push_back(box);
  }
  EXPECT_GT(boxes.size(), 100u);
}

TEST(BoxIndex, BoxesBeyondAllBoundsDoNoHarm) {
  BoxIndex index(kArea, 5, 3);
  index.Add(Page(-1e300, -1e300, -1e299, 1e300));
  EXPECT_FALSE(index.IsFree(Page(-9e299, 0, -8e299, 1)));
  EXPECT_TRUE(index.IsFree(Page(0, 0, 1e300, 1)));
}

TEST(LabelCandidates, AreTheShoalestOfEachCellByShoalest) {
  LabelCandidates cells(Page(0, 0, 10, 10), 5, 5);
  cells.Offer(1, 1, -9, 0);
  cells.Offer(2, 2, -7, 1);
  cells.Offer(3, 3, -7, 2);
  cells.Offer(8, 1, -6, 3);
  cells.Offer(11, 1, 5, 4);
  cells.Offer(-1, 1, 5, 5);
  cells.Offer(NAN, 1, 5, 6);
  const std::vector<LabelCandidate> candidates = cells.ByShoalest();
  ASSERT_EQ(candidates.size(), 2u);
  EXPECT_EQ(candidates[0].index, 3u);
  EXPECT_EQ(candidates[1].index, 1u) << "the first of equals";
}

TEST(ChartDepths, NoTwoLabelsOverlapAndAllLieOnTheArea) {
  const ScratchPen pen;
  for (unsigned seed = 0; seed < 8; ++seed) {
    BoxIndex taken(kArea, 5, 5);
    const Page obstacle(30, 30, 50, 40);
    taken.Add(obstacle);
    const auto labels = PlaceDepths(*pen, SurveyOf({}), CandidatesOf(RandomSoundings(seed, 20000)), kArea, taken);
    EXPECT_GT(labels.size(), 100u);
    for (std::size_t i = 0; i < labels.size(); ++i) {
      const Page& box = labels[i].box;
      EXPECT_TRUE(box.left >= 0 && box.right <= 100 && box.bottom >= 0 && box.top <= 80);
      EXPECT_FALSE(box.IsRectInPage(obstacle));
      for (std::size_t j = 0; j < i; ++j) ASSERT_FALSE(box.IsRectInPage(labels[j].box)) << i << " and " << j;
    }
  }
}

// What has no label is near a labelled sounding at least as shoal: no further than the reach of two labels and a cell.
TEST(ChartDepths, EverySoundingHasAShoalerLabelNearby) {
  const ScratchPen pen;
  const std::vector<LabelCandidate> soundings = RandomSoundings(11, 5000);
  BoxIndex taken(kArea, 5, 5);
  const Survey survey = SurveyOf({});
  const auto labels = PlaceDepths(*pen, survey, CandidatesOf(soundings), kArea, taken);
  double widest = 0.0, highest = 0.0;
  for (const DepthLabel& label : labels) {
    widest = std::max(widest, label.box.Width());
    highest = std::max(highest, label.box.Height());
  }
  const double reachX = widest + depths::kApartX + depths::kCell, reachY = highest + depths::kApartY + depths::kCell;
  for (const LabelCandidate& sounding : soundings) {
    const bool isAtEdge =
        sounding.x < widest + depths::kCell || sounding.x > 100 - widest - depths::kCell || sounding.y < 5 || sounding.y > 75;
    if (isAtEdge) continue;
    const bool isCovered = std::ranges::any_of(labels, [&](const DepthLabel& label) {
      return label.sounding.z >= sounding.z && std::abs(label.sounding.x - sounding.x) <= reachX &&
             std::abs(label.sounding.y - sounding.y) <= reachY;
    });
    ASSERT_TRUE(isCovered) << sounding.x << ", " << sounding.y << ": " << sounding.z;
  }
}

TEST(ChartDepths, TheShoalestSoundingOfAllHasALabel) {
  const ScratchPen pen;
  std::vector<LabelCandidate> soundings = RandomSoundings(5, 20000);
  soundings.push_back({40, 40, 2.5, soundings.size()});
  BoxIndex taken(kArea, 5, 5);
  const auto labels = PlaceDepths(*pen, SurveyOf({}), CandidatesOf(soundings), kArea, taken);
  ASSERT_FALSE(labels.empty());
  EXPECT_EQ(labels.front().sounding.index, 20000u);
  EXPECT_TRUE(labels.front().text.dries);
}

TEST(ChartDepths, NumbersAreInTheUnitWithDecimalsApart) {
  Survey survey = SurveyOf({});
  EXPECT_EQ(DepthNumber(survey, -12.34).whole, "12");
  EXPECT_EQ(DepthNumber(survey, -12.34).decimals, "3");
  EXPECT_FALSE(DepthNumber(survey, -12.34).dries);
  EXPECT_TRUE(DepthNumber(survey, 0.7).dries);
  EXPECT_EQ(DepthNumber(survey, 0.7).whole, "0");
  EXPECT_FALSE(DepthNumber(survey, 0.01).dries) << "shown as 0.0";
  survey.depthDecimals = 0;
  EXPECT_EQ(DepthNumber(survey, -12.34).decimals, "");
  survey.units.SetUnit(CZelUnitCnv::Depth, 0.3048, 0.0, "ft", "Foot", "Foot");
  EXPECT_EQ(DepthNumber(survey, -3.048).whole, "10");
}
