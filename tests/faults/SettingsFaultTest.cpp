// The settings store and its relatives, with everything under them failing in turn: memory, the system's calls, the file service.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/config/SettingsTestHelp.h"
#include "tests/faults/FaultRuns.h"
#include "zelbase/colour/ColorTable.h"
#include "zelbase/config/DisplaysFile.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/config/SettingsDifference.h"
#include "zelbase/config/SettingsReport.h"
#include "zelbase/config/SettingsTextEditor.h"
#include "zelbase/config/detail/QuietOpen.h"
#include "zelbase/geometry/VesselContour.h"
#include "zelbase/units/UnitDefinition.h"

namespace {

constexpr unsigned int kRead = CFile::modeRead | CFile::shareDenyWrite;
constexpr unsigned int kCreate = CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive;

// More than two blocks of the archive's buffer.
std::string SampleText() { return "first\r\n[Ship]\r\nname=Noordster\r\ndraught=2.5\r\n[Long]\r\nkey=" + std::string(9000, 'x') + "\r\n"; }

std::string Shown(const FileObject& settings) {
  std::string text = settings.GetFileName() + (settings.FileInitialised() ? " read\n" : "\n");
  for (const std::string& line : settings.GetExtraInfo()) text += line + "\n";
  for (const auto& [section, items] : PictureOf(settings)) {
    text += "[" + section + "]\n";
    for (const auto& [key, value] : items) text += key + "=" + value + "\n";
  }
  return text;
}

class SettingsFaultsLong : public FaultFixture {
 protected:
  std::unique_ptr<FileObject> Sample() const {
    auto settings = std::make_unique<FileObject>();
    ReadFrom(*settings, SampleText());
    settings->SetFileName(m_name);
    return settings;
  }

  const std::string m_name = m_folder.File("a.ini");
};

TEST_F(SettingsFaultsLong, Opening) {
  FaultCase<FileObject> what;
  what.prepare = [&] { m_folder.Write("a.ini", SampleText()); };
  what.make = [] {
    auto settings = std::make_unique<FileObject>();
    settings->SetItem("Old", "k", 1, true);
    settings->SetFileName("old.ini");
    return settings;
  };
  what.run = [&](FileObject& settings) { return settings.FileOpen(m_name, kRead); };
  what.picture = Shown;
  what.mayThrow = true;
  what.afterFailure = [&](FileObject& settings, RunEnd end, const std::string&) {
    EXPECT_FALSE(settings.FileInitialised());
    if (end == RunEnd::False) {
      EXPECT_EQ(settings.GetErrorStatus(), FOBJ_OPEN_FAILED);
      EXPECT_EQ(Shown(settings), "\n");
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 1);
    } else if (end == RunEnd::FileException) {
      EXPECT_EQ(settings.GetFileName(), m_name);
      EXPECT_FALSE(settings.HasSection("Old"));
    }
  };
  Run(std::move(what), 30);
}

TEST_F(SettingsFaultsLong, OpeningQuietly) {
  FaultCase<FileObject> what;
  what.prepare = [&] { m_folder.Write("a.ini", SampleText()); };
  what.make = [&] { return Sample(); };
  what.run = [&](FileObject& settings) { return zelbase::detail::OpenQuietly(settings, m_name); };
  what.picture = Shown;
  what.afterFailure = [](FileObject& settings, RunEnd end, const std::string&) {
    EXPECT_FALSE(settings.FileInitialised());
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
    if (end == RunEnd::False) {
      EXPECT_EQ(Shown(settings), "\n");
    }
  };
  Run(std::move(what), 30);
}

TEST_F(SettingsFaultsLong, Saving) {
  FaultCase<FileObject> what;
  what.make = [&] { return Sample(); };
  what.run = [&](FileObject& settings) { return settings.FileSave("", kCreate); };
  what.picture = [&](FileObject& settings) { return Shown(settings) + m_folder.Read("a.ini"); };
  what.afterFailure = [&](FileObject& settings, RunEnd end, const std::string&) {
    EXPECT_EQ(Shown(settings), Shown(*Sample()));
    if (end != RunEnd::False) return;
    EXPECT_TRUE(settings.GetErrorStatus() == FOBJ_OPEN_FAILED || settings.GetErrorStatus() == FOBJ_WRITE_FAILED);
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 1);
  };
  Run(std::move(what), 30);
}

