#include "zelbase/platform/CObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/CRuntimeClass.h"
#include "zelbase/platform/CSharedFile.h"
#include "zelbase/platform/CWinApp.h"

namespace {

struct Tracked : CObject {
  explicit Tracked(bool& flag) : destroyed(flag) {}
  ~Tracked() override { destroyed = true; }
  bool& destroyed;
};

TEST(CObject, IsDestroyedThroughItsBase) {
  bool destroyed = false;
  std::unique_ptr<CObject> object = std::make_unique<Tracked>(destroyed);
  object.reset();
  EXPECT_TRUE(destroyed);
}

TEST(CObject, IsNotMadeByItself) { EXPECT_FALSE(std::is_default_constructible_v<CObject>); }

TEST(CObject, SerialisesNothingByItself) {
  struct Plain : CObject {
  } plain;
  CSharedFile file;
  CArchive storing(&file, CArchive::store);
  plain.Serialize(storing);
  storing.Close();
  EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CObject, IsOfItsOwnClassOfWhichNoneIsMadeByName) {
  struct Plain : CObject {
  } plain;
  ASSERT_NE(plain.GetRuntimeClass(), nullptr);
  EXPECT_STREQ(plain.GetRuntimeClass()->m_lpszClassName, "CObject");
  EXPECT_EQ(plain.GetRuntimeClass()->CreateObject(), nullptr);
}

TEST(CWinApp, IsAnObjectThatAHostDerivesFrom) {
  struct Application : CWinApp {
    int value = 7;
  } application;
  CObject& object = application;
  EXPECT_EQ(dynamic_cast<Application&>(object).value, 7);
}

}  // namespace
