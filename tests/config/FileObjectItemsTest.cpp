// Items: setting, finding, converting, deleting.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "tests/config/SettingsTestHelp.h"
#include "tests/support/Printed.h"

namespace {

const std::string kSection = "A";
const std::string kKey = "k";

FileObject With(const std::string& value) {
  FileObject settings;
  settings.SetItem(kSection, kKey, value, true);
  return settings;
}

// Reads `text` as T; `failed` when that fails, and then checks that nothing was written.
template <class T>
T Read(const std::string& text, T failed) {
  const FileObject settings = With(text);
  T value = failed;
  const bool found = settings.GetItem(kSection, kKey, value);
  EXPECT_EQ(settings.GetErrorStatus(), found ? 0 : 6) << text;
  return value;
}

template <class T>
std::string Stored(T value) {
  FileObject settings;
  EXPECT_TRUE(settings.SetItem(kSection, kKey, value, true));
  return TextOf(settings, kSection, kKey);
}

TEST(FileObjectItems, AnEmptyValueIsFoundByGetItemAndNotByHasKey) {
  FileObject settings;
  ReadFrom(settings, "[A]\nk=\n");
  EXPECT_FALSE(settings.HasKey("A", "k"));
  std::string text = "old";
  EXPECT_TRUE(settings.GetItem("A", "k", text));
  EXPECT_EQ(text, "");
  int number = 7;
  EXPECT_FALSE(settings.GetItem("A", "k", number));
  EXPECT_EQ(settings.GetErrorStatus(), 6);
  EXPECT_EQ(number, 7);
}

TEST(FileObjectItems, IntReadsAnyHexadecimalMark) {
  EXPECT_EQ(Read<int>("0x1F", -9), 31);
  EXPECT_EQ(Read<int>("0X1f", -9), 31);
  EXPECT_EQ(Read<int>("1F", -9), 1);
  EXPECT_EQ(Read<int>("10 0x", -9), 16);
  EXPECT_EQ(Read<int>("0xFFFFFFFF", -9), -1);
  EXPECT_EQ(Read<int>("ff0x", -9), 0xFF0);
  EXPECT_EQ(Read<int>("x0", -9), -9);
  EXPECT_EQ(Read<int>("0", -9), 0);
  EXPECT_EQ(Read<int>("00", -9), 0);
}

TEST(FileObjectItems, OnlyTheFrontHasToParse) {
  EXPECT_EQ(Read<int>("12abc", -9), 12);
  EXPECT_EQ(Read<int>(" \t-12", -9), -12);
  EXPECT_EQ(Read<int>("+5", -9), 5);
  EXPECT_EQ(Read<int>("1.9", -9), 1);
  EXPECT_EQ(Read<int>("abc", -9), -9);
  EXPECT_EQ(Read<int>("-", -9), -9);
  EXPECT_EQ(Read<double>("2.5e1x", -9), 25.0);
  EXPECT_EQ(Read<double>("1,5", -9), 1.0);
  EXPECT_EQ(Read<float>("0.1", -9), 0.1F);
  EXPECT_EQ(Read<double>("nan", -9), -9);
  EXPECT_EQ(Read<double>("inf", -9), -9);
}

TEST(FileObjectItems, OneDigitIsANumberOfEveryType) {
  FileObject settings;
  settings.SetItem("A", "k", "7", true);
  const auto reads = [&settings](auto value) { return settings.GetItem("A", "k", value) && value == 7; };
  EXPECT_TRUE(reads(0));
  EXPECT_TRUE(reads(0u));
  EXPECT_TRUE(reads(0L));
  EXPECT_TRUE(reads(0LL));
  EXPECT_TRUE(reads(0ULL));
  EXPECT_TRUE(reads(0.0f));
  EXPECT_TRUE(reads(0.0));
}

TEST(FileObjectItems, WholeNumbersBeyondTheirTypeWrap) {
  EXPECT_EQ(Read<int>("4294967297", -9), 1);
  EXPECT_EQ(Read<unsigned int>("-1", 9U), 4294967295U);
  EXPECT_EQ(Read<unsigned int>("0xfFfFfFfF", 9U), 4294967295U);
  EXPECT_EQ(Read<long long>("9223372036854775807", -9), std::numeric_limits<long long>::max());
  EXPECT_EQ(Read<long long>("-9223372036854775808", -9), std::numeric_limits<long long>::min());
  EXPECT_EQ(Read<unsigned long long>("18446744073709551615", 9U), std::numeric_limits<unsigned long long>::max());
  EXPECT_EQ(Read<unsigned long long>("-1", 9U), std::numeric_limits<unsigned long long>::max());
}

TEST(FileObjectItems, ALongReads32BitsWithSignAndIsWrittenWhole) {
  EXPECT_EQ(Read<long>("0xFFFFFFFF", -9L), -1L);
  EXPECT_EQ(Read<long>("4294967295", -9L), -1L);
  EXPECT_EQ(Read<long>("2147483647", -9L), 2147483647L);
  EXPECT_EQ(Read<long>("words", -9L), -9L);
  EXPECT_EQ(Read<long>("", -9L), -9L);
  EXPECT_EQ(Stored(4294967296L), "4294967296");
  EXPECT_EQ(Stored(-5L), "-5");
}

TEST(FileObjectItems, BoolAnd64BitNumbersKnowNoHexadecimal) {
  EXPECT_FALSE(Read<bool>("0x1", true));
  EXPECT_TRUE(Read<bool>("2", false));
  EXPECT_TRUE(Read<bool>("-1", false));
  EXPECT_FALSE(Read<bool>("0", true));
  EXPECT_TRUE(Read<bool>("true", true));  // does not parse, so it is left
  EXPECT_EQ(Read<long long>("0x1F", -9LL), 0);
  EXPECT_EQ(Read<unsigned long long>("0x1F", 9ULL), 0U);
}

TEST(FileObjectItems, Colours) {
  EXPECT_EQ(Read<unsigned long>("255, 0, 0", 9UL), 255U);
  EXPECT_EQ(Read<unsigned long>("0, 0, 255", 9UL), 16711680U);
  EXPECT_EQ(Read<unsigned long>("300, 0, 0", 9UL), 300U);
  EXPECT_EQ(Read<unsigned long>("1,2,3", 9UL), 0x030201U);
  EXPECT_EQ(Read<unsigned long>("1,  2, \t3x", 9UL), 0x030201U);
  EXPECT_EQ(Read<unsigned long>(" 1, 2, 3", 9UL), 0x030201U);
  EXPECT_EQ(Read<unsigned long>("-1, 0, 0", 9UL), 0xFFFFFFFFU);
  EXPECT_EQ(Read<unsigned long>("0, 0, 65536", 9UL), 0U);
  EXPECT_EQ(Read<unsigned long>("1 ,2,3", 9UL), 9U);
  EXPECT_EQ(Read<unsigned long>("1,2", 9UL), 9U);
  EXPECT_EQ(Read<unsigned long>("1,2,", 9UL), 9U);
  EXPECT_EQ(Read<unsigned long>("1,2 ,3", 9UL), 9U);
  EXPECT_EQ(Read<unsigned long>("1;2;3", 9UL), 9U);
  EXPECT_EQ(Read<unsigned long>("", 9UL), 9U);
  EXPECT_EQ(Stored(0x030201UL), "1, 2, 3");
  EXPECT_EQ(Stored(0xFFFFFFFFFF0000FFUL), "255, 0, 0");
}

TEST(FileObjectItems, TypedWriting) {
  EXPECT_EQ(Stored(true), "1");
  EXPECT_EQ(Stored(false), "0");
  EXPECT_EQ(Stored(-12), "-12");
  EXPECT_EQ(Stored(4294967295U), "4294967295");
  EXPECT_EQ(Stored(std::numeric_limits<long long>::min()), "-9223372036854775808");
  EXPECT_EQ(Stored(std::numeric_limits<unsigned long long>::max()), "18446744073709551615");
  EXPECT_EQ(Stored("text"), "text");
  EXPECT_EQ(Stored(std::string("a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(Stored(static_cast<const char*>(nullptr)), "");
  char writable[] = "w";
  EXPECT_EQ(Stored(static_cast<char*>(writable)), "w");
  EXPECT_EQ(Stored(2.5F), "2.5");
}

TEST(FileObjectItems, ALiteralIsATextAndNotABool) {
  FileObject settings;
  EXPECT_TRUE(settings.SetItem("A", "k", "no", true));
  EXPECT_EQ(TextOf(settings, "A", "k"), "no");
}

TEST(FileObjectItems, DoublesHaveTheLeastDecimals) {
  EXPECT_EQ(Stored(2.5), "2.5");
  EXPECT_EQ(Stored(0.5), "0.5");
  EXPECT_EQ(Stored(1234.0), "1234");
  EXPECT_EQ(Stored(-0.125), "-0.125");
  EXPECT_EQ(Stored(0.1 + 0.2), "0.3");
  EXPECT_EQ(Stored(1e15), "1000000000000000");
}

TEST(FileObjectItems, AVerySmallDoubleIsStoredAsZerosAndLost) { EXPECT_EQ(Stored(1e-20), "0.0000000000000000"); }

TEST(FileObjectItems, ADoubleThatIsNotFiniteDoesNotReadBack) {
  EXPECT_EQ(Stored(std::nan("")), "nan");
  EXPECT_EQ(Stored(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(Stored(-std::numeric_limits<double>::infinity()), "-inf");
  for (const char* text : {"nan", "inf", "-inf"}) EXPECT_EQ(Read<double>(text, 7.0), 7.0);
}

// Printed by the C library from the loop of the definition, written down once more.
TEST(FileObjectItems, DoublesAgreeWithTheFormatTheyAreNamedAfter) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 5000; ++i) {
    const double value =
        std::ldexp(static_cast<double>(static_cast<long long>(random())), -static_cast<int>(random() % 80)) / (i % 2 == 0 ? 1.0 : 1000.0);
    int decimals = 0;
    double v = std::fabs(value);
    for (; decimals < 16; ++decimals, v *= 10) {
      const double e = std::fabs(v * 100 * 2.220446049250313e-16);
      const double r = std::fmod(v, 1);
      if (!(e < r) || !(r < 1 - e)) break;
    }
    ASSERT_EQ(Stored(value), Printed("%.*f", decimals, value)) << i;
  }
}

TEST(FileObjectItems, ADecimalCommaOfTheProcessChangesNothing) {
  const std::string former = std::setlocale(LC_ALL, nullptr);
  for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "C"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) break;
  }
  EXPECT_EQ(Stored(2.5), "2.5");
  EXPECT_EQ(Read<double>("2.5", 0.0), 2.5);
  std::setlocale(LC_ALL, former.c_str());
}

TEST(FileObjectItems, AMissingSectionIsStatus4AndAMissingKey5) {
  FileObject settings = With("1");
  std::string text = "old";
  EXPECT_FALSE(settings.GetItem("B", "k", text));
  EXPECT_EQ(settings.GetErrorStatus(), 4);
  EXPECT_FALSE(settings.GetItem("A", "K", text));
  EXPECT_EQ(settings.GetErrorStatus(), 5);
  EXPECT_EQ(text, "old");
  double number = 3.0;
  EXPECT_FALSE(settings.GetItem("A", "x", number));
  EXPECT_EQ(settings.GetErrorStatus(), 5);
  EXPECT_TRUE(settings.GetItem("A", "k", number));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
}

TEST(FileObjectItems, SetItemWithoutCreationOnAMissingSectionChangesNothing) {
  FileObject settings = With("1");
  const Picture before = PictureOf(settings);
  EXPECT_FALSE(settings.SetItem("B", "k", "v", false));
  EXPECT_EQ(settings.GetErrorStatus(), 4);
  EXPECT_FALSE(settings.SetItem("B", "k", 2.5, false));
  EXPECT_EQ(PictureOf(settings), before);
  EXPECT_TRUE(settings.SetItem("A", "new", "v", false));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  EXPECT_EQ(TextOf(settings, "A", "new"), "v");
}

TEST(FileObjectItems, EmptyNamesAreNames) {
  FileObject settings;
  EXPECT_TRUE(settings.SetItem("", "", "v", true));
  EXPECT_EQ(PictureOf(settings), (Picture{{"", {{"", "v"}}}}));
}

std::string Thrown(const FileObject& settings, const std::string& key) {
  int value = 0;
  try {
    settings.GetItem("A", key, value);
  } catch (const std::string& message) {
    return message;
  }
  return "(nothing)";
}

TEST(FileObjectItems, AFailedGetItemThrowsATextWhenAskedTo) {
  FileObject settings = With("abc");
  settings.ThrowExceptions(true);
  EXPECT_TRUE(settings.ThrowExceptions());
  EXPECT_EQ(Thrown(settings, "none"), "Error retrieving item \"[A] - none\".\nFile in question:\n\"Unknown\".");
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  settings.SetFileName("C:\\a.ini");
  EXPECT_EQ(Thrown(settings, "k"), "Error retrieving item \"[A] - k\".\nFile in question:\n\"C:\\a.ini\".");
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  settings.SetItem("A", "k", 5, true);
  EXPECT_EQ(Thrown(settings, "k"), "(nothing)");
}

TEST(FileObjectItems, PercentSignsInNamesStayInTheThrownText) {
  FileObject settings;
  settings.ThrowExceptions(true);
  EXPECT_EQ(Thrown(settings, "%s%n"), "Error retrieving item \"[A] - %s%n\".\nFile in question:\n\"Unknown\".");
}

TEST(FileObjectItems, OnlyGetItemThrows) {
  FileObject settings;
  settings.ThrowExceptions(true);
  EXPECT_FALSE(settings.SetItem("A", "k", "v", false));
  EXPECT_FALSE(settings.DeleteItem("A", "k", false));
  EXPECT_FALSE(settings.HasKey("A", "k"));
  EXPECT_FALSE(settings.DeleteSection("A"));
  EXPECT_FALSE(settings.RenameSection("A", "B"));
}

TEST(FileObjectItems, DeleteItemStatuses) {
  FileObject settings;
  EXPECT_FALSE(settings.DeleteItem("A", "k", false));
  EXPECT_EQ(settings.GetErrorStatus(), 4);  // where DeleteSection has 2
  settings.SetItem("A", "k", "v", true);
  EXPECT_FALSE(settings.DeleteItem("A", "x", false));
  EXPECT_EQ(settings.GetErrorStatus(), 7);
  EXPECT_TRUE(settings.DeleteItem("A", "k", false));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  EXPECT_TRUE(settings.HasSection("A"));
  EXPECT_EQ(settings.GetNumItems("A"), 0);
}

TEST(FileObjectItems, DeletingTheLastItemMayTakeTheSectionAlong) {
  FileObject settings;
  settings.SetItem("A", "k", "v", true);
  settings.SetItem("A", "l", "v", true);
  EXPECT_TRUE(settings.DeleteItem("A", "k", true));
  EXPECT_TRUE(settings.HasSection("A"));
  EXPECT_TRUE(settings.DeleteItem("A", "l", true));
  EXPECT_FALSE(settings.HasSection("A"));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
}

TEST(FileObjectItems, PeekFindsEmptyValuesTooAndNeitherThrowsNorSetsAStatus) {
  FileObject settings = With("value");
  settings.SetItem("A", "empty", "", true);
  settings.DeleteItem("A", "missing", false);  // status 7
  settings.ThrowExceptions(true);
  std::string_view value = "untouched";
  EXPECT_FALSE(settings.Peek("A", "missing", value));
  EXPECT_FALSE(settings.Peek("B", "k", value));
  EXPECT_EQ(value, "untouched");
  EXPECT_TRUE(settings.Peek("A", "k", value));
  EXPECT_EQ(value, "value");
  EXPECT_TRUE(settings.Peek("A", "empty", value));
  EXPECT_EQ(value, "");
  EXPECT_EQ(settings.GetErrorStatus(), FOBJ_ITEM_NOT_DELETED);
}

TEST(FileObjectItems, HasKeyAndHasSectionLeaveTheStatus) {
  FileObject settings;
  settings.DeleteItem("A", "k", false);
  EXPECT_FALSE(settings.HasKey("A", "k"));
  EXPECT_FALSE(settings.HasSection("A"));
  EXPECT_EQ(settings.GetNumItems("A"), 0);
  EXPECT_EQ(settings.GetErrorStatus(), 4);
}

// A value written a million times, longer and shorter, must not make the object grow.
TEST(FileObjectItems, OverwritingKeepsTheOtherItems) {
  FileObject settings;
  for (int i = 0; i < 100; ++i) settings.SetItem("A", std::to_string(i), std::string(static_cast<std::size_t>(i), 'x'), true);
  std::mt19937 random(3);
  Items expected = ItemsOf(settings, "A");
  for (int i = 0; i < 100000; ++i) {
    const std::string key = std::to_string(random() % 100);
    expected[key] = std::string(random() % 200, static_cast<char>('a' + random() % 26));
    settings.SetItem("A", key, expected[key], true);
    if (random() % 10 == 0) {
      const std::string gone = std::to_string(random() % 100);
      EXPECT_EQ(settings.DeleteItem("A", gone, false), expected.erase(gone) != 0);
    }
  }
  EXPECT_EQ(ItemsOf(settings, "A"), expected);
}

class Watched : public FileObject {
 public:
  int sets = 0;
  mutable std::string statuses;

  using FileObject::SetItem;
  bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection) override {
    ++sets;
    return FileObject::SetItem(section, key, "<" + value + ">", createSection);
  }

 protected:
  void SetErrorStatus(int status) const override {
    statuses += std::to_string(status);
    FileObject::SetErrorStatus(status);
  }
};

TEST(FileObjectItems, AllTypedFormsEndInTheVirtualOne) {
  Watched settings;
  settings.SetItem("A", "1", 1, true);
  settings.SetItem("A", "2", 2U, true);
  settings.SetItem("A", "3", 3L, true);
  settings.SetItem("A", "4", 4UL, true);
  settings.SetItem("A", "5", true, true);
  settings.SetItem("A", "6", 6.5, true);
  settings.SetItem("A", "7", 7LL, true);
  settings.SetItem("A", "8", 8ULL, true);
  settings.SetItem("A", "9", "9", true);
  EXPECT_EQ(settings.sets, 9);
  EXPECT_EQ(ItemsOf(settings, "A"), (Items{{"1", "<1>"},
                                           {"2", "<2>"},
                                           {"3", "<3>"},
                                           {"4", "<4, 0, 0>"},
                                           {"5", "<1>"},
                                           {"6", "<6.5>"},
                                           {"7", "<7>"},
                                           {"8", "<8>"},
                                           {"9", "<9>"}}));
}

TEST(FileObjectItems, EveryOperationStoresStatus0BeforeItsOwn) {
  Watched settings;
  std::string text;
  settings.GetItem("A", "k", text);
  EXPECT_EQ(settings.statuses, "04");
}

}  // namespace