// Whatever fails, the target has the old text or the new one; the old one when the answer is no, but where only the folder's
// entry could not be forced out.
TEST_F(SettingsFaultsLong, SavingInPlaceOfTheOldFile) {
  for (const bool present : {true, false}) {
    FaultCase<FileObject> what;
    what.prepare = [&, present] {
      if (present) m_folder.Write("a.ini", "old");
    };
    what.make = [&] { return Sample(); };
    what.run = [&](FileObject& settings) { return settings.FileSaveReplacing(""); };
    what.picture = [&](FileObject& settings) { return Shown(settings) + m_folder.Read("a.ini"); };
    what.afterFailure = [&, present](FileObject& settings, RunEnd end, const std::string&) {
      EXPECT_EQ(Shown(settings), Shown(*Sample()));
      const std::string text = m_folder.Read("a.ini");
      EXPECT_TRUE(text == (present ? "old" : "") || text == WrittenBy(*Sample())) << text.size() << " bytes";
      if (end != RunEnd::False) return;
      EXPECT_TRUE(settings.GetErrorStatus() == FOBJ_OPEN_FAILED || settings.GetErrorStatus() == FOBJ_WRITE_FAILED);
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 1);
    };
    Run(std::move(what), 30);
  }
}

TEST_F(SettingsFaultsLong, CopyingAndAssigning) {
  struct Pair {
    std::unique_ptr<FileObject> source;
    FileObject copy;
  };
  FaultCase<Pair> what;
  what.make = [&] {
    auto pair = std::make_unique<Pair>();
    pair->source = Sample();
    pair->copy.SetItem("Old", "k", 1, true);
    return pair;
  };
  what.run = [](Pair& pair) {
    const FileObject copy(*pair.source);
    pair.copy = copy;
    return pair.copy == *pair.source;
  };
  what.picture = [](Pair& pair) { return Shown(*pair.source) + Shown(pair.copy); };
  what.strong = true;
  RunMemory(std::move(what), 4);
}

TEST_F(SettingsFaultsLong, CopyingASection) {
  for (const char* const present : {"[A]\nk=1\n", "[Ship]\nname=Zuiderkruis\nlength=40\n"}) {
    for (const bool emptied : {false, true}) {
      FaultCase<FileObject> what;
      what.make = [&] {
        auto settings = std::make_unique<FileObject>();
        ReadFrom(*settings, present);
        return settings;
      };
      const std::unique_ptr<FileObject> source = Sample();
      what.run = [&](FileObject& settings) {
        return emptied ? settings.CopySection("Ship", *source, "Ship") : settings.CopySection("Ship", *source);
      };
      what.picture = Shown;
      what.strong = true;
      RunMemory(std::move(what), 4);
    }
  }
}

// Enough of them for the tables to be tidied on the way, which needs memory that they can do without.
TEST_F(SettingsFaultsLong, DeletingAndRenaming) {
  FaultCase<FileObject> what;
  what.make = [] {
    auto settings = std::make_unique<FileObject>();
    for (int i = 0; i < 60; ++i) {
      settings->SetItem("Items", "key " + std::to_string(i), std::string(200, 'x'), true);
      settings->SetItem("Section " + std::to_string(i), "k", i, true);
    }
    return settings;
  };
  what.run = [](FileObject& settings) {
    for (int i = 0; i < 50; ++i) {
      if (settings.HasSection("Section " + std::to_string(i))) settings.DeleteSection("Section " + std::to_string(i));
      if (settings.HasKey("Items", "key " + std::to_string(i))) settings.DeleteItem("Items", "key " + std::to_string(i), false);
    }
    if (settings.HasSection("Section 50")) settings.RenameSection("Section 50", "Section 51");
    std::string value;
    return settings.GetNumSections() == 10 && settings.GetItem("Items", "key 59", value) && value == std::string(200, 'x') &&
           settings.GetItem("Section 51", "k", value) && value == "50";
  };
  what.picture = Shown;
  what.afterFailure = [](FileObject& settings, RunEnd, const std::string&) {
    EXPECT_EQ(PictureOf(settings).size(), static_cast<std::size_t>(settings.GetNumSections()));
    EXPECT_TRUE(settings.HasKey("Items", "key 59"));
    EXPECT_TRUE(settings.HasSection("Section 51"));
  };
  RunMemory(std::move(what), 4);
}

