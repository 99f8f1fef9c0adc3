#include "zelbase/files/FileHelpers.h"

#include "zelbase/files/HugeFileStream.h"
#include "zelbase/platform/PlatformFiles.h"

bool GetFileSize(const std::string& path, unsigned long long& size) {
  FileStatus status;
  if (PlatformService<PlatformFiles>::Current().GetStatus(path, status) != FileResult::Ok) return false;
  size = status.isFolder ? 0 : status.size;
  return true;
}

bool GetFileWriteTime(const std::string& path, double& time) {
  // A name with a zero byte in it would be opened by its front.
  if (path.find('\0') != std::string::npos) return false;
  HugeFileStream stream(path.c_str(), false, false);
  double created = 0.0;
  double accessed = 0.0;
  double written = 0.0;
  if (!stream.GetFileTimes(created, accessed, written)) return false;
  time = written;
  return true;
}

bool CompareFileWriteTime(const std::string& path, double time) {
  double written = 0.0;
  return GetFileWriteTime(path, written) && written == time;
}
