// Files in memory by their names, put in place of the system's: an input of a fuzz target as a file, at no cost. Neighbour:
// Require.h.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>

#include "zelbase/platform/PlatformFiles.h"

// One file is read or written by one opener at a time. Writing appends. Neither sharing nor times are known.
class MemoryFiles : public PlatformFiles {
 public:
  // No read gives more than `readLimit` bytes.
  explicit MemoryFiles(std::size_t readLimit = SIZE_MAX) : m_readLimit(readLimit) {}

  std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request, FileResult& result) override {
    const bool creates = request.disposition != FileDisposition::OpenExisting;
    result = creates || files.contains(request.path) ? FileResult::Ok : FileResult::NotFound;
    if (result != FileResult::Ok) return nullptr;
    if (creates) files[request.path].clear();
    return std::make_unique<File>(files[request.path], m_readLimit);
  }
  FileResult Replace(const std::string& from, const std::string& to) override {
    files[to] = files[from];
    files.erase(from);
    return FileResult::Ok;
  }
  FileResult Remove(const std::string& path) override {
    files.erase(path);
    return FileResult::Ok;
  }
  std::string FollowLinks(const std::string& path) override { return path; }
  bool IsRegularFile(const std::string& path) override { return files.contains(path); }

  std::map<std::string, std::string> files;

 private:
  class File : public PlatformFile {
   public:
    File(std::string& text, std::size_t readLimit) : m_text(text), m_readLimit(readLimit) {}

    FileResult Read(void* buffer, std::size_t size, std::size_t& done) override {
      done = std::min({size, m_readLimit, m_text.size() - m_position});
      if (done != 0) std::memcpy(buffer, m_text.data() + m_position, done);
      m_position += done;
      return FileResult::Ok;
    }
    FileResult Write(const void* buffer, std::size_t size, std::size_t& done) override {
      m_text.append(static_cast<const char*>(buffer), size);
      done = size;
      return FileResult::Ok;
    }
    FileResult Seek(long long offset, int origin, long long& position) override {
      const long long from = origin == 0 ? 0 : static_cast<long long>(origin == 1 ? m_position : m_text.size());
      if (from + offset < 0 || from + offset > static_cast<long long>(m_text.size())) return FileResult::InvalidParameter;
      position = from + offset;
      m_position = static_cast<std::size_t>(position);
      return FileResult::Ok;
    }
    FileResult Flush() override { return FileResult::Ok; }
    FileResult GetSize(long long& size) override {
      size = static_cast<long long>(m_text.size());
      return FileResult::Ok;
    }
    FileResult SetEnd() override { return FileResult::AccessDenied; }
    FileResult GetTimes(FileTimes&) override { return FileResult::AccessDenied; }
    FileResult CopyModeFrom(const std::string&) override { return FileResult::Ok; }

   private:
    std::string& m_text;
    std::size_t m_readLimit;
    std::size_t m_position = 0;
  };

  std::size_t m_readLimit;
};
