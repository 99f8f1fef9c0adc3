// Streams, readers of text and binary files, and look-ups in folders, with everything under them failing in turn.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/faults/FaultRuns.h"
#include "zelbase/errors/ErrorMessageFile.h"
#include "zelbase/files/FileFinder.h"
#include "zelbase/files/FileHelpers.h"
#include "zelbase/files/FileInfo.h"
#include "zelbase/files/FileStream.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/geometry/Station.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/sonar/TideFile.h"
#include "zelbase/xml/XmlReader.h"
#include "zelbase/xml/XmlWriter.h"

namespace {

class StreamFaultsLong : public FaultFixture {
 protected:
  const std::string m_name = m_folder.File("a file name that is too long for a short string");
  const std::string m_short = "a file name that is too long for a short string";
  const std::string m_block = std::string(10000, 'x');
  int m_writtenOver = 0;
};

std::string StateOf(FileStream& stream) { return stream.IsOpen() ? "open at " + std::to_string(stream.Position()) : "closed"; }

TEST_F(StreamFaultsLong, FileStreamWrites) {
  FaultCase<FileStream> what;
  what.mayHold = 1;
  what.run = [&](FileStream& stream) {
    if (!stream.Open(m_name.c_str(), true, false)) return false;
    for (int i = 0; i < 3; ++i) {
      if (!stream.Write(m_block.data(), 3000)) return false;
    }
    return stream.Seek(10, 0) && stream.Write("here", 4) && stream.Sync();
  };
  what.picture = [&](FileStream& stream) {
    stream.Close();
    return m_folder.Read(m_short);
  };
  Run(std::move(what), 30);
}

TEST_F(StreamFaultsLong, FileStreamReads) {
  struct Reader {
    FileStream stream;
    std::string text;
  };
  FaultCase<Reader> what;
  what.mayHold = 1;
  what.prepare = [&] { m_folder.Write(m_short, m_block); };
  what.run = [&](Reader& reader) {
    reader.text.assign(9000, ' ');
    return reader.stream.Open(m_name.c_str(), false, true) && reader.stream.Read(reader.text.data(), 100) && reader.stream.Seek(500, 1) &&
           reader.stream.Read(reader.text.data(), 9000);
  };
  what.picture = [](Reader& reader) { return StateOf(reader.stream) + reader.text; };
  Run(std::move(what), 30);
}

TEST_F(StreamFaultsLong, HugeFileStreamWrites) {
  FaultCase<HugeFileStream> what;
  what.mayHold = 1;
  what.run = [&](HugeFileStream& stream) {
    if (!stream.Open(m_name.c_str(), true, true)) return false;
    return stream.Write(m_block.data(), 10000) && stream.Seek(10, 0) && stream.Position() == 10 && stream.Write("here", 4) &&
           stream.SetSize(9000) && stream.Sync();
  };
  what.picture = [&](HugeFileStream& stream) {
    return std::string(stream.FileName()) + (stream.IsReadWrite() ? "+" : "-") + m_folder.Read(m_short);
  };
  what.afterFailure = [&](HugeFileStream& stream, RunEnd, const std::string&) {
    EXPECT_EQ(stream.FileName(), stream.IsOpen() ? m_name : "");
  };
  // A stream in an outage says true to a seek, and asks the position first here.
  Run(std::move(what), 30);
}

TEST_F(StreamFaultsLong, HugeFileStreamReadsAndChangesItsMode) {
  struct Reader {
    HugeFileStream stream;
    std::string text;
    unsigned int crc = 0;
    double written = 0.0;
  };
  FaultCase<Reader> what;
  what.mayHold = 1;
  what.prepare = [&] { m_folder.Write(m_short, m_block); };
  what.run = [&](Reader& reader) {
    reader.text.assign(9000, ' ');
    long long size = 0;
    double created = 0.0;
    double accessed = 0.0;
    return reader.stream.Open(m_name.c_str(), false, false) && reader.stream.GetSize(size) && size == 10000 &&
           reader.stream.GetFileTimes(created, accessed, reader.written) && reader.stream.Read(reader.text.data(), 9000) &&
           reader.stream.MakeReadWrite(true) && reader.stream.IsReadWrite() && reader.stream.Position() == 0 &&
           reader.stream.Read(reader.text.data(), 9000);
  };
  what.picture = [](Reader& reader) {
    return std::string(reader.stream.FileName()) + (reader.stream.IsReadWrite() ? "+" : "-") + reader.text;
  };
  what.afterFailure = [&](Reader& reader, RunEnd, const std::string&) {
    EXPECT_EQ(reader.stream.FileName(), reader.stream.IsOpen() ? m_name : "");
    EXPECT_TRUE(reader.stream.IsOpen() || !reader.stream.IsReadWrite());
  };
  Run(std::move(what), 30);
}

TEST_F(StreamFaultsLong, PlainFile) {
  FaultCase<CFile> what;
  what.mayHold = 1;
  what.mayThrow = true;
  what.run = [&](CFile& file) {
    if (!file.Open(m_name, CFile::modeCreate | CFile::modeReadWrite)) return false;
    CArchive archive(&file, CArchive::store, 1000);
    archive.WriteString(m_block);
    archive.WriteCount(70000);
    archive.Close();
    file.Flush();
    file.SeekToBegin();
    CArchive loading(&file, CArchive::load, 1000);
    std::string text(m_block.size(), ' ');
    if (loading.Read(text.data(), text.size()) != text.size() || text != m_block || loading.ReadCount() != 70000) return false;
    file.SetLength(5000);
    return file.GetLength() == 5000 && file.SeekToEnd() == 5000;
  };
  what.picture = [&](CFile& file) {
    const std::string state = file.GetFilePath() + "|" + file.GetFileName() + "|";
    return state + m_folder.Read(m_short);
  };
  what.afterFailure = [&](CFile& file, RunEnd, const std::string&) {
    // Open under its whole name, or closed.
    bool isOpen = true;
    try {
      file.GetPosition();
    } catch (const CFileException& failure) {
      isOpen = static_cast<FileResult>(failure.m_lOsError) != FileResult::InvalidHandle;
    }
    EXPECT_EQ(file.GetFilePath(), isOpen ? m_name : "");
  };
  Run(std::move(what), 30);
}

struct Tide {
  TideFile file;
  std::string Shown() {
    std::string text = std::to_string(file.GetNumValues());
    double time = 0.0;
    double value = 0.0;
    for (bool more = file.GetFirstTideValue(time, value); more; more = file.GetNextTideValue(time, value)) {
      text += " " + std::to_string(time) + "=" + std::to_string(value);
    }
    return text;
  }
};

// 300 records.
void WriteTide(const std::string& name) {
  TideFile file;
  ASSERT_TRUE(file.FileOpen(name, true));
  for (int i = 0; i < 300; ++i) file.AddTideValue(1000.0 * i, i * 0.25);
  ASSERT_EQ(file.FileClose(true), 0);
}

TEST_F(StreamFaultsLong, TideFileOpens) {
  FaultCase<Tide> what;
  what.prepare = [&] { WriteTide(m_name); };
  what.run = [&](Tide& tide) {
    while (tide.file.FileClose(false) > 0) {
    }
    return tide.file.FileOpen(m_name, false);
  };
  what.picture = [](Tide& tide) { return tide.Shown(); };
  what.trueIsWhole = false;  // a file that cannot be read to its end gives the front of its records
  what.afterFailure = [&](Tide& tide, RunEnd, const std::string&) {
    EXPECT_EQ(tide.file.FileClose(false), 0);
    EXPECT_FALSE(tide.file.FileSave());
  };
  Run(std::move(what), 30);
}

TEST_F(StreamFaultsLong, TideFileSaves) {
  FaultCase<Tide> what;
  std::string former;
  what.prepare = [&] {
    WriteTide(m_name);
    former = m_folder.Read(m_short);
  };
  what.make = [&] {
    auto tide = std::make_unique<Tide>();
    tide->file.FileOpen(m_name, false);
    tide->file.AddTideValue(1500.0, 7.0);
    return tide;
  };
  what.run = [](Tide& tide) {
    tide.file.AddTideValue(2500.0, 8.0);
    return tide.file.FileSave();
  };
  what.picture = [&](Tide& tide) { return tide.Shown() + m_folder.Read(m_short); };
  what.afterFailure = [&](Tide& tide, RunEnd, const std::string&) {
    EXPECT_GE(tide.file.GetNumValues(), 301);
    const std::string text = m_folder.Read(m_short);
    m_writtenOver += text == former || text.size() == 302 * 16 ? 0 : 1;
  };
  Run(std::move(what), 30);
  EXPECT_EQ(m_writtenOver, 0);
}

TEST_F(StreamFaultsLong, XmlReads) {
  struct Document {
    XmlElement root;
    XmlReader reader{root};
  };
  FaultCase<Document> what;
  what.prepare = [&] {
    std::string text = "<?xml version=\"1.0\"?>\r\n<survey name=\"a name longer than a short string\">";
    for (int i = 0; i < 8; ++i) text += "<line number=\"" + std::to_string(i) + "\">some &amp; text &lt; here that is long</line>";
    m_folder.Write(m_short, text + "<pad>" + m_block + "</pad></survey>");
  };
  what.make = [] {
    auto document = std::make_unique<Document>();
    document->root.SetName("former");
    return document;
  };
  what.run = [&](Document& document) { return document.reader.ReadFile(m_name.c_str()); };
  what.picture = [&](Document& document) {
    XmlWriter(document.root).WriteFile(m_folder.File("picture").c_str());
    const std::string text = m_folder.Read("picture");
    return text;
  };
  what.afterFailure = [](Document& document, RunEnd end, const std::string&) {
    if (end != RunEnd::False) return;
    EXPECT_EQ(document.root, XmlElement());
    EXPECT_TRUE(document.reader.LastReport().fault == XmlFault::CannotOpen || document.reader.LastReport().fault == XmlFault::CannotRead);
  };
  Run(std::move(what), 30);
}

TEST_F(StreamFaultsLong, XmlWrites) {
  FaultCase<XmlElement> what;
  what.make = [&] {
    auto root = std::make_unique<XmlElement>();
    XmlReader(*root).ReadData("<a x=\"1\"><b>text &amp; more</b><c/></a>", 38);
    root->SetAttribute("long", std::string(70000, 'y'));
    return root;
  };
  what.run = [&](XmlElement& root) { return XmlWriter(root).WriteFile(m_name.c_str()); };
  what.picture = [&](XmlElement& root) { return std::string(root.Name()) + m_folder.Read(m_short); };
  Run(std::move(what), 30);
}

TEST_F(StreamFaultsLong, StationLine) {
  FaultCase<Station> what;
  what.prepare = [&] { m_folder.Write(m_short, std::string(5000, ' ') + "1234.5, 6789.0, 2.25"); };
  what.run = [&](Station& station) { return station.ReadFile(m_name); };
  what.picture = [](Station& station) {
    Point point;
    const bool valid = station.GetStationPos(point);
    return std::to_string(valid) + std::to_string(point.x) + "," + std::to_string(point.y) + "," + std::to_string(point.z);
  };
  what.afterFailure = [](Station& station, RunEnd end, const std::string& before) {
    Point point(1, 1, 1);
    const bool valid = station.GetStationPos(point);
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(valid, end == RunEnd::False) << before;
  };
  Run(std::move(what), 30);
}

// The one object of the process: it is emptied before each run.
TEST_F(StreamFaultsLong, ErrorMessages) {
  FaultCase<int> what;
  what.prepare = [&] { m_folder.Write(m_short, "[File Error]\nOpen=Cannot open %s today, says the file.\n[Rest]\nk=" + m_block + "\n"); };
  what.make = [] {
    ErrorMessageFile::Get().Open("");
    GlobalErrorList::Get().Clear();
    return std::make_unique<int>(0);
  };
  what.mayThrow = true;
  what.run = [&](int&) {
    ErrorMessageFile::Get().Open("");
    return ErrorMessageFile::Get().Open(m_name);
  };
  what.picture = [](int&) {
    std::string text = "none";
    ErrorMessageFile::Get().Get("File Error", "Open", text);
    return text;
  };
  what.afterFailure = [](int&, RunEnd, const std::string&) { EXPECT_FALSE(ErrorMessageFile::Get().IsOpen()); };
  FaultRuns<int> runs(m_folder, std::move(what));
  runs.KeepsMemory();  // what is open at the end of a run stays in the one object
  runs.All();
  EXPECT_GE(runs.Faults(), 4u);
  ErrorMessageFile::Get().Open("");
}

TEST_F(StreamFaultsLong, LookUps) {
  struct Found {
    unsigned long long size = 0;
    double time = 0.0;
    std::string text;
  };
  FaultCase<Found> what;
  what.prepare = [&] {
    m_folder.Write(m_short, "12345");
    m_folder.MakeFolder("sub");
    m_folder.Write("sub/b file name that is too long for a short string.dat", "1");
    m_folder.Write("c.dat", "1");
  };
  what.run = [&](Found& found) {
    FileFinder finder;
    finder.FindFiles(m_folder.InterfacePath(), "*.dat", true);
    const FileInfo info(m_name);
    const bool known = GetFileSize(m_name, found.size) && GetFileWriteTime(m_name, found.time) &&
                       info.Attributes() != FileInfo::INVALID_ATTRIBUTES && finder.NumFiles() == 2;
    found.text = std::to_string(finder.NumFiles());
    return known;
  };
  what.picture = [](Found& found) { return std::to_string(found.size) + " " + found.text; };
  Run(std::move(what), 30);
}

}  // namespace
