// Saves that put a new file in the old one's place, with the power cut, or the process killed, anywhere in between: the old text
// or the new one is there whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>
#include <string>

#include "tests/config/SettingsTestHelp.h"
#include "tests/faults/CrashStates.h"
#include "tests/faults/SystemCallFaults.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/Effort.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/config/SettingsTextEditor.h"
#include "zelbase/sonar/TideFile.h"

namespace {

// What a save does, and the texts before and after it.
struct Recording {
  DiskContent before;
  std::vector<DiskChange> changes;
  std::string newText;
};

FileObject Sample(std::size_t length, char filling) {
  FileObject settings;
  settings.SetItem("A", "k", 1, true);
  settings.SetItem("A", "long", std::string(length, filling), true);
  return settings;
}

class PowerCut : public testing::Test {
 protected:
  // `old`: the text in the file before, none when it is missing.
  Recording Record(const std::optional<std::string>& old, const std::function<bool()>& save) {
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) std::filesystem::remove(entry.path());
    Recording recording;
    if (old.has_value()) recording.before[m_folder.Write("a", *old)] = *old;
    SystemCallFaults calls;
    EXPECT_TRUE(save());
    recording.changes = calls.Changes();
    recording.newText = m_folder.Read("a");
    return recording;
  }

  // States of the disk in which the file is neither as before nor as after, over all moments of the recording.
  unsigned long long CountBroken(const Recording& recording, std::size_t from = 0) {
    unsigned long long broken = 0;
    m_states = 0;
    for (std::size_t done = from; done <= recording.changes.size(); ++done) {
      m_states += ForEachCrashState(recording.before, recording.changes, done, [&](const DiskContent& disk) {
        if (!IsOldOrNew(recording, disk)) ++broken;
      });
    }
    return broken;
  }

  bool IsOldOrNew(const Recording& recording, const DiskContent& disk) const {
    const auto found = disk.find(m_name);
    if (found != disk.end() && found->second == recording.newText) return true;
    const auto old = recording.before.find(m_name);
    if (old == recording.before.end()) return found == disk.end();
    return found != disk.end() && found->second == old->second;
  }

  // Once the save has said that it is done, it is.
  void ExpectLasting(const Recording& recording) const {
    ForEachCrashState(recording.before, recording.changes, recording.changes.size(), [&](const DiskContent& disk) {
      const auto found = disk.find(m_name);
      EXPECT_TRUE(found != disk.end() && found->second == recording.newText);
    });
  }

  void ExpectWhole(const Recording& recording) {
    EXPECT_EQ(CountBroken(recording), 0u);
    EXPECT_GE(m_states, 20u);
    ExpectLasting(recording);
  }

  TemporaryFolder m_folder;
  const std::string m_name = m_folder.File("a");
  unsigned long long m_states = 0;
};

TEST_F(PowerCut, SettingsAreTheOldOnesOrTheNewOnes) {
  const FileObject settings = Sample(9000, 'x');
  for (const auto& old : {std::optional<std::string>("[Old]\r\nk = 1\r\n"), std::optional<std::string>()}) {
    const Recording recording = Record(old, [&] { return settings.FileSaveReplacing(m_name); });
    ExpectWhole(recording);
    EXPECT_GT(m_states, 300u);
  }
}

TEST_F(PowerCut, EditedTextsAreTheOldOnesOrTheNewOnes) {
  const Recording recording = Record("[A]\nk=1\n", [&] {
    SettingsTextEditor editor;
    return editor.FileOpen(m_name) && editor.SetItem("A", "k", "2", false) && editor.FileSaveReplacing("");
  });
  EXPECT_EQ(recording.newText, "[A]\nk=2\n");
  ExpectWhole(recording);
}

TEST_F(PowerCut, TidesAreTheOldOnesOrTheNewOnes) {
  const Recording recording = Record(std::string(32, '\0'), [&] {
    TideFile tide;
    if (!tide.FileOpen(m_name, false)) return false;
    for (int i = 0; i < 9000; ++i) tide.AddTideValue(i, 1.0);  // three blocks
    return tide.FileSave();
  });
  EXPECT_EQ(recording.newText.size(), 9000u * 16);
  ExpectWhole(recording);
}

// The state in which a power cut leaves a folder is one to go on from: the settings open, and the next save works.
TEST_F(PowerCut, WorkGoesOnAfterwards) {
  const FileObject settings = Sample(5000, 'x');
  const Recording recording = Record("[Old]\r\nk = 1\r\n", [&] { return settings.FileSaveReplacing(m_name); });
  std::vector<DiskContent> seen;
  for (std::size_t done = 0; done <= recording.changes.size(); ++done) {
    ForEachCrashState(recording.before, recording.changes, done, [&](const DiskContent& disk) {
      if (std::find(seen.begin(), seen.end(), disk) == seen.end()) seen.push_back(disk);
    });
  }
  EXPECT_GT(seen.size(), 10u);
  for (const DiskContent& disk : seen) {
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) std::filesystem::remove(entry.path());
    for (const auto& [path, bytes] : disk) m_folder.Write(std::filesystem::path(path).filename().string(), bytes);
    FileObject read;
    EXPECT_TRUE(read.FileOpen(m_name, CFile::modeRead));
    EXPECT_TRUE(read.HasSection("Old") || read.HasSection("A"));
    EXPECT_TRUE(settings.FileSaveReplacing(m_name));
    EXPECT_EQ(m_folder.Read("a"), recording.newText);
  }
}

