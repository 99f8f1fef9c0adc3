#include "zelbase/units/UnitDefinition.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/config/SettingsTestHelp.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/units/CatalogueAnswer.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/units/CZelUnitCnv.h"

static void PrintTo(const CatalogueAnswer& unit, std::ostream* out) {
  *out << unit.key << ": " << unit.factor << ", " << unit.mnemonic << ", " << unit.name << ", " << unit.offset
       << (unit.result ? "" : " (false)");
}

namespace {

constexpr int kDepth = CZelUnitCnv::FormatDepth;
constexpr int kSpeed = CZelUnitCnv::FormatSpeed;

using Unit = CatalogueAnswer;

const Unit kUntouched;

Unit Of(const std::string& key, double factor, const std::string& mnemonic, const std::string& name, double offset, bool result = true) {
  return {key, name, factor, offset, mnemonic, result};
}

// What a catalogue with one depth unit "U" of that value answers to all three look-ups, which must agree.
Unit Read(const std::string& value) {
  UnitDefinition catalogue;
  catalogue.SetItem("Depth Units", "U", value);
  const Unit unit = DataAnswer(catalogue, kDepth, "U");
  EXPECT_EQ(FirstAnswer(catalogue, kDepth), unit);
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
  catalogue.SetItem("Depth Units", "V", value);
  Unit second = (FirstAnswer(catalogue, kDepth), NextAnswer(catalogue));
  if (second.name == second.key) second.name = unit.key;
  second.key = unit.key;
  EXPECT_EQ(second, unit);
  return unit;
}

constexpr const char* kText =
    "[Depth Units]\n"
    "Metre = 1.0, m, Metre, 0\n"
    "Foot = 0.3048, ft, International foot\n"
    "Fathom = 1.8288, fm\n"
    "\n"
    "[Speed Units]\n"
    "Knot = 0.5144444444444445, kn, Knot, 0\n"
    "\n"
    "[Weight Units]\n";

// --- Names of groups -----------------------------------------------------------------------------------------------------

TEST(UnitDefinition, GroupNamesFollowTheFormatCodes) {
  const std::map<int, std::string> names = {
      {2, "Distance Units"},  {3, "Speed Units"},         {4, "Depth Units"},         {5, "System Units"},       {6, "Volume Units"},
      {7, "Density Units"},   {8, "Velocity Units"},      {9, "Production Units"},    {12, "Delivery Units"},    {35, "Height Units"},
      {36, "Pressure Units"}, {37, "Power Units"},        {38, "Revolutions Units"},  {39, "Weight Units"},      {40, "Pitch Units"},
      {41, "Roll Units"},     {42, "Acceleration Units"}, {43, "Angular Rate Units"}, {48, "Temperature Units"}, {49, "Paper Units"},
      {50, "Force Units"}};
  const UnitDefinition catalogue;
  for (int code = -5; code <= 200; ++code) {
    std::string name = "untouched";
    const auto found = names.find(code);
    EXPECT_EQ(catalogue.GetGroupName(code, name), found != names.end()) << code;
    EXPECT_EQ(name, found == names.end() ? "untouched" : found->second) << code;
  }
  std::string name = "untouched";
  EXPECT_FALSE(catalogue.GetGroupName(std::numeric_limits<int>::min(), name));
  EXPECT_FALSE(catalogue.GetGroupName(std::numeric_limits<int>::max(), name));
  EXPECT_EQ(name, "untouched");
}

TEST(UnitDefinition, CodeFortySevenHasAKindButNoGroup) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, "[Angular Units]\nDegree = 1, x\n[No Units]\nNone = 1, x\n[Area Units]\nHectare = 100, ha\n");
  std::string name = "untouched";
  int count = -7;
  EXPECT_EQ(CZelUnitCnv::ConvertFMTtoUNIT(47), 19);
  EXPECT_FALSE(catalogue.GetGroupName(47, name));
  EXPECT_FALSE(catalogue.GetGroupNumItems(47, count));
  EXPECT_EQ(FirstAnswer(catalogue, 47), kUntouched);
  Unit none;
  none.key = "Degree";
  EXPECT_EQ(DataAnswer(catalogue, 47, "Degree"), none);
  EXPECT_EQ(name, "untouched");
  EXPECT_EQ(count, -7);
}

