#include "zelbase/geodesy/GeoidModel.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "tests/geodesy/OperationSlots.h"
#include "zelbase/geodesy/SpareGeoCoordSys.h"

namespace {

// A model that shows its fields.
class OpenModel : public GeoidModel {
 public:
  using GeoidModel::m_coordSystem;
  using GeoidModel::m_fileName;
  using GeoidModel::m_linearUnit;
  bool IsReady() override { return false; }
};

// A system that writes a unit, or leaves it, and notes what it was given.
class UnitSystem : public SpareGeoCoordSys {
 public:
  explicit UnitSystem(bool result = true) : m_result(result), m_writes(false) {}
  UnitSystem(double unit, bool result) : m_result(result), m_writes(true), m_unit(unit) {}
  bool GetLinearUnit(double& factor) override {
    ++calls;
    given = factor;
    address = &factor;
    if (m_writes) factor = m_unit;
    return m_result;
  }

  int calls = 0;
  double given = -1.0;
  const double* address = nullptr;

 private:
  bool m_result;
  bool m_writes;
  double m_unit = 0.0;
};

// The unit of a new model after Init with a system that writes this one.
double UnitAfter(double unit, bool result = true) {
  OpenModel model;
  UnitSystem system(unit, result);
  EXPECT_TRUE(model.Init(&system));
  EXPECT_EQ(system.calls, 1);
  return model.m_linearUnit;
}

bool IsSameBits(double left, double right) { return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right); }

TEST(GeoidModel, StartsWithoutFileAndSystemAndWithAUnitOfOne) {
  const OpenModel model;
  EXPECT_EQ(model.m_fileName, "");
  EXPECT_EQ(model.m_linearUnit, 1.0);
  EXPECT_EQ(model.m_coordSystem, nullptr);
}

TEST(GeoidModel, InitStoresTheSystemAndItsUnit) {
  OpenModel model;
  UnitSystem system(0.3048, true);
  EXPECT_TRUE(model.Init(&system));
  EXPECT_EQ(model.m_coordSystem, &system);
  EXPECT_EQ(model.m_linearUnit, 0.3048);
}