TEST_F(SettingsFaultsLong, Difference) {
  struct Three {
    std::unique_ptr<FileObject> newer;
    FileObject older;
    FileObject difference;
    SettingsChanges changes;
  };
  FaultCase<Three> what;
  what.make = [&] {
    auto three = std::make_unique<Three>();
    three->newer = Sample();
    ReadFrom(three->older, "[Ship]\nname=Zuiderkruis\nlength=40\n[Gone]\nk=1\n");
    return three;
  };
  what.run = [](Three& three) {
    three.changes = ListSettingsChanges(*three.newer, three.older);
    three.difference.MakeEmpty();
    if (!three.newer->GetDifference(three.older, three.difference)) return false;
    FileObject patched(three.older);
    return patched.ApplyDifference(three.difference) && PictureOf(patched)["Ship"]["name"] == "Noordster";
  };
  what.picture = [](Three& three) {
    return Shown(*three.newer) + Shown(three.older) + Shown(three.difference) + std::to_string(three.changes.size());
  };
  what.afterFailure = [&](Three& three, RunEnd, const std::string&) { EXPECT_EQ(Shown(*three.newer), Shown(*Sample())); };
  RunMemory(std::move(what), 4);
}

TEST_F(SettingsFaultsLong, TextEditorOpens) {
  FaultCase<SettingsTextEditor> what;
  what.prepare = [&] {
    m_folder.Write("a.ini", SampleText());
    m_folder.Write("b.ini", "[B]\n");
  };
  what.make = [&] {
    auto editor = std::make_unique<SettingsTextEditor>();
    editor->FileOpen(m_folder.File("b.ini"));
    return editor;
  };
  what.run = [&](SettingsTextEditor& editor) { return editor.FileOpen(m_name); };
  what.picture = [](SettingsTextEditor& editor) { return editor.Text() + "\n" + editor.Reason(); };
  what.afterFailure = [&](SettingsTextEditor& editor, RunEnd end, const std::string&) {
    EXPECT_EQ(editor.Text(), "[B]\n");
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
    if (end == RunEnd::False) {
      EXPECT_NE(editor.Reason(), "");
    }
    // The name is still that of the text: what is saved goes where it came from.
    EXPECT_TRUE(editor.SetItem("B", "k", "1", false));
    EXPECT_TRUE(editor.FileSaveReplacing(""));
    EXPECT_NE(m_folder.Read("b.ini").find("k = 1"), std::string::npos);
    EXPECT_EQ(m_folder.Read("a.ini"), SampleText());
  };
  Run(std::move(what), 30);
}

TEST_F(SettingsFaultsLong, TextEditorChangesAndSaves) {
  FaultCase<SettingsTextEditor> what;
  what.prepare = [&] { m_folder.Write("a.ini", SampleText()); };
  what.make = [&] {
    auto editor = std::make_unique<SettingsTextEditor>();
    editor->FileOpen(m_name);
    return editor;
  };
  what.run = [](SettingsTextEditor& editor) {
    return editor.SetItem("Ship", "draught", "3.5", false) && editor.SetItem("New", "a", "b", true) && editor.FileSaveReplacing("");
  };
  what.picture = [&](SettingsTextEditor& editor) { return editor.Text() + m_folder.Read("a.ini"); };
  what.afterFailure = [&](SettingsTextEditor& editor, RunEnd end, const std::string&) {
    const std::string text = m_folder.Read("a.ini");
    EXPECT_TRUE(text == SampleText() || text == editor.Text());
    if (end == RunEnd::False) {
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 1);
    }
  };
  Run(std::move(what), 30);
}

TEST_F(SettingsFaultsLong, Report) {
  FaultCase<SettingsReport> what;
  what.prepare = [&] { m_folder.Write("a.ini", SampleText() + "[Ship]\nno separator\nurl=http://x\n"); };
  what.run = [&](SettingsReport& report) { return report.ReadFile(m_name); };
  what.picture = [](SettingsReport& report) {
    std::string text = std::to_string(report.NumLines()) + "," + std::to_string(report.NumItems()) + "\n";
    for (const SettingsFinding& finding : report.Findings()) text += SettingsReport::Message(finding) + "\n";
    return text;
  };
  what.afterFailure = [](SettingsReport& report, RunEnd end, const std::string&) {
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
    if (end != RunEnd::False) return;
    EXPECT_TRUE(report.Findings().empty());
    EXPECT_EQ(report.NumLines(), 0);
  };
  Run(std::move(what), 30);
}

TEST_F(SettingsFaultsLong, DisplaysFile) {
  FaultCase<DisplaysFile> what;
  what.prepare = [&] { m_folder.Write("a.ini", "[PlanView]\nk=" + std::string(9000, 'x') + "\n"); };
  what.run = [&](DisplaysFile& displays) {
    DisplaysFile::ERRINFO error;
    displays.GetError(error);  // else a failure before is remembered
    return displays.ReadFromDisk(m_name);
  };
  what.make = [] { return std::make_unique<::DisplaysFile>(); };
  what.picture = [](DisplaysFile& displays) { return Shown(displays); };
  what.mayThrow = true;
  what.afterFailure = [](DisplaysFile& displays, RunEnd end, const std::string&) {
    DisplaysFile::ERRINFO error;
    displays.GetError(error);
    if (end == RunEnd::False) {
      EXPECT_EQ(error.code, 1);
    }
  };
  Run(std::move(what), 30);
}