TEST(UnitDefinition, TheGroupsOfAnglesAreasAndNoUnitsCannotBeReached) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, "[Angular Units]\nDegree = 1, x\n[No Units]\nNone = 1, x\n[Area Units]\nHectare = 100, ha\n");
  std::set<std::string> reached;
  for (int code = -1000; code <= 1000; ++code) {
    std::string name;
    if (catalogue.GetGroupName(code, name)) reached.insert(name);
    int count = -7;
    EXPECT_FALSE(catalogue.GetGroupNumItems(code, count)) << code;
    EXPECT_EQ(count, -7);
    EXPECT_EQ(FirstAnswer(catalogue, code), kUntouched) << code;
  }
  std::set<std::string> expected(std::begin(unitsParamKeys), std::end(unitsParamKeys));
  for (const char* const hidden : {"No Units", "Angular Units", "Area Units"}) EXPECT_EQ(expected.erase(hidden), 1U);
  EXPECT_EQ(reached, expected);
}

// --- Counts --------------------------------------------------------------------------------------------------------------

TEST(UnitDefinition, AGroupTellsHowManyUnitsItHas) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  int count = -7;
  EXPECT_TRUE(catalogue.GetGroupNumItems(kDepth, count));
  EXPECT_EQ(count, 3);
  EXPECT_TRUE(catalogue.GetGroupNumItems(CZelUnitCnv::FormatWeight, count));
  EXPECT_EQ(count, 0);
  count = -7;
  EXPECT_FALSE(catalogue.GetGroupNumItems(CZelUnitCnv::FormatForce, count));
  EXPECT_FALSE(catalogue.GetGroupNumItems(1, count));
  EXPECT_EQ(count, -7);
}

TEST(UnitDefinition, UnitsThatCannotBeReadAreCounted) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, "[Depth Units]\na =\nb = x\nc = ,,,\n");
  int count = 0;
  EXPECT_TRUE(catalogue.GetGroupNumItems(kDepth, count));
  EXPECT_EQ(count, 3);
}

// --- Values --------------------------------------------------------------------------------------------------------------

TEST(UnitDefinition, AFullValueFillsEverything) {
  EXPECT_EQ(Read("0.3048, ft, International foot, 1.5"), Of("U", 0.3048, "ft", "International foot", 1.5));
  EXPECT_EQ(Read("0.3048,ft,International foot,1.5"), Of("U", 0.3048, "ft", "International foot", 1.5));
  EXPECT_EQ(Read(" \t 0.3048 \t , ft\t,  International  foot  , 1.5 "), Of("U", 0.3048, "ft", "International  foot", 1.5));
}

TEST(UnitDefinition, WithoutDisplayNameTheKeyIsTaken) { EXPECT_EQ(Read("0.3048, ft"), Of("U", 0.3048, "ft", "U", 0.0)); }

TEST(UnitDefinition, WithoutOffsetItIsZero) { EXPECT_EQ(Read("2, x, y"), Of("U", 2.0, "x", "y", 0.0)); }

TEST(UnitDefinition, WithoutMnemonicItIsFalseAndTheRestIsFilled) { EXPECT_EQ(Read("0.3048"), Of("U", 0.3048, "?", "U", 0.0, false)); }

TEST(UnitDefinition, AnEmptyMnemonicIsOne) { EXPECT_EQ(Read("1,"), Of("U", 1.0, "", "U", 0.0)); }

TEST(UnitDefinition, AnEmptyDisplayNameStaysEmpty) {
  EXPECT_EQ(Read("1, x, "), Of("U", 1.0, "x", "", 0.0));
  EXPECT_EQ(Read("1, x, , 4"), Of("U", 1.0, "x", "", 4.0));
}

TEST(UnitDefinition, AFactorThatIsNoNumberLeavesTheOutput) {
  EXPECT_EQ(Read("x, y, z, 4"), Of("U", -7.0, "y", "z", 4.0));
  EXPECT_EQ(Read(", y"), Of("U", -7.0, "y", "U", 0.0));
  EXPECT_EQ(Read("nan, y"), Of("U", -7.0, "y", "U", 0.0));
  EXPECT_EQ(Read("inf, y"), Of("U", -7.0, "y", "U", 0.0));
}

