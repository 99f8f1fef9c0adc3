// The settings store beside GLib's GKeyFile, on 2 to 2,000 sections of 200 keys: reading from memory,
// look-ups, writing.

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "bench/Compare.h"
#include "bench/MemoryFile.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/platform/CArchive.h"

namespace {

constexpr int kBarSections = 200;
constexpr int kKeys = 200;

std::string SectionName(int section) { return "Section " + std::to_string(section); }
std::string KeyName(int key) { return "Key of item " + std::to_string(key); }

std::string MakeText(int sections) {
  std::string text;
  for (int section = 0; section < sections; ++section) {
    text.append("[").append(SectionName(section)).append("]\n");
    for (int key = 0; key < kKeys; ++key) {
      text += KeyName(key) + " = " + std::to_string(section * 1000 + key) + "\n";
    }
    text += "\n";
  }
  return text;
}

void ReadOurs(FileObject& settings, MemoryFile& file) {
  file.Rewind();
  CArchive archive(&file, CArchive::load, 4096);
  settings.Read(archive);
}

GKeyFile* ReadPeer(const std::string& text) {
  GKeyFile* const settings = g_key_file_new();
  g_key_file_load_from_data(settings, text.data(), text.size(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
  return settings;
}

void CompareLookUps(Comparison& table, int sections, const FileObject& ours, GKeyFile* peer) {
  std::vector<std::pair<std::string, std::string>> names;
  for (int section = 0; section < sections; ++section) {
    for (int key = 0; key < kKeys; ++key) names.emplace_back(SectionName(section), KeyName(key));
  }
  std::shuffle(names.begin(), names.end(), std::mt19937(1));
  table.Row(
      "look-up of a text", static_cast<double>(names.size()), "op", Comparison::BarAt(sections == kBarSections, 1 / 0.6),
      [&] {
        std::string value;
        for (const auto& [section, key] : names) ours.GetItem(section, key, value);
        Keep(value);
      },
      [&] {
        for (const auto& [section, key] : names) {
          char* const value = g_key_file_get_string(peer, section.c_str(), key.c_str(), nullptr);
          Keep(value);
          g_free(value);
        }
      });
  table.Row(
      "look-up of an int", static_cast<double>(names.size()), "op", Comparison::BarAt(sections == kBarSections, 1 / 0.6),
      [&] {
        int sum = 0;
        for (const auto& [section, key] : names) {
          int value = 0;
          ours.GetItem(section, key, value);
          sum += value;
        }
        Keep(sum);
      },
      [&] {
        int sum = 0;
        for (const auto& [section, key] : names) {
          sum += g_key_file_get_integer(peer, section.c_str(), key.c_str(), nullptr);
        }
        Keep(sum);
      });
}

void CompareSaving(Comparison& table, int sections, const FileObject& ours, GKeyFile* peer, const std::string& text) {
  const double bar = Comparison::BarAt(sections == kBarSections, 1.0);
  const auto bytes = static_cast<double>(text.size());
  std::string copy(text.size(), ' ');
  MemoryFile written;
  table.Row(
      "saving to memory", bytes, "B", bar,
      [&] {
        written.Cut();
        CArchive archive(&written, CArchive::store, 4096);
        ours.Write(archive);
      },
      [&] {
        gsize size = 0;
        char* const made = g_key_file_to_data(peer, &size, nullptr);
        Keep(made);
        g_free(made);
      },
      [&] {
        ReadOnce(text);
        WriteOnce(copy);
      });
  const std::string folder = std::filesystem::temp_directory_path().string() + "/";
  const std::string ourFile = folder + "zelbase-bench-ours.ini";
  const std::string peerFile = folder + "zelbase-bench-peer.ini";
  table.Row(
      "saving to a file, in place of the old one", bytes, "B", bar, [&] { ours.FileSaveReplacing(ourFile); },
      [&] {
        gsize size = 0;
        char* const made = g_key_file_to_data(peer, &size, nullptr);
        g_file_set_contents_full(peerFile.c_str(), made, static_cast<gssize>(size),
                                 static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE), 0644,
                                 nullptr);
        g_free(made);
      });
  std::filesystem::remove(ourFile);
  std::filesystem::remove(peerFile);
}

bool Compare(int sections) {
  const std::string text = MakeText(sections);
  const std::string title = "settings store and GKeyFile, " + Grouped(static_cast<std::size_t>(sections)) + " sections of 200 keys";
  Comparison table(title.c_str());
  MemoryFile file(text);
  table.Row(
      "reading", static_cast<double>(text.size()), "B", Comparison::BarAt(sections == kBarSections, 2.0),
      [&] {
        FileObject settings;
        ReadOurs(settings, file);
        Keep(settings);
      },
      [&] { g_key_file_free(ReadPeer(text)); }, [&] { ReadOnce(text); });
  FileObject ours;
  ReadOurs(ours, file);
  GKeyFile* const peer = ReadPeer(text);
  CompareLookUps(table, sections, ours, peer);
  CompareSaving(table, sections, ours, peer, text);
  g_key_file_free(peer);
  return table.Finish() == 0;
}

}  // namespace

int main() { return AtEachSize({2, 20, kBarSections, 2000}, Compare); }
