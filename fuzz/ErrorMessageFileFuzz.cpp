// Any bytes as the file of wordings: every item that a slow second reader finds in it is found, and each error words itself from
// it, or from its built-in text, with its arguments put in one character at a time. The file lies in memory.

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/MemoryFiles.h"
#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/config/SecondSettingsReader.h"
#include "zelbase/errors/DaxError.h"
#include "zelbase/errors/ErrorMessageFile.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/FileObjectError.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/units/Translator.h"

namespace {

// English, whatever the computer is set to, so that the wording comes from the fuzzer alone.
void ChooseEnglish() {
  FixedFolders folders;
  const PlatformOverride<PlatformFolders> guard(folders);
  Require(!Translator::Instance().IsLanguageForeign(), "English");
}

std::string Filled(const std::string& text, const std::vector<std::string>& arguments) {
  std::string filled;
  std::size_t next = 0;
  bool percent = false;
  for (const char c : text) {
    if (!percent && c == '%') {
      percent = true;
      continue;
    }
    if (percent && c == 's') {
      filled += next < arguments.size() ? arguments[next] : std::string();
      ++next;
    } else {
      if (percent && c != '%') filled += '%';
      filled += c;
    }
    percent = false;
  }
  return percent ? filled + '%' : filled;
}

// A wording that the file should give.
class Wordings {
 public:
  explicit Wordings(const std::string& text) : m_file(text) {}

  std::string Of(const char* section, const char* key, const char* otherwise) const {
    const auto place = m_file.sections.find(section);
    if (place == m_file.sections.end() || !place->second.contains(key)) return otherwise;
    return place->second.at(key);
  }

  void CheckItems() const {
    for (const auto& [section, items] : m_file.sections) {
      for (const auto& [key, value] : items) {
        std::string found = "before";
        Require(ErrorMessageFile::Get().Get(section, key, found) && found == value, "an item of the file");
      }
      std::string untouched = "before";
      Require(items.contains("none ") || !ErrorMessageFile::Get().Get(section, "none ", untouched), "no such key");
      Require(untouched == "before", "a miss leaves the text alone");
    }
  }

 private:
  SecondSettingsReader m_file;
};

void CheckErrors(const Wordings& wordings, const std::string& name) {
  const std::string path = "C:\\data\\" + name;
  const FileError open(path, FileError::Open);
  const FileError read(path, FileError::Read);
  const FileError write(path, FileError::Write);
  Require(open.Type() == wordings.Of("FileError", "Type", "File IO Error"), "the title of a file error");
  Require(open.Format() == Filled(wordings.Of("File Error", "Open", "Error opening \"%s\"."), {name}), "an opening");
  Require(read.Format() == Filled(wordings.Of("File Error", "Read", "Error reading from \"%s\"."), {name}), "a reading");
  Require(write.Format() == Filled(wordings.Of("File Error", "Write", "Error writing to \"%s\"."), {name}), "a writing");

  const char* const settings = "FileObject Error";
  const FileObjectError section(path, "Part", FileObjectError::SectionNotFound);
  const FileObjectError key(path, "Part", "Key", FileObjectError::KeyNotFound);
  const std::string noSection = wordings.Of(settings, "SectionNotFound", "Section \"%s\" could not be found in \"%s\".");
  const std::string noKey = wordings.Of(settings, "KeyNotFound", "The key \"%s\" could not be found in section \"%s\" of \"%s\".");
  Require(section.Type() == wordings.Of(settings, "Type", "Configuration File Error"), "the title of a settings error");
  Require(section.Format() == Filled(noSection, {"Part", name}), "a section");
  Require(key.Format() == Filled(noKey, {"Key", "Part", name}), "a key");

  const struct {
    DaxError::DAXCODE code;
    const char* key;
    const char* otherwise;
  } rows[] = {{DaxError::Interpolate, "Interpolate", "Interpolation error \"%s\"."},
              {DaxError::Extrapolate, "Extrapolate", "Extrapolation error \"%s\"."},
              {DaxError::Read, "Read", "Error reading from \"%s\"."},
              {DaxError::Comp, "Comp", "Computation failed \"%s\"."}};
  for (const auto& row : rows) {
    const DaxError error(path, row.code, "file", true, 0.0);
    Require(error.Type() == wordings.Of("Dax Error", "Type", "Dax Error"), "the title of a data error");
    Require(error.Format() == Filled(wordings.Of("Dax Error", row.key, row.otherwise), {path}), "a data error");
  }
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  static const bool english = (ChooseEnglish(), true);
  const std::string text(reinterpret_cast<const char*>(data), size);
  MemoryFiles memory;
  memory.files["messages"] = text;
  const PlatformOverride<PlatformFiles> guard(memory);
  const bool opens = ErrorMessageFile::Get().Open("messages");
  Require(english && opens && ErrorMessageFile::Get().IsOpen(), "any file opens");
  const Wordings wordings(text);
  wordings.CheckItems();
  // The front of the file is the name of another, and holds what a format would trip over.
  std::string name = text.substr(0, 20);
  for (char& c : name) {
    if (c == '\\' || c == '/' || c == ':') c = '%';
  }
  CheckErrors(wordings, name);
}