TEST(UnitDefinition, AnOffsetThatIsNoNumberIsZero) {
  EXPECT_EQ(Read("1, x, y, z"), Of("U", 1.0, "x", "y", 0.0));
  EXPECT_EQ(Read("1, x, y, "), Of("U", 1.0, "x", "y", 0.0));
}

TEST(UnitDefinition, OfANumberOnlyTheFrontHasToParse) {
  EXPECT_EQ(Read("12abc, x, y, -1.5e1z"), Of("U", 12.0, "x", "y", -15.0));
  EXPECT_EQ(Read("0x10, x"), Of("U", 0.0, "x", "U", 0.0));
  EXPECT_EQ(Read("1e999, x"), Of("U", std::numeric_limits<double>::infinity(), "x", "U", 0.0));
}

TEST(UnitDefinition, FurtherItemsAreIgnored) { EXPECT_EQ(Read("1, x, y, 2, 3, 4"), Of("U", 1.0, "x", "y", 2.0)); }

TEST(UnitDefinition, AnEmptyValueIsAUnitWithoutAnything) {
  EXPECT_EQ(Read(""), Of("U", -7.0, "?", "U", 0.0, false));
  EXPECT_EQ(Read("  "), Of("U", -7.0, "?", "U", 0.0, false));
}

TEST(UnitDefinition, TextsAreBytes) {
  EXPECT_EQ(Read("0.1, \xB0"
                 "C/m\xB3, Gr\xF6\xDF"
                 "e"),
            Of("U", 0.1,
               "\xB0"
               "C/m\xB3",
               "Gr\xF6\xDF"
               "e",
               0.0));
  EXPECT_EQ(Read(std::string("1, a\0b", 6)), Of("U", 1.0, std::string("a\0b", 3), "U", 0.0));
  EXPECT_EQ(Read("1, %s%n, %d"), Of("U", 1.0, "%s%n", "%d", 0.0));
}

// --- One look-up ---------------------------------------------------------------------------------------------------------

TEST(UnitDefinition, AKeyGivesItsUnit) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  EXPECT_EQ(DataAnswer(catalogue, kDepth, "Metre"), Of("Metre", 1.0, "m", "Metre", 0.0));
  EXPECT_EQ(DataAnswer(catalogue, kDepth, "Foot"), Of("Foot", 0.3048, "ft", "International foot", 0.0));
  EXPECT_EQ(DataAnswer(catalogue, kDepth, "Fathom"), Of("Fathom", 1.8288, "fm", "Fathom", 0.0));
}

TEST(UnitDefinition, AMissingKeyOrGroupTouchesNothing) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  for (const char* const key : {"Knot", "foot", "FOOT", "Foot ", ""}) {
    Unit none;
    none.key = key;
    EXPECT_EQ(DataAnswer(catalogue, kDepth, key), none) << key;
  }
  Unit none;
  none.key = "Foot";
  EXPECT_EQ(DataAnswer(catalogue, CZelUnitCnv::FormatForce, "Foot"), none);  // no such section
  EXPECT_EQ(DataAnswer(catalogue, CZelUnitCnv::FormatWeight, "Foot"), none);
  EXPECT_EQ(DataAnswer(catalogue, 0, "Foot"), none);
  EXPECT_EQ(DataAnswer(catalogue, -1, "Foot"), none);
}

TEST(UnitDefinition, TheKeyMayBeOneOfTheOutputs) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  double factor = 0;
  double offset = 0;
  std::string text = "Fathom";
  std::string other;
  EXPECT_TRUE(catalogue.GetGroupItemData(kDepth, text, other, factor, offset, text));
  EXPECT_EQ(other, "Fathom");
  EXPECT_EQ(text, "fm");
  text = "Foot";
  EXPECT_TRUE(catalogue.GetGroupItemData(kDepth, text, text, factor, offset, other));
  EXPECT_EQ(text, "International foot");
}

