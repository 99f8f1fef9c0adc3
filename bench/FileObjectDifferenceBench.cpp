// What it takes to compare two settings files of 2 to 2,000 sections of 200 keys, beside the reading of both from
// memory: a tenth of the values is changed, some keys and sections are new and some gone.

#include <string>

#include "bench/Compare.h"
#include "bench/MemoryFile.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/config/SettingsDifference.h"
#include "zelbase/platform/CArchive.h"

namespace {

constexpr int kBarSections = 200;
constexpr int kKeys = 200;

// The newer file lacks every fiftieth key and the first three sections, and has as many others.
std::string MakeText(int sections, bool newer) {
  std::string text;
  const int first = newer ? 3 : 0;
  for (int section = first; section < first + sections; ++section) {
    text += "[Section " + std::to_string(section) + "]\n";
    for (int key = 0; key < kKeys; ++key) {
      const bool own = key % 50 == 0;
      const bool changed = newer && (section + key) % 10 == 0;
      text += (own && newer ? "New key " : "Key of item ") + std::to_string(key) + " = " +
              std::to_string(section * 1000 + key + (changed ? 1 : 0)) + "\n";
    }
    text += "\n";
  }
  return text;
}

void ReadInto(FileObject& settings, MemoryFile& file) {
  file.Rewind();
  CArchive archive(&file, CArchive::load, 4096);
  settings.Read(archive);
}

bool Compare(int sections) {
  MemoryFile newerFile(MakeText(sections, true));
  MemoryFile olderFile(MakeText(sections, false));
  FileObject newer;
  FileObject older;
  ReadInto(newer, newerFile);
  ReadInto(older, olderFile);
  FileObject made;
  newer.GetDifference(older, made);
  const auto readBoth = [&] {
    FileObject a;
    FileObject b;
    ReadInto(a, newerFile);
    ReadInto(b, olderFile);
    Keep(a);
    Keep(b);
  };
  const double items = 2.0 * sections * kKeys;
  const std::string title = "settings difference (ours) and the reading of both files (peer), " +
                            Grouped(static_cast<std::size_t>(sections)) + " sections of 200 keys";
  Comparison table(title.c_str());
  table.Row(
      "difference", items, "op", Comparison::BarAt(sections == kBarSections, 1.0 / 3.0),
      [&] {
        FileObject difference;
        newer.GetDifference(older, difference);
        Keep(difference);
      },
      readBoth);
  table.Row(
      "comparison of equal files", items, "op", Comparison::kNoBar, [&] { Keep(newer == FileObject(newer)); }, readBoth);
  table.Row(
      "copy and apply", items, "op", Comparison::kNoBar,
      [&] {
        FileObject target(older);
        target.ApplyDifference(made);
        Keep(target);
      },
      readBoth);
  table.Row(
      "listing of the difference", items, "op", Comparison::kNoBar, [&] { Keep(ListSettingsChanges(newer, older)); }, readBoth);
  return table.Finish() == 0;
}

}  // namespace

int main() { return AtEachSize({2, 20, kBarSections, 2000}, Compare); }
