#include "zelbase/platform/CDC.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <vector>

namespace {

static_assert(std::is_abstract_v<CDC>);
static_assert(std::is_base_of_v<CObject, CDC>);

struct Surface : CDC {
  explicit Surface(bool& goneFlag) : gone(goneFlag) {}
  ~Surface() override { gone = true; }
  bool Rectangle(int x1, int y1, int x2, int y2) override {
    last = {x1, y1, x2, y2};
    return x2 > x1 && y2 > y1;
  }
  std::vector<int> last;
  bool& gone;
};

TEST(CDC, ASurfaceOfAHostIsDrawnOnAndDestroyedThroughTheBase) {
  bool gone = false;
  auto surface = std::make_unique<Surface>(gone);
  CDC& dc = *surface;
  EXPECT_TRUE(dc.Rectangle(1, 2, 3, 4));
  EXPECT_EQ(surface->last, (std::vector<int>{1, 2, 3, 4}));
  EXPECT_FALSE(dc.Rectangle(3, 4, 1, 2));
  std::unique_ptr<CObject> base = std::move(surface);
  base.reset();
  EXPECT_TRUE(gone);
}

}  // namespace