TEST(UnitDefinition, NothingThrowsAndTheStatusStays) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  std::string value;
  EXPECT_FALSE(catalogue.GetItem("Depth Units", "none", value));
  ASSERT_EQ(catalogue.GetErrorStatus(), FOBJ_KEY_NOT_FOUND);
  catalogue.ThrowExceptions(true);
  int count = 0;
  EXPECT_NO_THROW(EXPECT_FALSE(DataAnswer(catalogue, kDepth, "none").result));
  EXPECT_NO_THROW(EXPECT_FALSE(DataAnswer(catalogue, CZelUnitCnv::FormatForce, "none").result));
  EXPECT_NO_THROW(EXPECT_FALSE(FirstAnswer(catalogue, CZelUnitCnv::FormatForce).result));
  EXPECT_NO_THROW(EXPECT_TRUE(DataAnswer(catalogue, kDepth, "Foot").result));
  EXPECT_NO_THROW(EXPECT_TRUE(FirstAnswer(catalogue, kDepth).result));
  EXPECT_NO_THROW(EXPECT_FALSE(catalogue.GetGroupNumItems(CZelUnitCnv::FormatForce, count)));
  EXPECT_EQ(catalogue.GetErrorStatus(), FOBJ_KEY_NOT_FOUND);
}

// --- Walks ---------------------------------------------------------------------------------------------------------------

// All units of a group, by as many steps as it has units.
std::map<std::string, Unit> Walked(UnitDefinition& catalogue, int code) {
  int count = 0;
  catalogue.GetGroupNumItems(code, count);
  std::map<std::string, Unit> units;
  for (int i = 0; i < count; ++i) {
    const Unit unit = i == 0 ? FirstAnswer(catalogue, code) : NextAnswer(catalogue);
    EXPECT_TRUE(units.emplace(unit.key, unit).second) << unit.key;
  }
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
  return units;
}

TEST(UnitDefinition, AWalkGivesEachUnitOnce) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  const std::map<std::string, Unit> units = Walked(catalogue, kDepth);
  ASSERT_EQ(units.size(), 3U);
  for (const auto& [key, unit] : units) EXPECT_EQ(unit, DataAnswer(catalogue, kDepth, key));
}

TEST(UnitDefinition, BrokenUnitsDoNotStopAWalk) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, "[Depth Units]\nempty =\nMetre = 1.0, m\nfactor only = 3\nno factor = x, y\ncommas = ,,,,\nLast = 2, l, L, 3\n");
  const std::map<std::string, Unit> units = Walked(catalogue, kDepth);
  ASSERT_EQ(units.size(), 6U);
  EXPECT_EQ(units.at("empty"), Of("empty", -7.0, "?", "empty", 0.0, false));
  EXPECT_EQ(units.at("Metre"), Of("Metre", 1.0, "m", "Metre", 0.0));
  EXPECT_EQ(units.at("factor only"), Of("factor only", 3.0, "?", "factor only", 0.0, false));
  EXPECT_EQ(units.at("no factor"), Of("no factor", -7.0, "y", "no factor", 0.0));
  EXPECT_EQ(units.at("commas"), Of("commas", -7.0, "", "", 0.0));
  EXPECT_EQ(units.at("Last"), Of("Last", 2.0, "l", "L", 3.0));
}

TEST(UnitDefinition, AFirstUnitWithoutMnemonicIsFalseAndTheWalkGoesOn) {
  UnitDefinition catalogue;
  catalogue.SetItem("Depth Units", "a", "1");
  catalogue.SetItem("Depth Units", "b", "2");
  EXPECT_EQ(FirstAnswer(catalogue, kDepth), Of("a", 1.0, "?", "a", 0.0, false));
  EXPECT_EQ(NextAnswer(catalogue), Of("b", 2.0, "?", "b", 0.0, false));
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
}

TEST(UnitDefinition, WithoutAFirstThereIsNoNext) {
  UnitDefinition catalogue;
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
  ReadFrom(catalogue, kText);
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
}

TEST(UnitDefinition, AFirstCallThatFailsLeavesNoWalkRunning) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  for (const int code : {0, 47, -1, int{CZelUnitCnv::FormatForce}, int{CZelUnitCnv::FormatWeight}}) {
    EXPECT_TRUE(FirstAnswer(catalogue, kDepth).result);
    EXPECT_EQ(FirstAnswer(catalogue, code), kUntouched) << code;
    EXPECT_EQ(NextAnswer(catalogue), kUntouched) << code;
  }
}

