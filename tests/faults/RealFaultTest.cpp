// Faults as the system itself gives them: a device that is always full, a limit of file sizes, folders and files without rights, a
// FIFO where a file is expected. Neighbours: SettingsFaultTest.cpp and StreamFaultTest.cpp, where the faults are ordered.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "tests/config/SettingsTestHelp.h"
#include "tests/support/InChild.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/config/DisplaysFile.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/config/SettingsReport.h"
#include "zelbase/config/SettingsTextEditor.h"
#include "zelbase/errors/ErrorMessageFile.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/files/FileHelpers.h"
#include "zelbase/files/FileStream.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/geometry/Station.h"
#include "zelbase/geometry/VesselContour.h"
#include "zelbase/sonar/TideFile.h"
#include "zelbase/xml/XmlReader.h"
#include "zelbase/xml/XmlWriter.h"

namespace {

constexpr unsigned int kRead = CFile::modeRead | CFile::shareDenyWrite;
constexpr unsigned int kCreate = CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive;

FileObject Sample() {
  FileObject settings;
  settings.SetItem("A", "long", std::string(20000, 'x'), true);
  return settings;
}

XmlElement Document() {
  XmlElement root;
  root.SetName("a");
  root.SetAttribute("long", std::string(100000, 'x'));
  return root;
}

// Everything in the library that opens a file to read it; whether it did.
struct Reader {
  const char* name;
  std::function<bool(const std::string&)> read;
};

const std::vector<Reader>& Readers() {
  static const std::vector<Reader> readers = {
      {"FileObject", [](const std::string& name) { return FileObject().FileOpen(name, kRead); }},
      {"DisplaysFile", [](const std::string& name) { return DisplaysFile().ReadFromDisk(name); }},
      {"SettingsTextEditor", [](const std::string& name) { return SettingsTextEditor().FileOpen(name); }},
      {"SettingsReport", [](const std::string& name) { return SettingsReport().ReadFile(name); }},
      {"ErrorMessageFile", [](const std::string& name) { return ErrorMessageFile::Get().Open(name); }},
      {"VesselContour", [](const std::string& name) { return VesselContour().Create(name, 0); }},
      {"Station", [](const std::string& name) { return Station().ReadFile(name); }},
      {"TideFile", [](const std::string& name) { return TideFile().FileOpen(name, false); }},
      {"XmlReader",
       [](const std::string& name) {
         XmlElement root;
         return XmlReader(root).ReadFile(name.c_str());
       }},
      {"FileStream, reading", [](const std::string& name) { return FileStream().Open(name.c_str(), false, true); }},
      {"FileStream", [](const std::string& name) { return FileStream().Open(name.c_str(), false, false); }},
      {"HugeFileStream, reading", [](const std::string& name) { return HugeFileStream().Open(name.c_str(), false, false); }},
      {"HugeFileStream", [](const std::string& name) { return HugeFileStream().Open(name.c_str(), false, true); }},
      {"CFile", [](const std::string& name) { return CFile().Open(name, CFile::modeRead); }},
      {"GetFileWriteTime",
       [](const std::string& name) {
         double time = 0.0;
         return GetFileWriteTime(name, time);
       }},
  };
  return readers;
}

// The same for what writes 20,000 bytes or more; whether all went well up to the end.
struct Writer {
  const char* name;
  bool replaces;  // puts a new file in the old one's place
  std::function<bool(const std::string&)> write;
};

const std::vector<Writer>& Writers() {
  static const std::string block(20000, 'x');
  static const std::vector<Writer> writers = {
      {"FileObject", false, [](const std::string& name) { return Sample().FileSave(name, kCreate); }},
      {"FileObject, replacing", true, [](const std::string& name) { return Sample().FileSaveReplacing(name); }},
      {"SettingsTextEditor", true, [](const std::string& name) { return SettingsTextEditor(block).FileSaveReplacing(name); }},
      {"VesselContour", false,
       [](const std::string& name) {
         VesselContour contour;
         for (int i = 0; i < 1000; ++i) contour.AddPoint(VesselPoint(Point(i, i, 0), false, false));
         return contour.Save(name);
       }},
      {"XmlWriter", false, [](const std::string& name) { return XmlWriter(Document()).WriteFile(name.c_str()); }},
      {"FileStream, writing", false,
       [](const std::string& name) {
         FileStream stream;
         return stream.Open(name.c_str(), true, true) && stream.Write(block.data(), 20000) && stream.Sync();
       }},
      {"FileStream", false,
       [](const std::string& name) {
         FileStream stream;
         return stream.Open(name.c_str(), true, false) && stream.Write(block.data(), 20000) && stream.Sync();
       }},
      {"HugeFileStream", false,
       [](const std::string& name) {
         HugeFileStream stream;
         return stream.Open(name.c_str(), true, true) && stream.Write(block.data(), 20000) && stream.Sync();
       }},
      {"CFile", false,
       [](const std::string& name) {
         try {
           CFile file(name.c_str(), kCreate);
           file.Write(block.data(), 20000);
           file.Flush();
         } catch (const CFileException&) {
           return false;
         }
         return true;
       }},
  };
  return writers;
}

class RealFaults : public testing::Test {
 protected:
  std::size_t CountFiles() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) count += entry.exists() ? 1 : 0;
    return count;
  }

  TemporaryFolder m_folder;
};

