// A file that is written beside its target and takes its place when it is complete. Internal to the library;
// FileObject::FileSaveReplacing and SettingsTextEditor save through it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "zelbase/platform/CFile.h"
#include "zelbase/platform/PlatformFiles.h"

namespace zelbase::detail {

// Begin, then write through a CArchive or Write, then Commit. Without Commit the target stays as it was, and what was
// written is removed. A power cut at any time leaves the old text or the new one whole.
class ReplacingFile : public CFile {
 public:
  ReplacingFile() = default;
  ~ReplacingFile() override;

  // Makes the new file in the folder of the target, with the target's permissions. Links are followed. False when the target
  // is not a regular file or may not be written, or when its folder does not take a new file.
  bool Begin(const std::string& fileName);

  // Throws a CFileException.
  void Write(const void* buffer, unsigned int count) override;

  // The same for a text of any length; false on failure.
  bool WriteAll(std::string_view text);

  // Forces the bytes to the device and renames. False on failure: then the target has the old text (or, when only the
  // folder's entry could not be made durable, the new one).
  bool Commit();

 private:
  bool OpenTemporary(bool ownerOnly);
  void Discard();

  PlatformFiles* m_files = nullptr;
  std::unique_ptr<PlatformFile> m_written;
  std::string m_target;
  std::string m_temporary;
};

}  // namespace zelbase::detail
