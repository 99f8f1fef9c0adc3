// A change to any bytes as a settings text, by the text editor and by the store: both must come to the same.
//
// The input: the operation, the lengths of three texts, a flag (one byte each), the texts, and the rest is the settings text.

#include <cstdint>
#include <string>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/config/SettingsTestHelp.h"
#include "zelbase/config/SettingsTextEditor.h"

namespace {

struct Change {
  unsigned int operation = 0;
  std::string a;
  std::string b;
  std::string c;
  bool flag = false;
};

bool Edit(SettingsTextEditor& editor, const Change& change) {
  switch (change.operation) {
    case 0: return editor.SetItem(change.a, change.b, change.c, change.flag);
    case 1: return editor.DeleteItem(change.a, change.b, change.flag);
    case 2: return editor.RenameItem(change.a, change.b, change.c);
    case 3: return editor.CreateSection(change.a);
    case 4: return editor.DeleteSection(change.a);
    case 5: return editor.RenameSection(change.a, change.b);
    default: return editor.CopySection(change.a, change.b);
  }
}

bool RenameKey(FileObject& settings, const Change& change) {
  std::string value;
  return settings.GetItem(change.a, change.b, value) && settings.DeleteItem(change.a, change.b, false) &&
         settings.SetItem(change.a, change.c, value, true);
}

bool Apply(FileObject& settings, const Change& change) {
  switch (change.operation) {
    case 0: return settings.SetItem(change.a, change.b, change.c, change.flag);
    case 1: return settings.DeleteItem(change.a, change.b, change.flag);
    case 2: return RenameKey(settings, change);
    case 3: return settings.CreateSection(change.a, false);
    case 4: return settings.DeleteSection(change.a);
    case 5: return settings.RenameSection(change.a, change.b);
    default: return settings.CopySection(change.a, settings, change.b);
  }
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  if (size < 5) return;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::size_t at = 5;
  const auto take = [&](std::uint8_t length) {
    const std::string text = bytes.substr(std::min(at, size), length % 16U);
    at += text.size();
    return text;
  };
  Change change;
  change.operation = data[0] % 7U;
  change.a = take(data[1]);
  change.b = take(data[2]);
  change.c = take(data[3]);
  change.flag = data[4] % 2 == 1;
  const std::string text = bytes.substr(std::min(at, size));

  SettingsTextEditor editor(text);
  const bool edited = Edit(editor, change);
  Require(edited == editor.Reason().empty(), "a reason for every refusal and for nothing else");
  if (!edited) {
    Require(editor.Text() == text, "a refusal changes nothing");
    return;
  }
  FileObject settings;
  ReadFrom(settings, text);
  Require(Apply(settings, change), "the store can do what the editor can");
  FileObject back;
  ReadFrom(back, editor.Text());
  Require(PictureOf(back) == PictureOf(settings), "sections");
  Require(back.GetExtraInfo() == settings.GetExtraInfo(), "extra lines");
}
