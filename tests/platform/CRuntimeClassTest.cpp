#include "zelbase/platform/CRuntimeClass.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "zelbase/platform/CObject.h"

namespace {

struct Probe : CObject {
  static CObject* Make() { return new Probe; }
};

TEST(CRuntimeClass, IsFoundByItsNameAsLongAsItLives) {
  EXPECT_EQ(CRuntimeClass::FromName("a probe"), nullptr);
  {
    CRuntimeClass probe("a probe", Probe::Make);
    EXPECT_STREQ(probe.m_lpszClassName, "a probe");
    EXPECT_EQ(CRuntimeClass::FromName("a probe"), &probe);
    EXPECT_EQ(CRuntimeClass::FromName("A probe"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("a prob"), nullptr);
  }
  EXPECT_EQ(CRuntimeClass::FromName("a probe"), nullptr);
}

TEST(CRuntimeClass, MakesObjectsByName) {
  const CRuntimeClass probe("a probe", Probe::Make);
  const std::unique_ptr<CObject> first(CRuntimeClass::CreateObject("a probe"));
  const std::unique_ptr<CObject> second(probe.CreateObject());
  EXPECT_NE(dynamic_cast<Probe*>(first.get()), nullptr);
  EXPECT_NE(dynamic_cast<Probe*>(second.get()), nullptr);
  EXPECT_NE(first, second);
}

TEST(CRuntimeClass, NoObjectForAnUnknownNameANullNameOrANullMaker) {
  const CRuntimeClass abstract("an abstract class", nullptr);
  EXPECT_EQ(CRuntimeClass::CreateObject("no such class"), nullptr);
  EXPECT_EQ(CRuntimeClass::CreateObject(nullptr), nullptr);
  EXPECT_EQ(CRuntimeClass::CreateObject("an abstract class"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName(nullptr), nullptr);
  const CRuntimeClass unnamed(nullptr, Probe::Make);
  EXPECT_STREQ(unnamed.m_lpszClassName, "");
}

TEST(CRuntimeClass, OfTwoOfOneNameTheLaterIsFound) {
  CRuntimeClass first("a probe", nullptr);
  {
    CRuntimeClass second("a probe", Probe::Make);
    EXPECT_EQ(CRuntimeClass::FromName("a probe"), &second);
  }
  EXPECT_EQ(CRuntimeClass::FromName("a probe"), &first);
}

TEST(CRuntimeClass, TheyLeaveTheListInAnyOrder) {
  auto first = std::make_unique<CRuntimeClass>("first", Probe::Make);
  auto second = std::make_unique<CRuntimeClass>("second", Probe::Make);
  auto third = std::make_unique<CRuntimeClass>("third", Probe::Make);
  second.reset();
  EXPECT_EQ(CRuntimeClass::FromName("first"), first.get());
  EXPECT_EQ(CRuntimeClass::FromName("second"), nullptr);
  first.reset();
  EXPECT_EQ(CRuntimeClass::FromName("third"), third.get());
  third.reset();
  EXPECT_EQ(CRuntimeClass::FromName("third"), nullptr);
}

TEST(CRuntimeClass, ThreadsEnterLookUpAndLeave) {
  const CRuntimeClass stays("stays", Probe::Make);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([i] {
      const std::string name = "of thread " + std::to_string(i);
      for (int round = 0; round < 500; ++round) {
        const CRuntimeClass own(name.c_str(), Probe::Make);
        EXPECT_EQ(CRuntimeClass::FromName(name.c_str()), &own);
        const std::unique_ptr<CObject> made(CRuntimeClass::CreateObject("stays"));
        EXPECT_NE(made, nullptr);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_FALSE(std::is_copy_constructible_v<CRuntimeClass>);
}

}  // namespace
