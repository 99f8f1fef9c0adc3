// A folder of a test's own, gone with everything in it at the end of its scope. Neighbour: ChildProcess.h.
#pragma once

#include <string>
#include <string_view>

// Not copyable. Names go through as they are: they may hold any byte but zero.
class TemporaryFolder {
 public:
  // Makes a new empty folder; throws std::runtime_error when it cannot.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // The folder's absolute path in this system's form, "/tmp/x", and in the interface's, "/tmp\x"; no final separator.
  const std::string& Path() const { return m_path; }
  std::string InterfacePath() const;

  // Path of `name` within the folder, in this system's form.
  std::string File(std::string_view name) const;

  // Writes a whole file and returns its path; reads one ("" when it is missing). By the standard streams, so that no file
  // service of ours is in the way. Throws std::runtime_error when writing fails.
  std::string Write(std::string_view name, std::string_view content) const;
  std::string Read(std::string_view name) const;

  bool Exists(std::string_view name) const;

  // Makes a sub-folder, a FIFO, a link to `target` (as it is written); returns the path. Throws when it cannot.
  std::string MakeFolder(std::string_view name) const;
  std::string MakeFifo(std::string_view name) const;
  std::string MakeLink(std::string_view name, const std::string& target) const;

 private:
  std::string m_path;
};
