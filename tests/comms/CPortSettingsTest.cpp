#include "zelbase/comms/CPortSettings.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace {

class Counted : public CPortObject {
 public:
  explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
  ~Counted() override { --m_alive; }

 private:
  int& m_alive;
};

std::string SpeedOf(const CPortSettings& settings) {
  std::string speed;
  settings.section.GetItem("Speed", speed);
  return speed;
}

TEST(CPortSettings, BeginsWithoutItemsAndObjects) {
  const CPortSettings settings;
  EXPECT_EQ(settings.section.Name(), "");
  EXPECT_FALSE(settings.section.HasKey("Speed"));
  EXPECT_EQ(settings.block, nullptr);
  EXPECT_EQ(settings.object0, nullptr);
  EXPECT_EQ(settings.object1, nullptr);
  EXPECT_EQ(settings.object2, nullptr);
}

TEST(CPortSettings, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<CPortSettings>); }

TEST(CPortSettings, CopiesHaveTheSectionAndShareTheObjects) {
  int alive = 0;
  auto settings = std::make_unique<CPortSettings>();
  settings->section.SetItem("Speed", 9600);
  settings->block = std::make_shared<int>(5);
  settings->object0 = std::make_shared<Counted>(alive);
  settings->object1 = std::make_shared<Counted>(alive);
  settings->object2 = std::make_shared<Counted>(alive);
  CPortSettings copied(*settings);
  CPortSettings assigned;
  assigned = *settings;
  for (const CPortSettings* copy : {&copied, &assigned}) {
    EXPECT_EQ(SpeedOf(*copy), "9600");
    EXPECT_EQ(copy->block, settings->block);
    EXPECT_EQ(copy->object0, settings->object0);
    EXPECT_EQ(copy->object1, settings->object1);
    EXPECT_EQ(copy->object2, settings->object2);
  }
  settings->section.SetItem("Speed", 4800);
  EXPECT_EQ(SpeedOf(copied), "9600");
  settings.reset();
  EXPECT_EQ(alive, 3);
  copied = CPortSettings();
  EXPECT_EQ(alive, 3);
  assigned = CPortSettings();
  EXPECT_EQ(alive, 0);
}

TEST(CPortSettings, AssigningToItselfDoesNothing) {
  int alive = 0;
  CPortSettings settings;
  settings.section.SetItem("Speed", 9600);
  settings.object1 = std::make_shared<Counted>(alive);
  const CPortSettings& self = settings;
  settings = self;
  EXPECT_EQ(SpeedOf(settings), "9600");
  EXPECT_EQ(alive, 1);
  EXPECT_NE(settings.object1, nullptr);
}

}  // namespace
