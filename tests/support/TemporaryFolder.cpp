#include "tests/support/TemporaryFolder.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

[[noreturn]] void Fail(const std::string& path) { throw std::runtime_error("temporary folder: cannot make " + path); }

}  // namespace

TemporaryFolder::TemporaryFolder() {
  m_path = (std::filesystem::temp_directory_path() / "zelbase-test-XXXXXX").string();
  if (::mkdtemp(m_path.data()) == nullptr) Fail(m_path);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::InterfacePath() const {
  std::string path = m_path;
  std::replace(path.begin() + 1, path.end(), '/', '\\');
  return path;
}

std::string TemporaryFolder::File(std::string_view name) const { return m_path + "/" + std::string(name); }

std::string TemporaryFolder::Write(std::string_view name, std::string_view content) const {
  const std::string path = File(name);
  std::ofstream stream(path, std::ios::binary);
  stream.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!stream.flush()) Fail(path);
  return path;
}

std::string TemporaryFolder::Read(std::string_view name) const {
  std::ifstream stream(File(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

bool TemporaryFolder::Exists(std::string_view name) const {
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::symlink_status(File(name), ignored));
}

std::string TemporaryFolder::MakeFolder(std::string_view name) const {
  const std::string path = File(name);
  if (::mkdir(path.c_str(), 0777) != 0) Fail(path);
  return path;
}

std::string TemporaryFolder::MakeFifo(std::string_view name) const {
  const std::string path = File(name);
  if (::mkfifo(path.c_str(), 0666) != 0) Fail(path);
  return path;
}

std::string TemporaryFolder::MakeLink(std::string_view name, const std::string& target) const {
  const std::string path = File(name);
  std::filesystem::create_symlink(target, path);
  return path;
}
