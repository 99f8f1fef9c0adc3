// How sections and items become a text.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/config/SettingsTestHelp.h"
#include "zelbase/errors/GlobalErrorList.h"

namespace {

// A device that takes some bytes and then no more.
class FullFile : public CFile {
 public:
  explicit FullFile(std::size_t room) : m_room(room) {}
  void Write(const void*, unsigned int count) override {
    if (count > m_room) throw CFileException(CFileException::diskFull);
    m_room -= count;
  }

 private:
  std::size_t m_room;
};

TEST(FileObjectWrite, AnEmptyObjectIsAnEmptyText) { EXPECT_EQ(WrittenBy(FileObject()), ""); }

TEST(FileObjectWrite, EverySectionEndsInAnEmptyLine) {
  FileObject settings;
  settings.CreateSection("A", false);
  EXPECT_EQ(WrittenBy(settings), "[A]\r\n\r\n");
  settings.SetItem("A", "k", "", true);
  EXPECT_EQ(WrittenBy(settings), "[A]\r\nk = \r\n\r\n");
}

TEST(FileObjectWrite, TheChecksumSectionIsWritten) {
  FileObject settings;
  settings.SetItem("Checksum", "Checksum", "1", true);
  EXPECT_EQ(WrittenBy(settings), "[Checksum]\r\nChecksum = 1\r\n\r\n");
}

TEST(FileObjectWrite, WhatWouldNotReadBackIsWrittenAsItIs) {
  FileObject settings;
  settings.SetItem(" A ", "k ", "1\n2 // 3", true);
  EXPECT_EQ(WrittenBy(settings), "[ A ]\r\nk  = 1\n2 // 3\r\n\r\n");
}

TEST(FileObjectWrite, AFailureIsStatus1AndReportsTheObjectsOwnFileName) {
  GlobalErrorList::Get().Clear();
  FileObject settings;
  settings.SetItem("A", "k", std::string(10000, 'x'), true);
  settings.SetFileName("C:\\own.ini");
  settings.SetErrorContext("Store");
  const Picture before = PictureOf(settings);
  FullFile file(5000);
  CArchive archive(&file, CArchive::store);
  EXPECT_FALSE(settings.Write(archive));
  EXPECT_EQ(settings.GetErrorStatus(), 1);
  EXPECT_EQ(PictureOf(settings), before);
  GlobalErrorList& errors = GlobalErrorList::Get();
  EXPECT_EQ(errors.CurrentContext(), "Store");
  ASSERT_EQ(errors.NumErrors(true), 1);
  EXPECT_EQ(errors[0].Details(), "C:\\own.ini");
  EXPECT_EQ(errors[0].Format(), "Error writing to \"own.ini\".");
  errors.Clear();
}

TEST(FileObjectWrite, AShortTextOnAFullDeviceFailsToo) {
  GlobalErrorList::Get().Clear();
  FileObject settings;
  settings.SetItem("A", "k", "1", true);
  FullFile file(0);
  EXPECT_FALSE(settings.FileSave(file));
  EXPECT_EQ(settings.GetErrorStatus(), 1);
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 1);
  GlobalErrorList::Get().Clear();
}

TEST(FileObjectWrite, WritingStoresStatus0) {
  FileObject settings;
  settings.DeleteSection("none");
  EXPECT_EQ(settings.GetErrorStatus(), 2);
  WrittenBy(settings);
  EXPECT_EQ(settings.GetErrorStatus(), 0);
}

TEST(FileObjectWrite, WhatIsWrittenReadsBack) {
  static const std::string texts[] = {"a", "b c", "1/2", "x=y", "\xB0", "]", "a]b", std::string("z\0z", 3), "q"};
  for (unsigned int seed = 1; seed <= 300; ++seed) {
    std::mt19937 random(seed);
    FileObject settings;
    const auto text = [&] { return texts[random() % std::size(texts)]; };
    for (auto i = 1 + random() % 40; i != 0; --i) {
      std::string key = text();
      if (key == "x=y") key = "xy";
      settings.SetItem(text(), key, text(), true);
    }
    FileObject back;
    ASSERT_TRUE(ReadFrom(back, WrittenBy(settings)));
    ASSERT_EQ(PictureOf(back), PictureOf(settings)) << seed;
  }
}

TEST(FileObjectWrite, TheOrderIsStableWhileNothingChanges) {
  FileObject settings;
  for (int i = 0; i < 300; ++i) settings.SetItem("S" + std::to_string(i % 17), "k" + std::to_string(i), i, true);
  const std::string first = WrittenBy(settings);
  int value = 0;
  settings.GetItem("S1", "k1", value);
  EXPECT_EQ(WrittenBy(settings), first);
}

}  // namespace