// The states would show it if a save were not made so.
TEST_F(PowerCut, ASaveThatWritesOverTheFileIsSeenToBreakIt) {
  const FileObject settings = Sample(9000, 'x');
  const Recording recording = Record("[Old]\r\n", [&] { return settings.FileSave(m_name, CFile::modeCreate | CFile::modeWrite); });
  EXPECT_GT(CountBroken(recording), 100u);
}

TEST_F(PowerCut, ASaveThatForcesNothingOutIsSeenToBreakIt) {
  const FileObject settings = Sample(9000, 'x');
  Recording recording = Record("[Old]\r\n", [&] { return settings.FileSaveReplacing(m_name); });
  std::erase_if(recording.changes, [](const DiskChange& change) { return change.kind == DiskChange::Kind::Sync; });
  EXPECT_GT(CountBroken(recording), 100u);
}

TEST_F(PowerCut, ASaveThatDoesNotForceTheFolderOutIsSeenNotToLast) {
  const FileObject settings = Sample(100, 'x');
  Recording recording = Record("[Old]\r\n", [&] { return settings.FileSaveReplacing(m_name); });
  std::erase_if(recording.changes, [](const DiskChange& change) { return change.kind == DiskChange::Kind::SyncFolder; });
  bool lost = false;
  ForEachCrashState(recording.before, recording.changes, recording.changes.size(),
                    [&](const DiskContent& disk) { lost = lost || disk.at(m_name) == "[Old]\r\n"; });
  EXPECT_TRUE(lost);
}

class KilledSaveLong : public testing::Test {
 protected:
  void RemoveOthers() const {
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) {
      if (entry.path().filename() != "a.ini") std::filesystem::remove(entry.path());
    }
  }

  TemporaryFolder m_folder;
  const std::string m_name = m_folder.File("a.ini");
};

// At each call of the system, and within each write, until 1,000 have died.
TEST_F(KilledSaveLong, AtEveryPlaceOfASave) {
  const FileObject older = Sample(300000, 'o');
  const FileObject newer = Sample(330000, 'n');
  const std::string newText = WrittenBy(newer);
  ASSERT_TRUE(older.FileSaveReplacing(m_name));
  const std::string oldText = m_folder.Read("a.ini");
  struct Place {
    unsigned long long call;
    std::size_t bytes;
  };
  std::vector<Place> places;
  ASSERT_TRUE(older.FileSaveReplacing(m_folder.File("b.ini")));
  {
    SystemCallFaults calls;
    ASSERT_TRUE(newer.FileSaveReplacing(m_folder.File("b.ini")));
    for (unsigned long long call = 1; call <= calls.Count(); ++call) places.push_back({call, 0});
    for (const auto& [call, size] : calls.Writes()) {
      for (std::size_t part = 1; part <= 11; ++part) places.push_back({call, size * part / 11});
    }
  }
  ASSERT_GE(places.size(), 1000u);
  std::mt19937 random(20260504);
  std::shuffle(places.begin(), places.end(), random);
  places.resize(static_cast<std::size_t>(Effort(static_cast<long long>(places.size()), 150)));
  int replaced = 0;
  for (const Place& place : places) {
    ChildProcess child([&] {
      SystemCallFaults calls;
      calls.DieAt(place.call, place.bytes);
      return newer.FileSaveReplacing(m_name) ? 1 : 2;
    });
    ASSERT_EQ(child.Wait(), -9) << place.call;
    const std::string text = m_folder.Read("a.ini");
    ASSERT_TRUE(text == oldText || text == newText) << place.call << " " << place.bytes << ": " << text.size() << " bytes";
    if (text == newText) {
      ++replaced;
      ASSERT_TRUE(older.FileSaveReplacing(m_name));
    }
    RemoveOthers();
  }
  EXPECT_GE(replaced, runsSanitized ? 0 : 1);
  EXPECT_LT(replaced, static_cast<int>(places.size()));
}

// The child saves one and the other, again and again, until it is killed at no particular moment; meanwhile the file is read.
TEST_F(KilledSaveLong, AtAnyMomentWhileTheFileIsRead) {
  const FileObject one = Sample(20000, '1');
  const FileObject other = Sample(30000, '2');
  const std::string oneText = WrittenBy(one);
  const std::string otherText = WrittenBy(other);
  ASSERT_TRUE(one.FileSaveReplacing(m_name));
  std::mt19937 random(19840101);
  const long long kills = Effort(1000, 100);
  for (long long round = 0; round < kills; ++round) {
    {
      ChildProcess child([&](ChildProcess::Turns& turns) {
        turns.Tell();
        for (;;) {
          if (!one.FileSaveReplacing(m_name) || !other.FileSaveReplacing(m_name)) return 1;
        }
      });
      ASSERT_TRUE(child.Await());
      for (auto reads = random() % 20; reads > 0; --reads) {
        const std::string text = m_folder.Read("a.ini");
        ASSERT_TRUE(text == oneText || text == otherText) << round << ": " << text.size() << " bytes";
      }
    }  // killed
    const std::string text = m_folder.Read("a.ini");
    ASSERT_TRUE(text == oneText || text == otherText) << round << ": " << text.size() << " bytes";
    RemoveOthers();
  }
}

}  // namespace
