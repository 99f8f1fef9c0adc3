// Any bytes as a settings text: read by the store and by a slow second reader, written and read again, then worked on with
// operations that the bytes choose, cursors open.

#include <cstdint>
#include <string>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/config/SecondSettingsReader.h"
#include "tests/config/SettingsTestHelp.h"
#include "zelbase/config/SettingsReport.h"

namespace {

// What a text keeps of a store that was itself read from a text: all but the keys that became comments.
Picture WithoutComments(Picture picture) {
  for (auto& [name, items] : picture) std::erase_if(items, [](const auto& item) { return item.first.starts_with(';'); });
  return picture;
}

void CompareReaders(const std::string& text, FileObject& settings) {
  const SecondSettingsReader expected(text);
  Require(ReadFrom(settings, text) == expected.headSeen, "result");
  Require(PictureOf(settings) == expected.sections, "sections");
  Require(settings.GetExtraInfo() == expected.extra, "extra lines");
  SettingsReport report;
  report.ReadText(text);
  Require(report.NumSections() == settings.GetNumSections(), "report");
  for (const SettingsFinding& finding : report.Findings()) SettingsReport::Message(finding);
}

void WriteAndReadAgain(const FileObject& settings) {
  FileObject again;
  ReadFrom(again, WrittenBy(settings));
  Require(PictureOf(again) == WithoutComments(PictureOf(settings)), "sections read again");
  Require(again.GetExtraInfo() == settings.GetExtraInfo(), "extra lines read again");
}

void ReadAllTypes(const FileObject& settings, const std::string& section, const std::string& key) {
  int i = 0;
  unsigned int u = 0;
  long l = 0;
  unsigned long c = 0;
  bool b = false;
  double d = 0;
  float f = 0;
  long long i64 = 0;
  unsigned long long u64 = 0;
  settings.GetItem(section, key, i);
  settings.GetItem(section, key, u);
  settings.GetItem(section, key, l);
  settings.GetItem(section, key, c);
  settings.GetItem(section, key, b);
  settings.GetItem(section, key, d);
  settings.GetItem(section, key, f);
  settings.GetItem(section, key, i64);
  settings.GetItem(section, key, u64);
  Require(c <= 0xFFFFFFFFUL, "a colour has 32 bits");
}

std::string NameOf(const std::vector<std::string>& names, unsigned int choice) {
  return names.empty() ? std::string("new") : names[choice % names.size()];
}

void Operate(FileObject& settings, const std::string& bytes) {
  FobjSection cursors[2];
  std::string name;
  std::string key;
  std::string value;
  for (std::size_t at = 0; at + 1 < bytes.size() && at < 80; at += 2) {
    const auto operation = static_cast<unsigned char>(bytes[at]);
    const auto choice = static_cast<unsigned char>(bytes[at + 1]);
    FobjSection& cursor = cursors[operation & 1U];
    const std::vector<std::string> names = SectionNames(settings);
    const std::string section = NameOf(names, choice);
    const std::string other = NameOf(names, choice / 7U);
    switch ((operation >> 1U) % 11) {
      case 0: settings.GetFirstSectionEntry(cursor, name); break;
      case 1: settings.GetNextSectionEntry(cursor, name); break;
      case 2: settings.GetFirstMapEntry(cursor, section, key, value); break;
      case 3: settings.GetNextMapEntry(cursor, key, value); break;
      case 4: settings.DeleteSection(cursor, section); break;
      case 5: settings.DeleteItem(section, key, choice % 2 == 0); break;
      case 6: settings.RenameSection(section, other + "x"); break;
      case 7: settings.CopySection(other, settings, section); break;
      case 8: settings.CreateSection(cursor, other, choice % 2 == 0); break;
      case 9: settings.SetItem(section, "k" + std::to_string(choice), bytes.substr(0, choice), true); break;
      default: ReadAllTypes(settings, section, key); break;
    }
  }
  const std::size_t listed = SectionNames(settings).size() + (settings.HasSection("Checksum") ? 1U : 0U);
  Require(static_cast<std::size_t>(settings.GetNumSections()) == listed, "the count of sections");
  FileObject copy(settings);
  Picture expected = PictureOf(settings);
  expected.erase("Checksum");
  Require(PictureOf(copy) == expected, "the copy");
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  FileObject settings;
  CompareReaders(text, settings);
  WriteAndReadAgain(settings);
  Operate(settings, text);
}
