// Any bytes as a tide file, and the same bytes as a script of operations on it, beside a plain map that must agree. The file lies
// in memory.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tests/sonar/LiteralTide.h"
#include "tests/sonar/TideScript.h"
#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/sonar/TideFile.h"

namespace {

void Require(bool condition, const char* what) {
  if (condition) return;
  std::cerr << "not so: " << what << '\n';
  std::abort();
}

// Files by their names, as far as a tide file needs them: to be read, and to be replaced.
class MemoryFiles : public PlatformFiles {
 public:
  std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request, FileResult& result) override {
    const bool creates = request.disposition != FileDisposition::OpenExisting;
    result = creates || files.contains(request.path) ? FileResult::Ok : FileResult::NotFound;
    if (result != FileResult::Ok) return nullptr;
    if (creates) files[request.path].clear();
    return std::make_unique<File>(files[request.path]);
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
    explicit File(std::string& text) : m_text(text) {}

    FileResult Read(void* buffer, std::size_t size, std::size_t& done) override {
      done = std::min(size, m_text.size() - m_position);
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
    std::size_t m_position = 0;
  };
};

// The records of a file, in the byte order of this machine, which is the file's where this runs.
LiteralTide ReadPlainly(const std::string& bytes) {
  LiteralTide literal;
  for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16) {
    double record[2];
    std::memcpy(record, bytes.data() + at, sizeof record);
    if (!std::isnan(record[0])) literal.AddTideValue(record[0], record[1]);
  }
  return literal;
}

std::string WritePlainly(const LiteralTide& literal) {
  std::string bytes;
  for (const auto& [time, value] : literal.values) {
    const double record[2] = {time, value};
    bytes.append(reinterpret_cast<const char*>(record), sizeof record);
  }
  return bytes;
}

// Times that are often there: those of the file, and small whole ones.
double PickTime(const LiteralTide& literal, unsigned int choice) {
  if (choice % 3 == 0 && !literal.values.empty()) {
    const double near = choice % 2 == 0 ? literal.values.begin()->first : literal.values.rbegin()->first;
    return near + choice / 6 % 4;
  }
  return choice / 3 - 20.0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  MemoryFiles memory;
  const PlatformOverride<PlatformFiles> guard(memory);
  memory.files["tide"] = bytes;

  TideFile tide;
  LiteralTide literal = ReadPlainly(bytes);
  literal.current = literal.values.end();
  Require(tide.FileOpen("tide", false), "any file opens");
  Require(tide.GetNumValues() == literal.GetNumValues(), "the number of values");
  Require(tide.FileSave() && memory.files["tide"] == bytes, "a save without a change");
  for (std::size_t at = 0; at + 1 < size; at += 2) {
    Require(DoTheSame(tide, literal, data[at], PickTime(literal, data[at + 1]), static_cast<double>(at)), "the operations");
  }
  Require(tide.AddTideValue(0.25, 1.0), "the last change");
  literal.AddTideValue(0.25, 1.0);
  Require(tide.FileSave(), "the save");
  Require(memory.files["tide"] == WritePlainly(literal), "what was saved");
  Require(memory.files.size() == 1, "the files");
  return 0;
}