TEST(UnitDefinition, AFirstCallBeginsAnew) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  const Unit first = FirstAnswer(catalogue, kDepth);
  NextAnswer(catalogue);
  EXPECT_EQ(FirstAnswer(catalogue, kDepth), first);
  EXPECT_EQ(FirstAnswer(catalogue, kSpeed).key, "Knot");
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
  EXPECT_EQ(Walked(catalogue, kDepth).size(), 3U);
}

TEST(UnitDefinition, LookUpsDoNotDisturbAWalk) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  std::set<std::string> keys = {FirstAnswer(catalogue, kDepth).key};
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(DataAnswer(catalogue, kSpeed, "Knot").result);
    EXPECT_FALSE(DataAnswer(catalogue, kDepth, "none").result);
    int count = 0;
    EXPECT_TRUE(catalogue.GetGroupNumItems(kSpeed, count));
    keys.insert(NextAnswer(catalogue).key);
  }
  EXPECT_EQ(keys, (std::set<std::string>{"Fathom", "Foot", "Metre"}));
}

// What a walk still gives after its first unit.
std::set<std::string> RestOf(UnitDefinition& catalogue) {
  std::set<std::string> keys;
  for (Unit unit = NextAnswer(catalogue); unit.result; unit = NextAnswer(catalogue)) keys.insert(unit.key);
  return keys;
}

std::set<std::string> AllBut(const std::string& key) {
  std::set<std::string> keys = {"Fathom", "Foot", "Metre"};
  keys.erase(key);
  return keys;
}

TEST(UnitDefinition, AWalkOutlivesWhatHappensToTheCatalogue) {
  using Change = void (*)(UnitDefinition&);
  const Change changes[] = {
      [](UnitDefinition& catalogue) { catalogue.FileClose(); },
      [](UnitDefinition& catalogue) { catalogue.MakeEmpty(); },
      [](UnitDefinition& catalogue) { catalogue.DeleteSection("Depth Units"); },
      [](UnitDefinition& catalogue) { catalogue.CreateSection("Depth Units", true); },
      [](UnitDefinition& catalogue) { catalogue.DeleteItem("Depth Units", "Foot", false); },
      [](UnitDefinition& catalogue) { catalogue.RenameSection("Depth Units", "Other"); },
      [](UnitDefinition& catalogue) { catalogue.SetItem("Depth Units", "New", "1, n"); },
      [](UnitDefinition& catalogue) { ReadFrom(catalogue, "[Depth Units]\nNew = 1, n\n"); },
      [](UnitDefinition& catalogue) { catalogue = *std::make_unique<UnitDefinition>(catalogue); },
      [](UnitDefinition& catalogue) {
        UnitDefinition& same = catalogue;
        catalogue = same;
      },
  };
  for (std::size_t i = 0; i < std::size(changes); ++i) {
    UnitDefinition catalogue;
    ReadFrom(catalogue, kText);
    const std::string first = FirstAnswer(catalogue, kDepth).key;
    changes[i](catalogue);
    EXPECT_EQ(RestOf(catalogue), AllBut(first)) << i;
  }
}

TEST(UnitDefinition, AWalkOutlivesOpeningAnotherFile) {
  const TemporaryFolder folder;
  const std::string one = folder.Write("Units.uni", kText);
  const std::string two = folder.Write("Other.uni", "[Depth Units]\nCable = 185.2, cbl\n");
  constexpr unsigned int kFlags = CFile::modeRead | CFile::shareDenyWrite;
  UnitDefinition catalogue;
  ASSERT_TRUE(catalogue.FileOpen(one, kFlags));
  const std::string first = FirstAnswer(catalogue, kDepth).key;
  ASSERT_TRUE(catalogue.FileOpen(two, kFlags));
  EXPECT_EQ(RestOf(catalogue), AllBut(first));
  EXPECT_EQ(FirstAnswer(catalogue, kDepth), Of("Cable", 185.2, "cbl", "Cable", 0.0));
  EXPECT_EQ(NextAnswer(catalogue), kUntouched);
}

