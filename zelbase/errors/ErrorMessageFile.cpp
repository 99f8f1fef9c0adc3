#include "zelbase/errors/ErrorMessageFile.h"

#include <string_view>
#include <utility>

#include "zelbase/errors/ErrorWording.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/units/Translator.h"

namespace {

class FileWording : public ErrorWording {
 public:
  bool Get(const std::string& section, const std::string& key, std::string& text) const override {
    return ErrorMessageFile::Get().Get(section, key, text);
  }
};

}  // namespace

ErrorMessageFile::ErrorMessageFile() : m_file(std::make_unique<FileObject>()) {}

// The object stays where it is when the process ends: whatever formats an error late still asks it.
ErrorMessageFile& ErrorMessageFile::Get() {
  static ErrorMessageFile& object = *new ErrorMessageFile;
  return object;
}

bool ErrorMessageFile::Open(const std::string& fileName) {
  Exchange(std::make_unique<FileObject>());  // Kept: what was open is gone before the new file is tried
  auto file = std::make_unique<FileObject>();
  if (!file->FileOpen(fileName, CFile::modeRead | CFile::shareDenyWrite)) return false;
  auto wording = std::make_shared<FileWording>();
  Exchange(std::move(file));
  ErrorWording::Install(std::move(wording));
  return true;
}

bool ErrorMessageFile::IsOpen() const {
  const LockGuard guard(m_lock);
  return m_file->FileInitialised();
}

// The former file is not destroyed under the lock.
void ErrorMessageFile::Exchange(std::unique_ptr<FileObject> file) {
  const LockGuard guard(m_lock);
  m_file.swap(file);
}

bool ErrorMessageFile::Find(const std::string& section, const std::string& key, std::string& text) const {
  const LockGuard guard(m_lock);
  std::string_view found;
  if (!m_file->Peek(section, key, found)) return false;
  text = found;
  return true;
}

bool ErrorMessageFile::Get(const std::string& section, const std::string& key, std::string& text) const {
  std::string found;
  // Kept: what the file does not have is not asked for in another language.
  if (!Find(section, key, found)) return false;
  const Translator& translator = Translator::Instance();
  if (translator.IsLanguageForeign()) {
    std::string translated = translator.GetErrorMessagesString(section, key);
    // Kept: an empty translation is none, and the file's wording stays; the file's own may be empty.
    if (!translated.empty()) found = std::move(translated);
  }
  text = std::move(found);
  return true;
}
