// Folders of a test's or a host's own, in place of the computer's. Neighbour: PlatformFolders.h, the interface.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "zelbase/platform/PlatformFolders.h"
#include "zelbase/platform/ZelBaseApi.h"

// Answers what it was told, in the words it was told, whatever the disk holds; at first it knows nothing and every question
// is false.
//
//   FixedFolders folders;
//   folders.SetCommonData("/tmp\\settings");
//   PlatformOverride<PlatformFolders> guard(folders);
//
// Set it before other threads ask.
class ZELBASE_API FixedFolders : public PlatformFolders {
 public:
  // No value: there is no such folder.
  void SetCommonData(std::optional<std::string> folder) { m_commonData = std::move(folder); }
  void SetCurrent(std::optional<std::string> folder) { m_current = std::move(folder); }

  // The free bytes on every disk; no value: that cannot be told.
  void SetFreeSpace(std::optional<unsigned long long> bytes) { m_freeSpace = bytes; }

  bool CommonData(std::string& folder) override;
  bool Current(std::string& folder) override;
  bool FreeSpace(const std::string& path, unsigned long long& bytes) override;

 private:
  std::optional<std::string> m_commonData;
  std::optional<std::string> m_current;
  std::optional<unsigned long long> m_freeSpace;
};