TEST_F(RealFaults, ADeviceThatIsFullIsNoFile) {
  const std::string link = m_folder.MakeLink("link", "/dev/full");
  for (const std::string& name : {std::string("/dev/full"), link}) {
    ExpectInChild([&] {
      const int descriptors = CountOpenDescriptors();
      for (const Reader& reader : Readers()) EXPECT_FALSE(reader.read(name)) << reader.name;
      for (const Writer& writer : Writers()) EXPECT_FALSE(writer.write(name)) << writer.name;
      TideFile tide;
      EXPECT_FALSE(tide.FileOpen(name, true));
      EXPECT_EQ(CountOpenDescriptors(), descriptors);
    });
  }
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
  EXPECT_EQ(CountFiles(), 1u);
}

TEST_F(RealFaults, AStreamOnAFullDeviceIsNoticed) {
  std::ofstream stream("/dev/full");
  ASSERT_TRUE(stream.is_open());
  XmlElement root;
  root.SetName("a");
  EXPECT_FALSE(XmlWriter(root).WriteStream(stream));
}

TEST_F(RealFaults, ALimitOfTheFileSizeIsNoticed) {
  for (const Writer& writer : Writers()) {
    m_folder.Write("old", "old");
    ExpectInChild([&] {
      const int descriptors = CountOpenDescriptors();
      LimitFileSize(10000);
      EXPECT_FALSE(writer.write(m_folder.File("old"))) << writer.name;
      EXPECT_FALSE(writer.write(m_folder.File("new"))) << writer.name;
      EXPECT_EQ(CountOpenDescriptors(), descriptors);
      LimitFileSize(1000000);
      EXPECT_TRUE(writer.write(m_folder.File("again"))) << writer.name;
    });
    if (writer.replaces) {
      EXPECT_EQ(m_folder.Read("old"), "old") << writer.name;
      EXPECT_FALSE(m_folder.Exists("new")) << writer.name;
      EXPECT_EQ(CountFiles(), 2u) << writer.name;
    }
    for (const char* const name : {"old", "new", "again"}) std::filesystem::remove(m_folder.File(name));
  }
}

TEST_F(RealFaults, ALimitOfTheFileSizeLeavesTheTideAsItWas) {
  const std::string name = m_folder.File("tide");
  {
    TideFile tide;
    ASSERT_TRUE(tide.FileOpen(name, true));
    for (int i = 0; i < 100; ++i) tide.AddTideValue(i, 1.0);
    ASSERT_TRUE(tide.FileSave());
  }
  const std::string old = m_folder.Read("tide");
  ExpectInChild([&] {
    TideFile tide;
    EXPECT_TRUE(tide.FileOpen(name, false));
    for (int i = 0; i < 5000; ++i) tide.AddTideValue(i, 2.0);
    LimitFileSize(10000);
    EXPECT_FALSE(tide.FileSave());
    EXPECT_EQ(m_folder.Read("tide"), old);
    LimitFileSize(1000000);
    EXPECT_TRUE(tide.FileSave());
  });
  EXPECT_EQ(m_folder.Read("tide").size(), 5000u * 16);
  EXPECT_EQ(CountFiles(), 1u);
}

TEST_F(RealFaults, AFolderThatMayOnlyBeReadTakesNoFile) {
  m_folder.Write("old", "[Old]\r\n");
  ASSERT_EQ(::chmod(m_folder.File("old").c_str(), 0666), 0);
  ASSERT_EQ(::chmod(m_folder.Path().c_str(), 0555), 0);
  for (const Writer& writer : Writers()) {
    ExpectInChild([&] {
      ASSERT_TRUE(BecomeOrdinaryUser());
      EXPECT_FALSE(writer.write(m_folder.File("new"))) << writer.name;
      // What is in it may be written, and nothing put in its place.
      EXPECT_EQ(writer.write(m_folder.File("old")), !writer.replaces) << writer.name;
    });
    if (writer.replaces) {
      EXPECT_EQ(m_folder.Read("old"), "[Old]\r\n") << writer.name;
    }
    EXPECT_EQ(CountFiles(), 1u) << writer.name;
    m_folder.Write("old", "[Old]\r\n");
  }
  ASSERT_EQ(::chmod(m_folder.Path().c_str(), 0755), 0);
}

