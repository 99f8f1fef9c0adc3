#include "zelbase/config/DisplaysFile.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "tests/config/SettingsTestHelp.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/platform/CFileException.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

// The error record in words, "code:name"; fetching it sets it back.
std::string Fetched(DisplaysFile& displays) {
  DisplaysFile::ERRINFO info{99, "not set"};
  displays.GetError(info);
  return std::to_string(info.code) + ":" + info.name;
}

class DisplaysFiles : public testing::Test {
 protected:
  void SetUp() override { GlobalErrorList::Get().Clear(); }
  void TearDown() override { GlobalErrorList::Get().Clear(); }

  TemporaryFolder folder;
  const std::string good = folder.Write("good.ini", "[PlanView]\nk=1\n[RawDataView]\n");
  const std::string bad = folder.Write("bad.ini", "[Foo]\nk=1\n[PlanView]\n");
  const std::string missing = folder.File("missing.ini");
};

TEST_F(DisplaysFiles, KnownViewTypesReadCleanly) {
  DisplaysFile displays;
  EXPECT_TRUE(displays.ReadFromDisk(good));
  EXPECT_EQ(Fetched(displays), "0:");
  EXPECT_EQ(displays.GetFileName(), good);
  EXPECT_TRUE(displays.FileInitialised());
  EXPECT_EQ(displays.GetErrorStatus(), 0);
}

TEST_F(DisplaysFiles, EveryViewTypeIsKnown) {
  std::string text;
  for (const std::string& name : viewTypeKeys) text += "[" + name + "]\n";
  DisplaysFile displays;
  EXPECT_TRUE(displays.ReadFromDisk(folder.Write("all.ini", text)));
  EXPECT_EQ(displays.GetNumSections(), 48);
  EXPECT_TRUE(displays.IsPresent("CableProfileView"));
}

TEST_F(DisplaysFiles, TheLastUnknownSectionOfTheWalkIsNamed) {
  DisplaysFile displays;
  EXPECT_FALSE(displays.ReadFromDisk(folder.Write("two.ini", "[Foo]\n[PlanView]\n[Bar]\n[RawDataView]\n")));
  std::string last;
  for (const std::string& name : SectionNames(displays)) {
    if (name == "Foo" || name == "Bar") last = name;
  }
  EXPECT_EQ(Fetched(displays), "2:" + last);
}

TEST_F(DisplaysFiles, ViewTypesAreComparedExactly) {
  for (const char* const name : {"planview", "PLANVIEW", "PlanView ", "PlanView2", "Plan", "", "ZELCOREFormat"}) {
    DisplaysFile displays;
    // A head is trimmed, which makes "PlanView " the view type.
    const bool known = std::string(name) == "PlanView ";
    EXPECT_EQ(displays.ReadFromDisk(folder.Write("a.ini", std::string("[") + name + "]\n")), known) << name;
    EXPECT_EQ(Fetched(displays), known ? "0:" : std::string("2:") + name);
  }
}

TEST_F(DisplaysFiles, AFileWithAnUnknownSectionStaysLoaded) {
  DisplaysFile displays;
  EXPECT_FALSE(displays.ReadFromDisk(bad));
  EXPECT_EQ(PictureOf(displays), (Picture{{"Foo", {{"k", "1"}}}, {"PlanView", {}}}));
  EXPECT_TRUE(displays.FileInitialised());
  EXPECT_TRUE(displays.IsPresent("Foo"));
}

TEST_F(DisplaysFiles, AnErrorIsFetchedOnce) {
  DisplaysFile displays;
  displays.ReadFromDisk(bad);
  EXPECT_EQ(Fetched(displays), "2:Foo");
  EXPECT_EQ(Fetched(displays), "0:");
}

TEST_F(DisplaysFiles, AnErrorNotFetchedMakesALaterCleanReadingFail) {
  DisplaysFile displays;
  EXPECT_FALSE(displays.ReadFromDisk(bad));
  EXPECT_FALSE(displays.ReadFromDisk(good));
  EXPECT_TRUE(displays.IsPresent("PlanView"));
  EXPECT_FALSE(displays.ReadFromDisk(good));
  EXPECT_EQ(Fetched(displays), "2:Foo");
  EXPECT_TRUE(displays.ReadFromDisk(good));
}

TEST_F(DisplaysFiles, AMissingFileHasCode1AndEntersTheErrorList) {
  DisplaysFile displays;
  EXPECT_FALSE(displays.ReadFromDisk(missing));
  EXPECT_EQ(Fetched(displays), "1:");
  EXPECT_EQ(displays.GetErrorStatus(), 9);
  GlobalErrorList& errors = GlobalErrorList::Get();
  ASSERT_EQ(errors.NumErrors(true), 1);
  EXPECT_EQ(errors.CurrentContext(), "General");
  EXPECT_EQ(errors[0].Format(), "Error opening \"" + missing + "\".");
}

TEST_F(DisplaysFiles, AnUnknownSectionDoesNotEnterTheErrorList) {
  DisplaysFile displays;
  displays.ReadFromDisk(bad);
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
}

TEST_F(DisplaysFiles, AnEmptyNameHasCode1AndEntersNothing) {
  DisplaysFile displays;
  EXPECT_FALSE(displays.ReadFromDisk(""));
  EXPECT_EQ(Fetched(displays), "1:");
  EXPECT_EQ(displays.GetErrorStatus(), 8);
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
}

TEST_F(DisplaysFiles, ANameNotFetchedStandsBesideALaterMissingFile) {
  DisplaysFile displays;
  displays.ReadFromDisk(bad);
  EXPECT_FALSE(displays.ReadFromDisk(missing));
  EXPECT_FALSE(displays.IsPresent("Foo"));
  EXPECT_EQ(Fetched(displays), "1:Foo");
  EXPECT_EQ(Fetched(displays), "0:");
}

