#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <utility>

#include "tests/geodesy/RegistryTests.h"

namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(ZelGeoDatabaseBaseList, GeodesyRegistry, DatabaseRegistry);

// A database that is asked by a function of the test's own.
class AskedDatabase : public DatabaseRegistry::Object {
 public:
  AskedDatabase(std::function<bool()> isReady, int* destroyed) : Object("asked", destroyed), m_isReady(std::move(isReady)) {}
  bool IsReady() override { return m_isReady(); }

 private:
  std::function<bool()> m_isReady;
};

class AskedCreator : public GeoDatabaseICreator {
 public:
  AskedCreator(std::function<bool()> isReady, int* objectsDestroyed)
      : m_isReady(std::move(isReady)), m_objectsDestroyed(objectsDestroyed) {}
  ZelGeoDatabaseBase* Create() override { return new AskedDatabase(m_isReady, m_objectsDestroyed); }

 private:
  std::function<bool()> m_isReady;
  int* m_objectsDestroyed;
};

class Readiness : public testing::Test {
 protected:
  void Register(std::function<bool()> isReady) { m_list.RegisterGeoDatabase("a", new AskedCreator(std::move(isReady), &m_destroyed)); }
  ZelGeoDatabaseBaseList m_list;
  int m_destroyed = 0;  // databases
};

TEST_F(Readiness, ADatabaseThatIsReadyIsGiven) {
  Register([] { return true; });
  const std::unique_ptr<ZelGeoDatabaseBase> database(m_list.Create("a"));
  EXPECT_NE(database, nullptr);
  EXPECT_EQ(m_destroyed, 0);
}

TEST_F(Readiness, ADatabaseThatIsNotReadyIsDestroyedAndGivesNull) {
  Register([] { return false; });
  EXPECT_EQ(m_list.Create("a"), nullptr);
  EXPECT_EQ(m_destroyed, 1);
}

TEST_F(Readiness, IsAskedOnceForEachDatabaseAndAnewEachTime) {
  int asked = 0;
  Register([&asked] { return ++asked % 2 == 0; });
  EXPECT_EQ(m_list.Create("a"), nullptr);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(NameOf(m_list.Create("a")), "asked");
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(m_list.Create("a"), nullptr);
  EXPECT_EQ(asked, 3);
  EXPECT_EQ(m_destroyed, 3);
}

TEST_F(Readiness, AnUnreadyDatabaseLeavesTheTypeRegistered) {
  Register([] { return false; });
  EXPECT_EQ(m_list.Create("a"), nullptr);
  std::vector<std::string> types;
  EXPECT_EQ(m_list.GetGeoDatabaseTypes(types), 1);
}

TEST_F(Readiness, WhatADatabaseThrowsWhenAskedPassesAndTheDatabaseIsDestroyed) {
  Register([]() -> bool { throw std::runtime_error("the file broke off"); });
  EXPECT_THROW(m_list.Create("a"), std::runtime_error);
  EXPECT_EQ(m_destroyed, 1);
}

TEST_F(Readiness, ADatabaseMayTakeItsTypeOutWhenAsked) {
  Register([this] { return m_list.UnRegisterGeoDatabase("a"); });
  EXPECT_EQ(NameOf(m_list.Create("a")), "asked");
  EXPECT_EQ(m_list.Create("a"), nullptr);
}

}  // namespace