// The documented other way of the tide file: a folder that takes no second file leaves only that of writing over it.
TEST_F(RealFaults, AFolderThatMayOnlyBeReadStillTakesATide) {
  const std::string name = m_folder.Write("tide", "");
  ASSERT_EQ(::chmod(name.c_str(), 0666), 0);
  ASSERT_EQ(::chmod(m_folder.Path().c_str(), 0555), 0);
  ExpectInChild([&] {
    ASSERT_TRUE(BecomeOrdinaryUser());
    TideFile tide;
    EXPECT_TRUE(tide.FileOpen(name, false));
    tide.AddTideValue(1.0, 2.0);
    EXPECT_TRUE(tide.FileSave());
  });
  EXPECT_EQ(m_folder.Read("tide").size(), 16u);
  ASSERT_EQ(::chmod(m_folder.Path().c_str(), 0755), 0);
}

TEST_F(RealFaults, AFileWithoutRightsIsNeitherReadNorWritten) {
  const std::string name = m_folder.Write("secret", "[Old]\r\n");
  ASSERT_EQ(::chmod(name.c_str(), 0), 0);
  ASSERT_EQ(::chmod(m_folder.Path().c_str(), 0777), 0);
  ExpectInChild([&] {
    ASSERT_TRUE(BecomeOrdinaryUser());
    for (const Reader& reader : Readers()) EXPECT_FALSE(reader.read(name)) << reader.name;
    for (const Writer& writer : Writers()) EXPECT_FALSE(writer.write(name)) << writer.name;
    FileObject settings = Sample();
    EXPECT_FALSE(settings.FileSaveReplacing(name));
    EXPECT_EQ(settings.GetErrorStatus(), FOBJ_OPEN_FAILED);
  });
  ASSERT_EQ(::chmod(name.c_str(), 0644), 0);
  EXPECT_EQ(m_folder.Read("secret"), "[Old]\r\n");
  EXPECT_EQ(CountFiles(), 1u);
}

// Opening a FIFO the ordinary way would wait for somebody at its other end for ever; the child would be killed.
TEST_F(RealFaults, AFifoIsNotWaitedFor) {
  const std::string name = m_folder.MakeFifo("fifo");
  ExpectInChild([&] {
    const int descriptors = CountOpenDescriptors();
    for (const Reader& reader : Readers()) EXPECT_FALSE(reader.read(name)) << reader.name;
    for (const Writer& writer : Writers()) EXPECT_FALSE(writer.write(name)) << writer.name;
    EXPECT_FALSE(TideFile().FileOpen(name, true));
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
  });
  EXPECT_TRUE(std::filesystem::is_fifo(name));
  EXPECT_EQ(CountFiles(), 1u);
}

TEST_F(RealFaults, AFolderIsNoFile) {
  const std::string name = m_folder.MakeFolder("sub");
  ExpectInChild([&] {
    for (const Reader& reader : Readers()) EXPECT_FALSE(reader.read(name)) << reader.name;
    for (const Writer& writer : Writers()) EXPECT_FALSE(writer.write(name)) << writer.name;
  });
  EXPECT_TRUE(std::filesystem::is_directory(name));
  EXPECT_EQ(CountFiles(), 1u);
}

TEST_F(RealFaults, WithoutADescriptorNothingOpensAndNothingIsLost) {
  const std::string name = m_folder.Write("old", "[Old]\r\n");
  ExpectInChild([&] {
    // The first uses of what opens files of its own are over.
    for (const Reader& reader : Readers()) reader.read(name);
    GlobalErrorList::Get().Clear();
    std::vector<std::ifstream> holders;
    LimitDescriptors(40);
    for (int i = 0; i < 40; ++i) holders.emplace_back(name);
    for (const Reader& reader : Readers()) EXPECT_FALSE(reader.read(name)) << reader.name;
    for (const Writer& writer : Writers()) EXPECT_FALSE(writer.write(name)) << writer.name;
    holders.clear();
    for (const Writer& writer : Writers()) EXPECT_TRUE(writer.write(m_folder.File("new"))) << writer.name;
  });
  EXPECT_EQ(m_folder.Read("old"), "[Old]\r\n");
  EXPECT_EQ(CountFiles(), 2u);
}

}  // namespace
