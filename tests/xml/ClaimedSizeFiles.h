// A file service whose files say that they have another size than they have, as one that another process cuts meanwhile does.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "zelbase/platform/PlatformFiles.h"

class ClaimedSizeFiles : public PlatformFiles {
 public:
  long long size = 0;

  std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request, FileResult& result) override {
    auto file = System().Open(request, result);
    return file == nullptr ? nullptr : std::make_unique<File>(std::move(file), size);
  }
  FileResult Replace(const std::string& from, const std::string& to) override { return System().Replace(from, to); }
  FileResult Remove(const std::string& path) override { return System().Remove(path); }
  std::string FollowLinks(const std::string& path) override { return System().FollowLinks(path); }
  bool IsRegularFile(const std::string& path) override { return System().IsRegularFile(path); }

 private:
  class File : public PlatformFile {
   public:
    File(std::unique_ptr<PlatformFile> file, long long claimed) : m_file(std::move(file)), m_claimed(claimed) {}
    FileResult Read(void* buffer, std::size_t count, std::size_t& done) override { return m_file->Read(buffer, count, done); }
    FileResult Write(const void* buffer, std::size_t count, std::size_t& done) override { return m_file->Write(buffer, count, done); }
    FileResult Seek(long long offset, int origin, long long& position) override { return m_file->Seek(offset, origin, position); }
    FileResult Flush() override { return m_file->Flush(); }
    FileResult GetSize(long long& claimed) override {
      claimed = m_claimed;
      return FileResult::Ok;
    }
    FileResult SetEnd() override { return m_file->SetEnd(); }
    FileResult GetTimes(FileTimes& times) override { return m_file->GetTimes(times); }
    FileResult CopyModeFrom(const std::string& path) override { return m_file->CopyModeFrom(path); }

   private:
    std::unique_ptr<PlatformFile> m_file;
    long long m_claimed;
  };
};