TEST(GeoidModel, InitKeepsEveryUnitBitForBitButZero) {
  for (const double unit : {1.0, 0.3048, 12.0 / 39.37, -1.0, 1e300, 1e-300, std::numeric_limits<double>::denorm_min(),
                            -std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(IsSameBits(UnitAfter(unit), unit)) << unit;
  }
}

TEST(GeoidModel, AUnitOfZeroOfEitherSignBecomesOne) {
  EXPECT_TRUE(IsSameBits(UnitAfter(0.0), 1.0));
  EXPECT_TRUE(IsSameBits(UnitAfter(-0.0), 1.0));
}

// Kept: what the system answers is not looked at.
TEST(GeoidModel, TheAnswerOfTheSystemIsIgnored) {
  EXPECT_EQ(UnitAfter(0.3048, false), 0.3048);
  EXPECT_EQ(UnitAfter(0.0, false), 1.0);
}

// Kept: the field itself goes in, so that a system sees the present unit and may leave it.
TEST(GeoidModel, TheSystemIsGivenTheFieldItself) {
  OpenModel model;
  model.m_linearUnit = 0.25;
  for (const bool result : {true, false}) {
    UnitSystem system(result);
    EXPECT_TRUE(model.Init(&system));
    EXPECT_EQ(system.given, 0.25);
    EXPECT_EQ(system.address, &model.m_linearUnit);
    EXPECT_EQ(model.m_linearUnit, 0.25);
  }
}

TEST(GeoidModel, TheSystemIsStoredBeforeItIsAsked) {
  class Asking : public SpareGeoCoordSys {
   public:
    bool GetLinearUnit(double&) override {
      seen = model->m_coordSystem;
      return true;
    }
    OpenModel* model = nullptr;
    const ZelGeoCoordSysBase* seen = nullptr;
  } system;
  OpenModel model;
  system.model = &model;
  model.Init(&system);
  EXPECT_EQ(system.seen, &system);
}

// Kept: no system is no failure.
TEST(GeoidModel, InitWithoutASystemIsTrueAndKeepsTheUnit) {
  OpenModel model;
  EXPECT_TRUE(model.Init(nullptr));
  EXPECT_EQ(model.m_linearUnit, 1.0);
  UnitSystem system(0.3048, true);
  EXPECT_TRUE(model.Init(&system));
  EXPECT_TRUE(model.Init(nullptr));
  EXPECT_EQ(model.m_coordSystem, nullptr);
  EXPECT_EQ(model.m_linearUnit, 0.3048);
}

TEST(GeoidModel, InitWithoutASystemMakesAUnitOfZeroOne) {
  OpenModel model;
  model.m_linearUnit = -0.0;
  EXPECT_TRUE(model.Init(nullptr));
  EXPECT_TRUE(IsSameBits(model.m_linearUnit, 1.0));
}

TEST(GeoidModel, ASecondSystemTakesThePlaceOfTheFirst) {
  OpenModel model;
  UnitSystem first(0.3048, true);
  UnitSystem second(0.5, true);
  model.Init(&first);
  model.Init(&second);
  EXPECT_EQ(model.m_coordSystem, &second);
  EXPECT_EQ(model.m_linearUnit, 0.5);
  EXPECT_EQ(first.calls, 1);
}

TEST(GeoidModel, WhatTheSystemThrowsPasses) {
  class Throwing : public SpareGeoCoordSys {
   public:
    bool GetLinearUnit(double&) override { throw std::runtime_error("no unit"); }
  } system;
  OpenModel model;
  model.m_linearUnit = 0.25;
  EXPECT_THROW(model.Init(&system), std::runtime_error);
  EXPECT_EQ(model.m_linearUnit, 0.25);
}

TEST(GeoidModel, TheCalculationsOfTheBaseAreFalseAndLeaveTheirOutputs) {
  OpenModel model;
  for (const bool flag : {false, true}) {
    double first = 7.0;
    double second = 8.0;
    EXPECT_FALSE(model.Calculate(1.0, 2.0, first, second, flag));
    EXPECT_FALSE(model.CalculateLocalEllipsCorrection(1.0, 2.0, first, second, flag));
    EXPECT_EQ(first, 7.0);
    EXPECT_EQ(second, 8.0);
  }
  double result = 9.0;
  EXPECT_FALSE(model.Calculate(1.0, 2.0, 3.0, 4.0, result));
  EXPECT_EQ(result, 9.0);
}

TEST(GeoidModel, SetFileNameStoresTheNameAsItIs) {
  OpenModel model;
  for (const std::string& name : {std::string("C:\\geoid\\a file.bin"), std::string(), std::string("a\0b", 3)}) {
    model.SetFileName(name);
    EXPECT_EQ(model.m_fileName, name);
  }
}

TEST(GeoidModel, CopiesShareTheSystem) {
  OpenModel model;
  UnitSystem system(0.5, true);
  model.Init(&system);
  model.SetFileName("a");
  const OpenModel copy(model);
  OpenModel assigned;
  assigned = copy;
  EXPECT_EQ(assigned.m_coordSystem, &system);
  EXPECT_EQ(assigned.m_linearUnit, 0.5);
  EXPECT_EQ(assigned.m_fileName, "a");
}

TEST(GeoidModel, ItsOperationsHaveTheirPlaces) {
  EXPECT_EQ(SlotOf(&GeoidModel::Init), 1);
  EXPECT_EQ(SlotOf<bool (GeoidModel::*)(double, double, double&, double&, bool)>(&GeoidModel::Calculate), 2);
  EXPECT_EQ(SlotOf<bool (GeoidModel::*)(double, double, double, double, double&)>(&GeoidModel::Calculate), 3);
  EXPECT_EQ(SlotOf(&GeoidModel::CalculateLocalEllipsCorrection), 4);
  EXPECT_EQ(SlotOf(&GeoidModel::SetFileName), 5);
  EXPECT_EQ(SlotOf(&GeoidModel::IsReady), 6);
  EXPECT_EQ(SlotOf(&OneMore<GeoidModel>::TheNext), 7);
}

TEST(GeoidModel, ItsFieldsStandInTheirOrder) {
  const OpenModel model;
  const void* const fileName = &model.m_fileName;
  const void* const linearUnit = &model.m_linearUnit;
  const void* const coordSystem = &model.m_coordSystem;
  EXPECT_LT(fileName, linearUnit);
  EXPECT_LT(linearUnit, coordSystem);
  static_assert(std::is_abstract_v<GeoidModel>);
}

}  // namespace