TEST(UnitDefinition, ACopyGoesOnFromTheSamePlaceOnItsOwn) {
  auto catalogue = std::make_unique<UnitDefinition>();
  ReadFrom(*catalogue, kText);
  const std::string first = FirstAnswer(*catalogue, kDepth).key;
  UnitDefinition copy(*catalogue);
  UnitDefinition assigned;
  assigned.SetItem("Speed Units", "x", "1, x");
  FirstAnswer(assigned, kSpeed);
  assigned = *catalogue;
  EXPECT_EQ(RestOf(*catalogue), AllBut(first));
  catalogue.reset();
  EXPECT_EQ(RestOf(copy), AllBut(first));
  EXPECT_EQ(RestOf(assigned), AllBut(first));
  EXPECT_EQ(DataAnswer(copy, kDepth, "Fathom"), Of("Fathom", 1.8288, "fm", "Fathom", 0.0));
  EXPECT_FALSE(assigned.HasSection("Speed Units") && assigned.HasKey("Speed Units", "x"));
}

TEST(UnitDefinition, SelfAssignmentEmptiesTheCatalogue) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  UnitDefinition& same = catalogue;
  catalogue = same;
  EXPECT_EQ(catalogue.GetNumSections(), 0);
  EXPECT_EQ(FirstAnswer(catalogue, kDepth), kUntouched);
}

TEST(UnitDefinition, TheUnitsOfAWalkGoStraightIntoTheTable) {
  UnitDefinition catalogue;
  ReadFrom(catalogue, kText);
  CZelUnitCnv units;
  const Unit unit = DataAnswer(catalogue, kDepth, "Fathom");
  EXPECT_TRUE(units.SetUnit(CZelUnitCnv::ConvertFMTtoUNIT(kDepth), unit.factor, unit.offset, unit.mnemonic, unit.key, unit.name));
  EXPECT_NEAR(units.ConvertUnit(CZelUnitCnv::Depth, 1.0), 0.546806649, 1e-9);
}

// --- The class -----------------------------------------------------------------------------------------------------------

TEST(UnitDefinition, IsAFileObjectAndDiesAsOne) {
  static_assert(std::is_base_of_v<FileObject, UnitDefinition>);
  static_assert(std::has_virtual_destructor_v<UnitDefinition>);
  std::unique_ptr<FileObject> base = std::make_unique<UnitDefinition>();
  EXPECT_TRUE(ReadFrom(*base, kText));
  EXPECT_EQ(base->GetNumItems("Depth Units"), 3);
  auto& catalogue = dynamic_cast<UnitDefinition&>(*base);
  EXPECT_TRUE(FirstAnswer(catalogue, kDepth).result);  // a walk under way is freed with it
}

TEST(UnitDefinition, AValueWithAMillionCommasIsRead) {
  UnitDefinition catalogue;
  catalogue.SetItem("Depth Units", "U", "1, x, y, 2" + std::string(1000000, ','));
  EXPECT_EQ(DataAnswer(catalogue, kDepth, "U"), Of("U", 1.0, "x", "y", 2.0));
}

TEST(UnitDefinition, SeveralThreadsLookUpAtOnce) {
  UnitDefinition shared;
  ReadFrom(shared, kText);
  std::vector<std::thread> threads;
  std::vector<int> right(4, 0);
  for (std::size_t t = 0; t < right.size(); ++t) {
    threads.emplace_back([&catalogue = std::as_const(shared), &mine = right[t]] {
      for (int i = 0; i < 200; ++i) {
        int count = 0;
        std::string name;
        mine += DataAnswer(catalogue, kDepth, "Foot") == Of("Foot", 0.3048, "ft", "International foot", 0.0) &&
                !DataAnswer(catalogue, kDepth, "none").result && catalogue.GetGroupNumItems(kDepth, count) && count == 3 &&
                catalogue.GetGroupName(kDepth, name);
      }
      UnitDefinition own(catalogue);
      mine += static_cast<int>(Walked(own, kDepth).size());
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right, std::vector<int>(4, 203));
}

}  // namespace
