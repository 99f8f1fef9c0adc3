#include "zelbase/geodesy/ZelGeoCoordSysList.h"

#include <gtest/gtest.h>

#include "tests/geodesy/RegistryTests.h"

namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(ZelGeoCoordSysList, GeodesyRegistry, CoordSysRegistry);

// Answers its first operation, where a database says whether it is ready, with a count.
class Asked : public CoordSysRegistry::Object {
 public:
  explicit Asked(int* asked) : Object("asked", nullptr), m_asked(asked) {}
  bool Operation1() override {
    ++*m_asked;
    return false;
  }

 private:
  int* m_asked;
};

class AskedCreator : public ZelCoordSysICreator {
 public:
  explicit AskedCreator(int* asked) : m_asked(asked) {}
  ZelGeoCoordSysBase* Create() override { return new Asked(m_asked); }

 private:
  int* m_asked;
};

TEST(ZelGeoCoordSysList, DoesNotAskWhetherASystemIsReady) {
  int asked = 0;
  ZelGeoCoordSysList list;
  list.RegisterGeoCoordSys("a", new AskedCreator(&asked));
  EXPECT_EQ(NameOf(list.Create("a")), "asked");
  EXPECT_EQ(asked, 0);
}

}  // namespace
