#include "zelbase/config/detail/ReplacingFile.h"

#include <random>
#include <utility>

#include "zelbase/frame/detail/NumberText.h"

namespace zelbase::detail {
namespace {

constexpr int kMostAttempts = 16;

// A short name of its own in the folder of `target`, so that a long target name does not make a longer one.
std::string NameBeside(const std::string& target) {
  const std::size_t separator = target.find_last_of("\\/");
  std::string name = separator == std::string::npos ? std::string() : target.substr(0, separator + 1);
  std::random_device source;
  name += "zel";
  AppendHex(name, source(), 8);
  AppendHex(name, source(), 8);
  return name += ".tmp";
}

}  // namespace

ReplacingFile::~ReplacingFile() {
  try {
    Discard();
  } catch (...) {
    // Without memory for its name the temporary stays; a destructor has nobody to tell.
  }
}

bool ReplacingFile::Begin(const std::string& fileName) {
  Discard();
  // A name with a zero byte would be taken for the file named by its front.
  if (fileName.empty() || fileName.find('\0') != std::string::npos) return false;
  m_files = &PlatformService<PlatformFiles>::Current();
  m_target = m_files->FollowLinks(fileName);
  FileResult result = FileResult::Ok;
  // Asks whether the target may be written: by its permissions, by who else has it open, and by what it is.
  FileOpenRequest request;
  request.path = m_target;
  request.access = FileRights::Write;
  const std::unique_ptr<PlatformFile> target = m_files->Open(request, result);
  if (target == nullptr && result != FileResult::NotFound) return false;
  if (!OpenTemporary(target != nullptr)) return false;
  if (target == nullptr || m_written->CopyModeFrom(m_target) == FileResult::Ok) return true;
  Discard();
  return false;
}

// Beside a target that exists the temporary is the owner's alone until it has the target's permissions: a target that others
// may not read must not be readable under another name meanwhile.
bool ReplacingFile::OpenTemporary(bool ownerOnly) {
  FileOpenRequest request;
  request.access = FileRights::Write;
  request.sharing = FileRights::None;
  request.disposition = FileDisposition::CreateNew;
  request.ownerOnly = ownerOnly;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    request.path = NameBeside(m_target);
    // Before there is a file of that name, so that none is left behind without the memory to remember it.
    std::string temporary = request.path;
    FileResult result = FileResult::Ok;
    m_written = m_files->Open(request, result);
    if (m_written != nullptr) {
      m_temporary = std::move(temporary);
      return true;
    }
    if (result != FileResult::FileExists) return false;
  }
  return false;
}

void ReplacingFile::Write(const void* buffer, unsigned int count) {
  std::size_t done = 0;
  const FileResult result = m_written == nullptr ? FileResult::InvalidHandle : m_written->Write(buffer, count, done);
  if (result != FileResult::Ok) throw CFileException(result, m_target);
}

bool ReplacingFile::WriteAll(std::string_view text) {
  std::size_t done = 0;
  return m_written != nullptr && m_written->Write(text.data(), text.size(), done) == FileResult::Ok;
}

bool ReplacingFile::Commit() {
  if (m_written == nullptr) return false;
  const bool flushed = m_written->Flush() == FileResult::Ok;
  m_written.reset();
  if (!flushed || m_files->Replace(m_temporary, m_target) != FileResult::Ok) {
    Discard();
    return false;
  }
  m_temporary.clear();
  return true;
}

void ReplacingFile::Discard() {
  m_written.reset();
  if (m_temporary.empty()) return;
  const std::string temporary = std::exchange(m_temporary, std::string());
  m_files->Remove(temporary);
}

}  // namespace zelbase::detail