TEST_F(SettingsFaultsLong, UnitCatalogue) {
  FaultCase<UnitDefinition> what;
  what.prepare = [&] {
    m_folder.Write("a.ini", "[Distance Units]\nMetre=1,m,Metres\nFoot=0.3048,ft,Feet\n" + std::string(5000, ';') + "\n");
  };
  what.run = [&](UnitDefinition& units) {
    if (!units.FileOpen(m_name, kRead)) return false;
    std::string key, name, mnemonic;
    double factor = 0.0;
    double offset = 0.0;
    units.GetFirstGroupItem(0, key, name, factor, offset, mnemonic);
    const UnitDefinition copy(units);
    return copy.FileInitialised();
  };
  what.picture = [](UnitDefinition& units) { return Shown(units); };
  what.mayThrow = true;
  Run(std::move(what), 30);
}

// A table goes through a store in memory and that through a file.
TEST_F(SettingsFaultsLong, ColourTable) {
  FaultCase<ColorTable> what;
  what.make = [] {
    auto table = std::make_unique<ColorTable>();
    for (int i = 0; i < 5; ++i) table->AddEntry(i, static_cast<COLORREF>(i * 1000), false, "entry");
    return table;
  };
  what.run = [&](ColorTable& table) {
    FileObject settings;
    if (!table.FileSave(settings) || !settings.FileSaveReplacing(m_name)) return false;
    FileObject again;
    ColorTable read;
    if (!again.FileOpen(m_name, kRead) || !read.FileOpen(again)) return false;
    table = read;
    return table.NumEntries() == 5;
  };
  what.picture = [](ColorTable& table) {
    std::string text = std::to_string(table.NumEntries());
    for (int i = 0; i < table.NumEntries(); ++i) text += " " + std::to_string(table.EntryColor(i)) + table.EntryName(i);
    return text;
  };
  what.mayThrow = true;
  what.afterFailure = [&](ColorTable& table, RunEnd, const std::string&) { EXPECT_EQ(table.NumEntries(), 5); };
  Run(std::move(what), 30);
}

std::string ContourShown(VesselContour& contour) {
  long color = 0;
  long width = 0;
  contour.GetPenColor(color);
  contour.GetPenWidth(width);
  std::string text = std::to_string(color) + "/" + std::to_string(width);
  for (int i = 1; i <= contour.GetSize(); ++i) {
    VesselPoint point;
    contour.GetPoint(i, point);
    text += " " + std::to_string(point.x) + "," + std::to_string(point.y);
  }
  return text;
}

TEST_F(SettingsFaultsLong, VesselContourOpens) {
  FaultCase<VesselContour> what;
  what.prepare = [&] {
    m_folder.Write("a.ini", "[DRAW]\nPenWidth=3\nPenColor=255\n[POINTS]\nPoint(1)=1.0,2.0,1\nPoint(2)=3.0,4.0,0\n[Rest]\nk=" +
                                std::string(5000, 'x') + "\n");
  };
  what.run = [&](VesselContour& contour) { return contour.Create(m_name, 0); };
  what.picture = ContourShown;
  what.afterFailure = [](VesselContour& contour, RunEnd end, const std::string&) {
    // A pointed hull stands in whole, or not at all.
    if (end == RunEnd::False) {
      EXPECT_EQ(contour.GetSize(), 6);
    }
  };
  Run(std::move(what), 30);
}

TEST_F(SettingsFaultsLong, VesselContourSaves) {
  FaultCase<VesselContour> what;
  what.make = [] {
    auto contour = std::make_unique<VesselContour>();
    for (int i = 0; i < 5; ++i) contour->AddPoint(VesselPoint(Point(i, 2 * i, 0), false, false));
    return contour;
  };
  what.run = [&](VesselContour& contour) { return contour.Save(m_name); };
  what.picture = [&](VesselContour& contour) { return ContourShown(contour) + m_folder.Read("a.ini"); };
  what.afterFailure = [](VesselContour& contour, RunEnd, const std::string& before) { EXPECT_EQ(ContourShown(contour), before); };
  Run(std::move(what), 30);
}

}  // namespace