TEST_F(DisplaysFiles, AnUnknownSectionTakesTheCodeOfAMissingFileOver) {
  DisplaysFile displays;
  displays.ReadFromDisk(missing);
  EXPECT_FALSE(displays.ReadFromDisk(good));
  EXPECT_FALSE(displays.ReadFromDisk(bad));
  EXPECT_EQ(Fetched(displays), "2:Foo");
}

TEST_F(DisplaysFiles, AFileWithNoSectionIsAGoodOne) {
  for (const char* const text : {"", "PlanView\n; nothing\n", "[Checksum]\nChecksum=1\n"}) {
    DisplaysFile displays;
    EXPECT_TRUE(displays.ReadFromDisk(folder.Write("a.ini", text))) << text;
    EXPECT_EQ(Fetched(displays), "0:");
  }
}

TEST_F(DisplaysFiles, AFileIsOpenedWhileOthersMayReadButNotWrite) {
  CFile reader;
  ASSERT_TRUE(reader.Open(good, CFile::modeRead | CFile::shareDenyNone));
  DisplaysFile displays;
  EXPECT_TRUE(displays.ReadFromDisk(good));
  reader.Close();
  CFile writer;
  ASSERT_TRUE(writer.Open(good, CFile::modeReadWrite | CFile::shareDenyNone));
  EXPECT_FALSE(displays.ReadFromDisk(good));
  EXPECT_EQ(Fetched(displays), "1:");
}

TEST_F(DisplaysFiles, TheChecksumIsNeverPresentButItsKeysCanBe) {
  DisplaysFile displays;
  EXPECT_TRUE(displays.ReadFromDisk(folder.Write("a.ini", "[PlanView]\n[Checksum]\nChecksum=5\nIntegrity=\n")));
  EXPECT_FALSE(displays.IsPresent("Checksum"));
  EXPECT_TRUE(displays.IsPresent("Checksum", "Checksum"));
  EXPECT_TRUE(displays.IsPresent("Checksum", "Integrity"));
  EXPECT_FALSE(displays.IsPresent("Checksum", "none"));
}

TEST_F(DisplaysFiles, AKeyWithAnEmptyValueIsPresent) {
  DisplaysFile displays;
  displays.ReadFromDisk(folder.Write("a.ini", "[PlanView]\nk =\n"));
  EXPECT_TRUE(displays.IsPresent("PlanView", "k"));
  EXPECT_FALSE(displays.HasKey("PlanView", "k"));
}

TEST_F(DisplaysFiles, PresenceIsExactAndTouchesNoStatus) {
  DisplaysFile displays;
  displays.ReadFromDisk(folder.Write("a.ini", "[PlanView]\nk=1\nl=2\n"));
  displays.ThrowExceptions(true);
  displays.DeleteItem("PlanView", "none", false);
  EXPECT_TRUE(displays.IsPresent("PlanView"));
  EXPECT_TRUE(displays.IsPresent("PlanView", "l"));
  EXPECT_FALSE(displays.IsPresent("planview"));
  EXPECT_FALSE(displays.IsPresent(""));
  EXPECT_FALSE(displays.IsPresent("RawDataView"));
  EXPECT_FALSE(displays.IsPresent("PlanView", "K"));
  EXPECT_FALSE(displays.IsPresent("PlanView", ""));
  EXPECT_FALSE(displays.IsPresent("RawDataView", "k"));
  EXPECT_EQ(displays.GetErrorStatus(), 7);
}

TEST_F(DisplaysFiles, PresenceIsNotBoundToViewTypes) {
  DisplaysFile displays;
  displays.SetItem("Own", "k", "v", true);
  EXPECT_TRUE(displays.IsPresent("Own"));
  EXPECT_TRUE(displays.IsPresent("Own", "k"));
}

TEST_F(DisplaysFiles, ACopyTakesTheErrorRecordOver) {
  DisplaysFile displays;
  displays.ReadFromDisk(bad);
  DisplaysFile copy(displays);
  DisplaysFile assigned;
  assigned = displays;
  EXPECT_EQ(PictureOf(copy), PictureOf(displays));
  EXPECT_EQ(Fetched(copy), "2:Foo");
  EXPECT_EQ(Fetched(assigned), "2:Foo");
  EXPECT_EQ(Fetched(displays), "2:Foo");
  assigned = copy;
  EXPECT_EQ(Fetched(assigned), "0:");
}

TEST_F(DisplaysFiles, SelfAssignmentEmptiesTheStoreAndKeepsTheErrorRecord) {
  DisplaysFile displays;
  displays.ReadFromDisk(bad);
  DisplaysFile& same = displays;
  displays = same;
  EXPECT_EQ(displays.GetNumSections(), 0);
  EXPECT_EQ(Fetched(displays), "2:Foo");
}

TEST_F(DisplaysFiles, AReadThatFailsMidwayThrowsAndLeavesTheErrorRecord) {
  const std::string big = folder.Write("big.ini", "[Bar]\nk=" + std::string(20000, 'x') + "\n");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  DisplaysFile displays;
  displays.ReadFromDisk(bad);
  files.FailAt(FileOperation::Read, 2);
  EXPECT_THROW(displays.ReadFromDisk(big), CFileException);
  EXPECT_FALSE(displays.FileInitialised());
  EXPECT_EQ(Fetched(displays), "2:Foo");
  EXPECT_EQ(files.OpenFiles(), 0);
}

static_assert(std::is_aggregate_v<DisplaysFile::ERRINFO>);

}  // namespace
